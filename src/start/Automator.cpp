#include "src/start/Automator.h"

#include "src/common/RunReport.h"
#include "src/common/Text.h"
#include "src/disk/contents/DiskConfiguration.h"
#include "src/disk/contents/FileLists.h"
#include "src/drivers/DriverSelection.h"
#include "src/drivers/DriverSettings.h"
#include "src/forms/Forms.h"
#include "src/run/ApplicationPaths.h"
#include "src/run/ProgramEnd.h"
#include "src/run/RunEnd.h"
#include "src/run/Waiting.h"
#include "src/setup/SetupData.h"
#include "src/setup/SetupNT.h"
#include "src/setup/SetupWin.h"
#include "src/start/BuildRun.h"
#include "src/start/Catalogue.h"

namespace velbooter {

namespace {

void Say(Application& app, const std::string& status) {
    SetWaitStatus(app.Wait, app.Screen, status);
}

// Ends a batch run that has shown its wait window.
[[noreturn]] void EndRun(Application& app, ExitCode code) {
    ShowWaitWindow(app.Wait, app.Screen, false);
    throw ProgramEnd{code};
}

void EndRunIfCanceled(Application& app) {
    if (app.RunEnded) EndRun(app, ExitCode::Canceled);
}

// The line of a given plugin ends after the colon; the name itself is not shown.
void ConfirmParameters(Application& app, const CommandLineValues& values) {
    const auto yesOrNo = [](bool value) { return value ? "True" : "False"; };
    const std::string summary =
        "There has been an invalid parameter,\r\n"
        "check your settings before starting the batch mode :\r\n"
        "\r\n"
        "Disk Name : " +
        values.DiskName + "\r\nTarget : " + values.TargetPath +
        "\r\nPlugin to Apply : " + (values.PluginName.empty() ? "None" : "") +
        "\r\nImage Type : " + (values.ImageType == 2 ? "2.88 MB" : "1.44 MB") +
        "\r\nSelect Drivers : " + yesOrNo(values.ShowDriverDialog) +
        "\r\nLoad Product key from keyfile.txt : " + yesOrNo(values.UseKeyFile) + "\r\n";
    const Answer answer = app.Screen.ShowMessage(
        {summary, "Check your Command Line Parameters", Buttons::OkCancel, Icon::Exclamation});
    if (answer == Answer::Cancel) throw ProgramEnd{ExitCode::Refused};
}

void SelectDisk(Application& app, const std::string& diskName) {
    Say(app, "Getting Disk Configuration INI file ...");
    app.SelectedDiskIndex = FindDisk(app.Wizard, diskName);
    if (app.SelectedDiskIndex != 0) return;
    app.Screen.ShowMessage(
        {"The disk \"" + diskName + "\" doesn't exist", "Critical error", Buttons::Ok, Icon::Critical});
    throw ProgramEnd{ExitCode::UnknownDisk};
}

void MakeSetupModules(Application& app, bool useKeyFile) {
    if (app.Wizard.SetupWinIncluded) {
        Say(app, "Creating the SetupWin module ...");
        FillSetupData(app.Paths, app.Wizard, useKeyFile);
        CreateSetupInf(app.Paths, app.Screen, app.Wizard);
    }
    if (app.Wizard.SetupNTIncluded) {
        Say(app, "Creating the SetupNT module ...");
        CreateSetupNT(app.Paths, app.Screen);
    }
}

// The disk's settings have already put its own file into TxtDest, or only the folder when it has none.
void SelectTarget(Application& app, const CommandLineValues& values) {
    ChooseOption(app.Wizard, values.ImageType == 2 ? &FrmWizard::OptImage28 : &FrmWizard::OptImage14);
    FloppyImageLabels(app.Wizard, true);
    const std::string& target = values.TargetPath;
    if (target.empty()) {
        if (app.Wizard.TxtDest.Text == app.Paths.PathOf(""))
            app.Wizard.TxtDest.Text = app.Paths.PathOf(kDefaultImageName);
        return;
    }
    app.Wizard.TxtDest.Text = app.Paths.FullPathOf(target);
}

// The selection has only one list. A disk that offers both kinds of drivers shows its network drivers there
// and gets the SCSI drivers that its defaults name.
void SelectDrivers(Application& app) {
    Say(app, "Getting Drivers List ...");
    if (app.Wizard.ChkASPI.Value != 0) LoadScsiDrivers(app.Paths, app.Screen, app.Drivers);
    if (app.Wizard.ChkNDIS.Value != 0)
        LoadNetworkDrivers(app.Paths, app.Screen, app.Drivers, app.Wizard.Network);
    app.Drivers.Visible = true;
    app.Screen.ShowDriverSelection();
}

void Build(Application& app, const CommandLineValues& values) {
    InitApp(app);
    EndRunIfCanceled(app);
    Say(app, "Getting a list of Disks Configuration ...");
    Fill_DiskList(app);
    SelectDisk(app, values.DiskName);

    const DiskEntry disk = ChosenDisk(app);
    Say(app, "Processing " + disk.ConfigurationFile() + " file ...");
    if (!Init_Lists(app.Paths, app.Screen, app.Wizard, disk.ConfigurationFile())) CancelApp(app);
    EndRunIfCanceled(app);
    Say(app, "Getting Drivers Settings ...");
    GetDiskAndDriverSettings(app.Paths, app.Screen, app.Wizard, ChosenDisk(app));
    MakeSetupModules(app, values.UseKeyFile);
    Say(app, "Getting files list to be copied to the floppy image ...");
    FillInitialList(app.Paths, app.Screen, app.Wizard);
    SelectTarget(app, values);
    if (values.ShowDriverDialog) SelectDrivers(app);
    Say(app, "Creating the floppy image file ...");
    FinishApp(app, values.PluginName);
}

}  // namespace

void RunBatch(Application& app, const CommandLineValues& values) {
    if (values.ParameterError) ConfirmParameters(app, values);
    ShowWaitWindow(app.Wait, app.Screen, true);
    if (!RunGuarded(app, [&] { Build(app, values); })) EndRun(app, ExitCode::InternalError);
    const ExitCode code = CodeOfLastRun(app);
    if (code == ExitCode::Built)
        ReportBuiltImage(app.Paths.FullPathOf(app.Paths.RelativePathOf(app.Wizard.TxtDest.Text)));
    EndRun(app, code);
}

}  // namespace velbooter
