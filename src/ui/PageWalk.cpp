#include "src/ui/PageWalk.h"

#include "src/common/Text.h"
#include "src/disk/contents/DiskConfiguration.h"
#include "src/disk/contents/FileLists.h"
#include "src/drivers/DriverIndex.h"
#include "src/drivers/DriverSettings.h"
#include "src/forms/ProductTexts.h"
#include "src/run/Help.h"
#include "src/run/ProgramEnd.h"
#include "src/run/RunEnd.h"
#include "src/setup/SetupData.h"
#include "src/setup/SetupNT.h"
#include "src/setup/SetupWin.h"
#include "src/start/BuildRun.h"
#include "src/start/Catalogue.h"
#include "src/ui/Destination.h"
#include "src/ui/DiskSpace.h"

namespace velbooter {

namespace {

// The first entry of the list. Only this disk has the files page.
constexpr std::int16_t kCustomDisk = 1;

void SetStatus(Application& app, const std::string& status) {
    app.Wizard.LblStatus.Caption = status;
    app.Screen.Repaint();
}

// Of several selected rows the last one counts; without any, the previous choice stays.
void ReadSelectedDisk(Application& app) {
    const auto& rows = app.Wizard.LV_Disk.ListItems;
    for (size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].Selected) app.SelectedDiskIndex = static_cast<std::int16_t>(i + 1);
    }
}

void LoadDisk(Application& app) {
    // No driver selected for an earlier disk stays selected.
    RenewDriverIndex(app.Paths, app.Screen);
    app.Drivers.Visible = false;  // its ticks belong to the earlier disk
    if (!Init_Lists(app.Paths, app.Screen, app.Wizard, ChosenDisk(app).ConfigurationFile())) {
        CancelApp(app);
        return;
    }
    SetStatus(app, "Please Wait ... Preparing Default Drivers Settings");
    GetDiskAndDriverSettings(app.Paths, app.Screen, app.Wizard, ChosenDisk(app));
    SetStatus(app, "Press Next to re-populate the files list");
}

// Hides one page and shows another; an open help window follows.
void TurnPage(Application& app, std::int16_t hidden, std::int16_t shown) {
    app.Wizard.FraMain.at(static_cast<size_t>(hidden)).Visible = false;
    app.Wizard.FraMain.at(static_cast<size_t>(shown)).Visible = true;
    ShowHelp(app, shown, false);
}

// Turns to CurrentStep.
void Turn(Application& app, std::int16_t old) {
    if (app.CurrentStep == kFilesPage || app.CurrentStep == kDestinationPage) MeasureSpace(app);
    if (app.CurrentStep == kFilesPage) ShowSpace(app);
    if (app.CurrentStep == kDestinationPage) ClickChosenOption(app);
    TurnPage(app, old, app.CurrentStep);
}

void LeaveSetupPage(Application& app) {
    if (app.Wizard.SetupWinIncluded) CreateSetupInf(app.Paths, app.Screen, app.Wizard);
    if (app.Wizard.SetupNTIncluded) CreateSetupNT(app.Paths, app.Screen);
    FillInitialList(app.Paths, app.Screen, app.Wizard);
}

}  // namespace

void CmdNext_Click(Application& app) {
    FrmWizard& wizard = app.Wizard;
    const std::int16_t old = app.CurrentStep;
    // The blocks run in order, each on the step that the one before has left: that is how pages are skipped.
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
        if (app.Wizard.SetupWinIncluded) {
            FillSetupData(app.Paths, app.Wizard, false);
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
    if (app.CurrentStep == kFilesPage && !app.Wizard.SetupWinIncluded) app.CurrentStep = kSetupPage;
    if (app.CurrentStep == kDiskPage) wizard.CmdBack.Enabled = false;
    if (app.CurrentStep > kWelcomePage) --app.CurrentStep;
    Turn(app, old);
}

void CmdFinish_Click(Application& app) {
    FrmWizard& wizard = app.Wizard;
    wizard.CmdBack.Enabled = false;
    wizard.CmdCancel.Enabled = false;
    wizard.CmdFinish.Enabled = true;
    if (app.RunEnded) throw ProgramEnd{CodeOfLastRun(app)};
    app.Drivers.Visible = false;  // the choices are final
    TurnPage(app, kDestinationPage, kProgressPage);
    FinishApp(app, "");
    app.RunEnded = true;
    TurnPage(app, kProgressPage, kFinishedPage);
}

void CmdHelp_Click(Application& app) {
    ShowHelp(app, kCurrentPage, true);
}

void LblHomePage_Click(Application& app) {
    app.Screen.OpenAddress(kHomePage);
}

void LblFrameworkSite_Click(Application& app) {
    app.Screen.OpenAddress(kFrameworkSite);
}

void Form_Unload(Application& app) {
    const ExitCode code = CodeOfLastRun(app);
    SetOutcome(app.Wizard, RunOutcome::Canceled);
    DeleteWorkingFiles(app.Paths);
    throw ProgramEnd{code};
}

}  // namespace velbooter
