#include "src/drivers/DriverPreparation.h"

#include "src/disk/contents/FileCopying.h"
#include "src/drivers/DriverIndex.h"

namespace velbooter {

namespace {

// Returns false when the user aborted the copy.
bool PutOnDisk(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard,
               const std::string& cabinet) {
    std::string target = InCabs("Lib\\" + cabinet);
    const bool copied = CopyFileWithPrompt(paths, desktop, InDrivers(cabinet), target, false);
    wizard.LstFiles.AddItem("lib\\" + cabinet);
    return copied;
}

void SelectDriverEntries(ListBox& files) {
    for (int i = 0; i < files.ListCount(); ++i) {
        if (IsDriverEntry(files.List(i))) files.Select(i, true);
    }
}

}  // namespace

bool IsDriverEntry(const std::string& entry) {
    constexpr size_t kPrefixLength = 8;
    const std::string prefix = entry.substr(0, kPrefixLength);
    return prefix == "lib\\aspi" || prefix == "lib\\ndis" || prefix == "lib\\odi1" || prefix == "lib\\odi3";
}

bool PrepareDrivers(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard) {
    const std::string index = paths.PathOf(kDriverIndexFile);
    ProgressBar& progress = wizard.WorkProgress;
    progress.Max = CountFileLines(index);
    progress.Value = progress.Min;
    ChosenDrivers drivers(paths, wizard);
    while (const auto cabinet = drivers.Next()) {
        ++progress.Value;
        desktop.Repaint();
        if (!cabinet->empty() && !PutOnDisk(paths, desktop, wizard, *cabinet)) return false;
    }
    SelectDriverEntries(wizard.LstFiles);
    return true;
}

}  // namespace velbooter
