#include "src/drivers/DriverPreparation.h"

#include "src/disk/FileCopying.h"
#include "src/disk/FileLists.h"
#include "src/drivers/ChosenDrivers.h"
#include "src/forms/CancelApp.h"

namespace velbooter {

namespace {

// Returns false when the user gave the copy up.
bool PutOnDisk(Application& app, const std::string& cabinet) {
    std::string target = "cabs\\Lib\\" + cabinet;
    const bool copied = CopyFileWithPrompt(app, "drivers\\" + cabinet, target, false);
    app.Wizard.LstFiles.AddItem("lib\\" + cabinet);
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

void PrepareDrivers(Application& app) {
    const std::string index = app.PathOf(kDriverIndexFile);
    ProgressBar& progress = app.Wizard.WorkProgress;
    progress.Max = CountFileLines(index);
    progress.Value = progress.Min;
    bool canceled = false;
    {
        ChosenDrivers drivers(app);
        while (const auto cabinet = drivers.Next()) {
            ++progress.Value;
            app.Screen.Repaint();
            canceled = !cabinet->empty() && !PutOnDisk(app, *cabinet);
            if (canceled) break;
        }
    }
    // Drivers.ini is closed here, so that cancelling can delete it.
    if (canceled) {
        CancelApp(app);
        return;
    }
    SelectDriverEntries(app.Wizard.LstFiles);
}

}  // namespace velbooter
