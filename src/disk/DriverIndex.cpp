#include "src/disk/DriverIndex.h"

#include "src/common/FileSystem.h"
#include "src/common/INIFile.h"
#include "src/common/Text.h"

namespace velbooter {

void IndexDriverGroup(Application& app, const std::string& indexFile, const std::string& group, int value) {
    const std::string section = EndsWith(group, "\\") ? group.substr(0, group.size() - 1) : group;
    const std::string folder = app.PathOf("drivers\\" + section + "\\");
    const INIFile index(app.PathOf(indexFile));
    const size_t extensionLength = std::string(".cab").size();
    FolderListing listing(folder + "*.cab");
    while (const auto entry = listing.Next()) {
        if (entry->IsFolder) continue;
        app.Screen.PendingEvents();
        const std::string name = UpperCase(entry->Name);
        index.SetINIKey(section, name.substr(0, name.size() - extensionLength), std::to_string(value));
    }
}

}  // namespace velbooter
