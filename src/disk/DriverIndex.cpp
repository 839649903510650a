#include "src/disk/DriverIndex.h"

#include "src/common/FileSystem.h"
#include "src/common/INIFile.h"
#include "src/common/Text.h"

namespace velbooter {

std::optional<std::string> DriverNameOf(const std::string& file) {
    const std::string extension = ".CAB";
    const std::string name = UpperCase(file);
    if (!EndsWith(name, extension)) return std::nullopt;
    return name.substr(0, name.size() - extension.size());
}

void IndexDriverGroup(Application& app, const std::string& indexFile, const std::string& group, int value) {
    const std::string section = EndsWith(group, "\\") ? group.substr(0, group.size() - 1) : group;
    const std::string folder = app.PathOf("drivers\\" + section + "\\");
    const INIFile index(app.PathOf(indexFile));
    FolderListing listing(folder + "*.cab");
    while (const auto entry = listing.Next()) {
        const auto driver = DriverNameOf(entry->Name);
        if (entry->IsFolder || !driver) continue;
        app.Screen.PendingEvents();
        index.SetINIKey(section, *driver, std::to_string(value));
    }
}

}  // namespace velbooter
