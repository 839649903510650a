#include "src/drivers/NetworkLists.h"

#include <limits>
#include <set>

#include "src/common/Files.h"
#include "src/common/Folders.h"
#include "src/common/Text.h"
#include "src/common/TextFiles.h"
#include "src/drivers/DriverIndex.h"
#include "src/drivers/DriverStore.h"

namespace velbooter {

namespace {

using Names = std::set<std::string>;

// Returns the files of the application folder that match `pattern`, in upper case.
Names FilesLike(const ApplicationPaths& paths, const std::string& pattern) {
    Names names;
    FolderListing listing(paths.PathOf(pattern));
    while (const auto entry = listing.Next()) {
        if (!entry->IsFolder) names.insert(UpperCase(entry->Name));
    }
    return names;
}

constexpr size_t kAllLines = std::numeric_limits<size_t>::max();

// Writes the first `count` lines of `file`, if it is there. DOS editors end a text with the byte 1Ah. Inside
// the list it would hide the lines after it from DOS programs, so copying stops there.
void CopyLines(const std::string& file, size_t count, LineWriter& list) {
    constexpr char kEndOfText = '\x1A';
    if (!FileExists(file)) return;
    LineReader lines(file);
    for (size_t i = 0; i < count; ++i) {
        const auto line = lines.Next();
        if (!line) return;
        const size_t end = line->find(kEndOfText);
        if (end != 0) WriteToFile(line->substr(0, end), list);
        if (end != std::string::npos) return;
    }
}

void Place(const ApplicationPaths& paths, ListBox& files, const std::string& list, const std::string& entry) {
    const std::string built = paths.PathOf(InCabs(list));
    if (!FileExists(built)) return;
    CopyFileOver(built, paths.PathOf(InCabs(entry)));
    DeleteFileAt(built);
    files.AddItem(entry);
}

}  // namespace

bool HasNetworkLists(const FrmWizard& wizard) {
    return IsGroupEnabled(wizard, kNdisDrivers);
}

bool IsPrebuiltEntry(const std::string& entry) {
    return entry.starts_with("etc\\_");
}

void CreatePrebuiltFiles(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard) {
    ListBox& files = wizard.LstFiles;
    if (HasNetworkLists(wizard)) {
        CreateCacheFile(paths, desktop, wizard.WorkProgress, "ndis", "ndis");
        const std::string folder = paths.PathOf(InCabs("etc"));
        if (!FolderExists(folder)) MakeFolder(folder);
        Place(paths, files, "_ndis.txt", kNicListEntry);
        Place(paths, files, "_ndis.pci", kPciListEntry);
    }
    for (int i = 0; i < files.ListCount(); ++i) {
        if (IsPrebuiltEntry(files.List(i))) files.Select(i, true);
    }
}

void CreateCacheFile(const ApplicationPaths& paths, Desktop& desktop, ProgressBar& progress,
                     const std::string& name, const std::string& group) {
    const std::string index = paths.PathOf(kDriverIndexFile);
    const std::string section = UpperCase(group);
    const std::string folder = EndsWith(group, "\\") ? group : group + "\\";
    const std::string nameList = paths.PathOf(name + ".txt");
    const std::string pciList = paths.PathOf(name + ".pci");
    progress.Max = CountSectionLines(index, section, true, "1");
    progress.Value = progress.Min;

    LineWriter list(paths.PathOf(InCabs("_" + name + ".txt")));
    LineWriter map(paths.PathOf(InCabs("_" + name + ".pci")));
    WriteToFile("; This file is used to manual", list);
    WriteToFile("; select a network driver", list);
    WriteToFile(":_" + name + " \"Select Network driver...\" [x]", list);
    WriteToFile("; PCI map file (build from " + name + ".pci files)", map);

    bool inSection = false;
    LineReader file(index);
    while (const auto line = file.Next()) {
        if (line->starts_with("[")) inSection = *line == "[" + section + "]";
        if (!inSection || line->empty() || line->front() == ';' || line->back() != '1') continue;
        // The value is assumed to be one character long: "E100B=11" names the driver "E100B=", for which
        // there is no cabinet.
        const std::string driver = line->substr(0, line->size() < 2 ? 0 : line->size() - 2);
        ++progress.Value;
        desktop.Repaint();
        // A file left by an interrupted run would be mistaken for this driver's.
        DeleteIfThere(nameList);
        DeleteIfThere(pciList);
        const std::string members = name + ".*";
        const Names former = FilesLike(paths, members);
        ExtractFromDriver(paths, desktop, folder + driver + ".cab", members);
        CopyLines(nameList, 1, list);
        CopyLines(pciList, kAllLines, map);
        for (const std::string& left : FilesLike(paths, members)) {
            if (former.count(left) == 0) DeleteFileAt(paths.PathOf(left));
        }
    }
}

}  // namespace velbooter
