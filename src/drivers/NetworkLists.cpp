#include "src/drivers/NetworkLists.h"

#include <limits>
#include <set>

#include "src/common/FileSystem.h"
#include "src/common/LineReader.h"
#include "src/common/LineWriter.h"
#include "src/common/SetupCommon.h"
#include "src/common/Text.h"
#include "src/disk/FileLists.h"
#include "src/drivers/DriverStore.h"

namespace velbooter {

namespace {

using Names = std::set<std::string>;

// The files of the application folder that match `pattern`, in upper case.
Names FilesLike(const Application& app, const std::string& pattern) {
    Names names;
    FolderListing listing(app.PathOf(pattern));
    while (const auto entry = listing.Next()) {
        if (!entry->IsFolder) names.insert(UpperCase(entry->Name));
    }
    return names;
}

constexpr size_t kAllLines = std::numeric_limits<size_t>::max();

// Writes the first `count` lines of `file`, if it is there. Editors of DOS end a text with the byte 1Ah;
// within the list it would hide all that follows from a reader under DOS.
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

void Place(Application& app, const std::string& list, const std::string& entry) {
    const std::string built = app.PathOf("cabs\\" + list);
    if (!FileExists(built)) return;
    CopyFileOver(built, app.PathOf("cabs\\" + entry));
    DeleteFileAt(built);
    app.Wizard.LstFiles.AddItem(entry);
}

}  // namespace

bool HasNetworkLists(const FrmWizard& wizard) {
    return wizard.ChkNDIS.Value != 0 && wizard.ChkNDIS.Width == kNdisWidth;
}

bool IsPrebuiltEntry(const std::string& entry) {
    return entry.starts_with("etc\\_");
}

void CreatePrebuiltFiles(Application& app) {
    FrmWizard& wizard = app.Wizard;
    if (HasNetworkLists(wizard)) {
        CreateCacheFile(app, "ndis", "ndis");
        if (!FolderExists(app.PathOf("cabs\\etc"))) MakeFolder(app.PathOf("cabs\\etc"));
        Place(app, "_ndis.txt", kNicListEntry);
        Place(app, "_ndis.pci", kPciListEntry);
    }
    ListBox& files = wizard.LstFiles;
    for (int i = 0; i < files.ListCount(); ++i) {
        if (IsPrebuiltEntry(files.List(i))) files.Select(i, true);
    }
}

void CreateCacheFile(Application& app, const std::string& name, const std::string& group) {
    const std::string index = app.PathOf(kDriverIndexFile);
    const std::string section = UpperCase(group);
    const std::string folder = EndsWith(group, "\\") ? group : group + "\\";
    const std::string nameList = app.PathOf(name + ".txt");
    const std::string pciList = app.PathOf(name + ".pci");
    ProgressBar& progress = app.Wizard.WorkProgress;
    progress.Max = CountSectionLines(index, section, true, "1");
    progress.Value = progress.Min;

    LineWriter list(app.PathOf("cabs\\_" + name + ".txt"));
    LineWriter map(app.PathOf("cabs\\_" + name + ".pci"));
    WriteToFile("; This file is used to manual", list);
    WriteToFile("; select a network driver", list);
    WriteToFile(":_" + name + " \"Select Network driver...\" [x]", list);
    WriteToFile("; PCI map file (build from " + name + ".pci files)", map);

    bool inSection = false;
    LineReader file(index);
    while (const auto line = file.Next()) {
        if (line->starts_with("[")) inSection = *line == "[" + section + "]";
        if (!inSection || line->empty() || line->front() == ';' || line->back() != '1') continue;
        // The value is taken to be one character long: "E100B=11" names the driver "E100B=", of
        // which there is no cabinet.
        const std::string driver = line->substr(0, line->size() < 2 ? 0 : line->size() - 2);
        ++progress.Value;
        app.Screen.Repaint();
        // What an interrupted run left would be taken for this driver's.
        DeleteIfThere(nameList);
        DeleteIfThere(pciList);
        const std::string members = name + ".*";
        const Names former = FilesLike(app, members);
        ExtractFromDriver(app, folder + driver + ".cab", members);
        CopyLines(nameList, 1, list);
        CopyLines(pciList, kAllLines, map);
        for (const std::string& file : FilesLike(app, members)) {
            if (former.count(file) == 0) DeleteFileAt(app.PathOf(file));
        }
    }
}

}  // namespace velbooter
