#include "src/disk/contents/FileLists.h"

#include <algorithm>
#include <array>

#include "src/common/Folders.h"
#include "src/common/Text.h"
#include "src/common/TextFiles.h"

namespace velbooter {

namespace {

constexpr std::array<const char*, 3> kSystemFiles{"IO.SYS", "MSDOS.SYS", "COMMAND.COM"};

bool IsSystemFile(const std::string& entry) {
    return std::find(kSystemFiles.begin(), kSystemFiles.end(), entry) != kSystemFiles.end();
}

}  // namespace

void FillInitialList(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard) {
    ListBox& files = wizard.LstFiles;
    ListBox& folders = wizard.LstDirs;
    files.Clear();
    folders.AddItem(paths.PathOf(InCabs("")));
    while (folders.ListCount() > 0) {
        ScanCabsFolder(paths, desktop, wizard, folders.List(0), "*.*");
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

void ScanCabsFolder(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard,
                    const std::string& folder, const std::string& pattern) {
    std::string path = Trim(folder);
    if (!EndsWith(path, "\\")) path += "\\";
    const size_t prefixLength = paths.PathOf(InCabs("")).size();
    FolderListing listing(path + pattern);
    while (const auto entry = listing.Next()) {
        desktop.PendingEvents();
        if (!entry->IsFolder) {
            wizard.LstFiles.AddItem((path + entry->Name).substr(prefixLength));
        } else if (!entry->Name.starts_with(".")) {
            ListBox& folders = wizard.LstDirs;
            folders.AddItem(path + entry->Name + "\\", std::min(1, folders.ListCount()));
        }
    }
}

}  // namespace velbooter
