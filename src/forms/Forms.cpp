#include "src/forms/Forms.h"

namespace velbooter {

FrmWizard::FrmWizard() {
    FraMain[kWelcomePage].Visible = true;
    LV_Disk.FirstColumnTitle = "Desc";
    LV_Disk.SecondColumnTitle = "Velbooter_file";
    LstFiles.AddItem("Return to Previous step to Populate the list");
    DlgNew = {"BootDisk", "Select where to save the Floppy Image", "*.img", "img"};
    SetNetworkMode(*this, NetworkMode::Ndis);
    SetOutcome(*this, RunOutcome::Completed);
    FloppyImageLabels(*this, false);
}

FrmDrivers::FrmDrivers() {
    LV.FirstColumnTitle = "DriverName";
    LV.SecondColumnTitle = "Description";
    SetAllTicked(*this, true);
}

void ChooseOption(FrmWizard& wizard, OptionButton FrmWizard::*option) {
    wizard.OptImage14.Value = false;
    wizard.OptImage28.Value = false;
    wizard.OptFloppy.Value = false;
    (wizard.*option).Value = true;
}

void SetNetworkMode(FrmWizard& wizard, NetworkMode mode) {
    const bool isNdis = mode == NetworkMode::Ndis;
    wizard.Network = mode;
    wizard.ChkNDIS.Caption =
        isNdis ? "Network adapters drivers (NDIS)" : "Network adapters drivers (ODI16/32)";
    wizard.ChkNDIS.Width = isNdis ? kNdisWidth : kOdiWidth;
    wizard.LblNDISNote.Caption = isNdis ? "You only need the MSNET module and it requirements to make use of "
                                          "the NDIS drivers and load the "
                                          "network interface."
                                        : "You need the NWLAN module and it requirements to make use of the "
                                          "ODI16/32 drivers and load the "
                                          "network interface.";
}

void SetOutcome(FrmWizard& wizard, RunOutcome outcome) {
    wizard.Outcome = outcome;
    wizard.LblFinish.Caption =
        outcome == RunOutcome::Completed ? "Operation completed successfully" : "Operation canceled";
}

void FloppyImageLabels(FrmWizard& wizard, bool isImage) {
    wizard.LblMsg3.Caption = isImage ? "Preparing new floppy image" : "Formating Floppy Disk";
    wizard.LblMsg4.Caption = isImage ? "Copying files to floppy image" : "Copying files to floppy disk";
}

void EnableTickedRows(FrmWizard& wizard) {
    wizard.CmdSelASPI.Enabled = wizard.ChkASPI.Value != 0;
    wizard.CmdSelNDIS.Enabled = wizard.ChkNDIS.Value != 0;
}

void SetAllTicked(FrmDrivers& drivers, bool ticked) {
    drivers.AllTicked = ticked;
    drivers.CmdSelAll.Caption = ticked ? "Unselect All" : "Select All";
}

std::array<TextBox*, kKeyGroups> KeyParts(FrmWizard& wizard) {
    return {&wizard.TxtKeyPart1, &wizard.TxtKeyPart2, &wizard.TxtKeyPart3, &wizard.TxtKeyPart4,
            &wizard.TxtKeyPart5};
}

}  // namespace velbooter
