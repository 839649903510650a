#include "src/ui/PageWalk.h"

#include "src/common/Text.h"
#include "src/disk/DiskConfiguration.h"
#include "src/disk/FileLists.h"
#include "src/drivers/DiskRoom.h"
#include "src/drivers/DriverSettings.h"
#include "src/drivers/DriverStore.h"
#include "src/forms/Help.h"
#include "src/setup/SetupData.h"
#include "src/setup/SetupNT.h"
#include "src/setup/SetupWin.h"
#include "src/start/Catalogue.h"
#include "src/ui/Destination.h"

namespace velbooter {

namespace {

// The files page and the way back past it are the custom disk's alone: the first entry of the list.
constexpr std::int16_t kCustomDisk = 1;

void SetStatus(Application& app, const std::string& status) {
    app.Wizard.LblStatus.Caption = status;
    app.Screen.Repaint();
}

// Of several selected rows the last one counts; without any the former choice stays.
void ReadSelectedDisk(Application& app) {
    const auto& rows = app.Wizard.LV_Disk.ListItems;
    for (size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].Selected) app.SelectedDiskIndex = static_cast<std::int16_t>(i + 1);
    }
}

void LoadDisk(Application& app) {
    // Nothing of the disk that was looked at before stays selected.
    RenewDriverIndex(app);
    app.Drivers.Visible = false;  // its ticks are those of the disk before
    const auto row = static_cast<size_t>(app.SelectedDiskIndex - 1);
    Init_Lists(app, LowerCase(app.Wizard.LV_Disk.ListItems.at(row).SubItem) + ".ini");
    if (app.RunEnded) return;
    SetStatus(app, "Please Wait ... Preparing Default Drivers Settings");
    GetDiskAndDriverSettings(app);
    SetStatus(app, "Press Next to re-populate the files list");
}

// Turns to CurrentStep.
void Turn(Application& app, std::int16_t old) {
    if (app.CurrentStep == kFilesPage || app.CurrentStep == kDestinationPage) MeasureRoom(app);
    if (app.CurrentStep == kFilesPage) ShowRoom(app);
    if (app.CurrentStep == kDestinationPage) ClickChosenOption(app);
    TurnPage(app, old, app.CurrentStep);
}

void LeaveSetupPage(Application& app) {
    if (app.SetupWinIncluded) CreateSetupInf(app);
    if (app.SetupNTIncluded) CreateSetupNT(app);
    FillInitialList(app);
}

}  // namespace

void CmdNext_Click(Application& app) {
    FrmWizard& wizard = app.Wizard;
    const std::int16_t old = app.CurrentStep;
    // One block after the other, each on the step as the block before left it: that is how pages are skipped.
    if (app.CurrentStep == kWelcomePage) {
        wizard.CmdBack.Enabled = true;
        Fill_DiskList(app);
    }
    if (app.CurrentStep == kDiskPage) {
        ReadSelectedDisk(app);
        if (app.SelectedDiskIndex == 0) {
            SetStatus(app, "Select a disk configuration, then press Next");
            return;
        }
        LoadDisk(app);
        if (app.RunEnded) return;
    }
    if (app.CurrentStep == kDriversPage) {
        if (app.SetupWinIncluded) {
            FillSetupData(app, false);
        } else {
            app.CurrentStep = kSetupPage;
        }
    }
    if (app.CurrentStep == kSetupPage) {
        LeaveSetupPage(app);
        if (app.SelectedDiskIndex != kCustomDisk) ++app.CurrentStep;
    }
    if (app.CurrentStep == kFilesPage) {
        wizard.CmdNext.Visible = false;
        wizard.CmdFinish.Visible = true;
    }
    app.CurrentStep = app.CurrentStep < kDestinationPage ? static_cast<std::int16_t>(app.CurrentStep + 1)
                                                         : static_cast<std::int16_t>(kDestinationPage);
    Turn(app, old);
}

void CmdBack_Click(Application& app) {
    FrmWizard& wizard = app.Wizard;
    const std::int16_t old = app.CurrentStep;
    if (app.CurrentStep == kDestinationPage) {
        wizard.CmdNext.Visible = true;
        wizard.CmdFinish.Visible = false;
        if (app.SelectedDiskIndex != kCustomDisk) app.CurrentStep = kFilesPage;
    }
    if (app.CurrentStep == kFilesPage && !app.SetupWinIncluded) app.CurrentStep = kSetupPage;
    if (app.CurrentStep == kDiskPage) wizard.CmdBack.Enabled = false;
    if (app.CurrentStep > kWelcomePage) --app.CurrentStep;
    Turn(app, old);
}

}  // namespace velbooter
