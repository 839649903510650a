#include "src/drivers/DriverPreparation.h"

#include "src/common/LineReader.h"
#include "src/common/Text.h"
#include "src/disk/FileCopying.h"
#include "src/disk/FileLists.h"
#include "src/drivers/DriverStore.h"
#include "src/forms/CancelApp.h"

namespace velbooter {

namespace {

bool IsSwitchedOn(const FrmWizard& wizard, const DriverGroup& group) {
    const std::string section = group.Section;
    if (section == kAspiDrivers.Section) return wizard.ChkASPI.Value != 0;
    const int width = section == kNdisDrivers.Section ? kNdisWidth : kOdiWidth;
    return wizard.ChkNDIS.Value != 0 && wizard.ChkNDIS.Width == width;
}

// Headers count only when they are written exactly so; any other line that begins with "[" is no header, and
// the keys behind it still belong to the group before it.
const DriverGroup* GroupOfHeader(const std::string& line) {
    for (const DriverGroup& group : kDriverGroups) {
        if (line == std::string("[") + group.Section + "]") return &group;
    }
    return nullptr;
}

// Returns false when the user gave the copy up.
bool PutOnDisk(Application& app, const std::string& folder, const std::string& driver) {
    const std::string cabinet = folder + "\\" + LowerCase(driver) + ".cab";
    std::string target = "cabs\\Lib\\" + cabinet;
    const bool copied = CopyFileWithPrompt(app, "drivers\\" + cabinet, target, false);
    app.Wizard.LstFiles.AddItem("lib\\" + cabinet);
    return copied;
}

// The first eight characters tell the driver entries, those of earlier steps included.
void SelectDriverEntries(ListBox& files) {
    constexpr size_t kPrefixLength = 8;
    for (int i = 0; i < files.ListCount(); ++i) {
        const std::string prefix = files.List(i).substr(0, kPrefixLength);
        if (prefix == "lib\\aspi" || prefix == "lib\\ndis" || prefix == "lib\\odi1" || prefix == "lib\\odi3")
            files.Select(i, true);
    }
}

}  // namespace

void PrepareDrivers(Application& app) {
    const std::string index = app.PathOf(kDriverIndexFile);
    ProgressBar& progress = app.Wizard.WorkProgress;
    progress.Max = CountFileLines(index);
    progress.Value = progress.Min;
    std::string folder;  // "" while nothing is copied
    bool canceled = false;
    {
        LineReader file(index);
        while (const auto line = file.Next()) {
            ++progress.Value;
            app.Screen.Repaint();
            if (line->empty() || line->front() == ';') continue;
            if (const DriverGroup* group = GroupOfHeader(*line)) {
                folder = IsSwitchedOn(app.Wizard, *group) ? group->Folder : "";
                continue;
            }
            const std::vector<std::string> parts = Split(*line, '=');
            if (parts.size() < 2 || folder.empty() || NumericPrefix(parts[1]) == 0) continue;
            canceled = !PutOnDisk(app, folder, parts[0]);
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
