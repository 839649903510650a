#include "src/disk/FileLists.h"

#include <algorithm>
#include <array>

#include "src/common/FileSystem.h"
#include "src/common/LineReader.h"
#include "src/common/Text.h"

namespace velbooter {

namespace {

constexpr std::array<const char*, 3> kSystemFiles{"IO.SYS", "MSDOS.SYS", "COMMAND.COM"};

bool IsSystemFile(const std::string& entry) {
    return std::find(kSystemFiles.begin(), kSystemFiles.end(), entry) != kSystemFiles.end();
}

}  // namespace

void FillInitialList(Application& app) {
    ListBox& files = app.Wizard.LstFiles;
    ListBox& folders = app.Wizard.LstDirs;
    files.Clear();
    folders.AddItem(app.PathOf("cabs\\"));
    while (folders.ListCount() > 0) {
        ScanCabsFolder(app, folders.List(0), "*.*");
        folders.RemoveItem(0);
    }
    // The bound is fixed before anything is removed; entries past the end read as "".
    const int count = files.ListCount();
    for (int i = 0; i < count; ++i) {
        if (IsSystemFile(files.List(i))) files.RemoveItem(i--);
    }
    for (size_t i = 0; i < kSystemFiles.size(); ++i) files.AddItem(kSystemFiles[i], static_cast<int>(i));
    for (int i = 0; i < files.ListCount(); ++i) files.Select(i, true);
}

void ScanCabsFolder(Application& app, const std::string& folder, const std::string& pattern) {
    std::string path = Trim(folder);
    if (!EndsWith(path, "\\")) path += "\\";
    const size_t prefixLength = app.PathOf("cabs\\").size();
    FolderListing listing(path + pattern);
    while (const auto entry = listing.Next()) {
        app.Screen.PendingEvents();
        if (!entry->IsFolder) {
            app.Wizard.LstFiles.AddItem((path + entry->Name).substr(prefixLength));
        } else if (!entry->Name.starts_with(".")) {
            ListBox& folders = app.Wizard.LstDirs;
            folders.AddItem(path + entry->Name + "\\", std::min(1, folders.ListCount()));
        }
    }
}

std::int32_t CountSectionLines(const std::string& fileName, const std::string& section, bool useSuffix,
                               const std::string& suffix) {
    const std::string header = "[" + section + "]";
    bool inSection = false;
    std::int32_t count = 0;
    LineReader file(fileName);
    while (const auto line = file.Next()) {
        if (line->starts_with("[")) inSection = *line == header;
        if (!inSection || line->empty() || line->front() == ';') continue;
        if (!useSuffix || EndsWith(*line, suffix)) ++count;
    }
    return count;
}

std::int32_t CountFileLines(const std::string& fileName) {
    std::int32_t count = 0;
    LineReader file(fileName);
    while (file.Next()) ++count;
    return count;
}

}  // namespace velbooter
