#include "src/start/Automator.h"

#include "src/common/ProgramEnd.h"
#include "src/common/Text.h"
#include "src/disk/DiskConfiguration.h"
#include "src/disk/FileLists.h"
#include "src/disk/FloppyImage.h"
#include "src/drivers/DriverSelection.h"
#include "src/drivers/DriverSettings.h"
#include "src/forms/CancelApp.h"
#include "src/forms/WaitStatus.h"
#include "src/setup/SetupData.h"
#include "src/setup/SetupNT.h"
#include "src/setup/SetupWin.h"
#include "src/start/BuildRun.h"
#include "src/start/Catalogue.h"
#include "src/start/InitApp.h"

namespace velbooter {

namespace {

// Ends a batch run that has shown its wait window.
[[noreturn]] void EndRun(Application& app, ExitCode code) {
    ShowWaitWindow(app, false);
    throw ProgramEnd{code};
}

void EndRunIfCanceled(Application& app) {
    if (app.RunEnded) EndRun(app, ExitCode::Canceled);
}

// The name of a plugin is deliberately not shown: its line ends after the colon.
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

// With two rows of the same name the last one wins.
std::int16_t FindDisk(const FrmWizard& wizard, const std::string& diskName) {
    const auto& rows = wizard.LV_Disk.ListItems;
    std::int16_t found = 0;
    for (size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].SubItem == diskName) found = static_cast<std::int16_t>(i + 1);
    }
    return found;
}

void SelectDisk(Application& app, const std::string& diskName) {
    SetWaitStatus(app, "Getting Disk Configuration INI file ...");
    app.SelectedDiskIndex = FindDisk(app.Wizard, diskName);
    if (app.SelectedDiskIndex != 0) return;
    app.Screen.ShowMessage(
        {"The disk \"" + diskName + "\" doesn't exist", "Critical error", Buttons::Ok, Icon::Critical});
    throw ProgramEnd{ExitCode::UnknownDisk};
}

void MakeSetupModules(Application& app, bool useKeyFile) {
    if (app.SetupWinIncluded) {
        SetWaitStatus(app, "Creating the SetupWin module ...");
        FillSetupData(app, useKeyFile);
        CreateSetupInf(app);
    }
    if (app.SetupNTIncluded) {
        SetWaitStatus(app, "Creating the SetupNT module ...");
        CreateSetupNT(app);
    }
}

// A path without a drive letter is relative to the application folder, also one that begins with a backslash.
// The settings of the disk have put its own file into the box, or the bare folder when it has none.
void SelectTarget(Application& app, const CommandLineValues& values) {
    ChooseOption(app.Wizard, values.ImageType == 2 ? &FrmWizard::OptImage28 : &FrmWizard::OptImage14);
    FloppyImageLabels(app, true);
    const std::string& target = values.TargetPath;
    if (target.empty()) {
        if (app.Wizard.TxtDest.Text == app.PathOf(""))
            app.Wizard.TxtDest.Text = app.PathOf(kDefaultImageName);
        return;
    }
    const bool hasDrive = target.size() >= 2 && target[1] == ':';
    app.Wizard.TxtDest.Text = hasDrive ? target : app.PathOf(target);
}

// The selection has one list: a disk that offers both kinds of drivers shows its network drivers only, and
// gets the SCSI drivers that its defaults name.
void SelectDrivers(Application& app) {
    SetWaitStatus(app, "Getting Drivers List ...");
    if (app.Wizard.ChkASPI.Value != 0) LoadScsiDrivers(app);
    if (app.Wizard.ChkNDIS.Value != 0) LoadNetworkDrivers(app);
    app.Drivers.Visible = true;
    app.Screen.ShowDriverSelection();
}

void Build(Application& app, const CommandLineValues& values) {
    InitApp(app);
    EndRunIfCanceled(app);
    SetWaitStatus(app, "Getting a list of Disks Configuration ...");
    Fill_DiskList(app);
    SelectDisk(app, values.DiskName);

    const auto row = static_cast<size_t>(app.SelectedDiskIndex - 1);
    const std::string name = LowerCase(app.Wizard.LV_Disk.ListItems.at(row).SubItem);
    SetWaitStatus(app, "Processing " + name + ".ini file ...");
    Init_Lists(app, name + ".ini");
    EndRunIfCanceled(app);
    SetWaitStatus(app, "Getting Drivers Settings ...");
    GetDiskAndDriverSettings(app);
    MakeSetupModules(app, values.UseKeyFile);
    SetWaitStatus(app, "Getting files list to be copied to the floppy image ...");
    FillInitialList(app);
    SelectTarget(app, values);
    if (values.ShowDriverDialog) SelectDrivers(app);
    SetWaitStatus(app, "Creating the floppy image file ...");
    FinishApp(app, values.PluginName);
}

}  // namespace

void RunBatch(Application& app, const CommandLineValues& values) {
    if (values.ParameterError) ConfirmParameters(app, values);
    ShowWaitWindow(app, true);
    if (!RunGuarded(app, [&] { Build(app, values); })) EndRun(app, ExitCode::InternalError);
    EndRun(app, CodeOfLastRun(app));
}

}  // namespace velbooter
