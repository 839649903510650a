#include "src/drivers/DriverSettings.h"

#include "src/common/INIFile.h"
#include "src/common/SetupCommon.h"
#include "src/common/Text.h"
#include "src/drivers/DriverStore.h"

namespace velbooter {

namespace {

struct NetworkMode {
    const char* Caption;
    int Width;
    const char* Note;
};

constexpr NetworkMode kNdisMode{
    "Network adapters drivers (NDIS)", kNdisWidth,
    "You only need the MSNET module and it requirements to make use of the NDIS drivers and load the network "
    "interface."};
constexpr NetworkMode kOdiMode{
    "Network adapters drivers (ODI16/32)", kOdiWidth,
    "You need the NWLAN module and it requirements to make use of the ODI16/32 drivers and load the network "
    "interface."};

/// What the catalogue says of the chosen disk.
struct Disk {
    std::string Target;
    bool TakesAspi;
    bool TakesNdis;
    bool TakesOdi;
    std::string ConfigurationFile;
};

Disk ReadChosenDisk(const Application& app) {
    const INIFile catalogue(app.PathOf("files\\DiskList.ini"));
    const std::string section = std::to_string(app.SelectedDiskIndex - 1);
    const auto isSet = [&](const char* key) { return NumericPrefix(catalogue.GetINIKey(section, key)) != 0; };
    const auto row = static_cast<size_t>(app.SelectedDiskIndex - 1);
    return {TrimAtNul(catalogue.GetINIKey(section, "file")), isSet("aspi"), isSet("ndis"), isSet("netw"),
            LowerCase(app.Wizard.LV_Disk.ListItems.at(row).SubItem) + ".ini"};
}

void SwitchOn(FrmWizard& wizard, const NetworkMode& mode) {
    wizard.ChkNDIS.Caption = mode.Caption;
    wizard.ChkNDIS.Width = mode.Width;
    wizard.LblNDISNote.Caption = mode.Note;
}

void Tick(CheckBox& box, bool ticked) {
    box.Enabled = ticked;
    box.Value = ticked ? 1 : 0;
}

}  // namespace

void GetDiskAndDriverSettings(Application& app) {
    FrmWizard& wizard = app.Wizard;
    const Disk disk = ReadChosenDisk(app);
    const bool hasDrive = disk.Target.size() >= 2 && disk.Target[1] == ':';
    wizard.TxtDest.Text = hasDrive ? disk.Target : app.PathOf(disk.Target);
    const auto applyDefaults = [&](const DriverGroup& group) {
        GetDefaultDriversOptions(app, disk.ConfigurationFile, group.Section);
    };

    const bool offersAspi = disk.TakesAspi && HasDriverFolder(app, kAspiDrivers);
    Tick(wizard.ChkASPI, offersAspi);
    ChkASPI_Click(wizard);
    if (offersAspi) applyDefaults(kAspiDrivers);

    // ODI wins over NDIS, whose defaults are applied all the same. A row that is switched off keeps the look
    // of its last mode.
    const bool offersNdis = disk.TakesNdis && HasDriverFolder(app, kNdisDrivers);
    const bool offersOdi =
        disk.TakesOdi && (HasDriverFolder(app, kOdi16Drivers) || HasDriverFolder(app, kOdi32Drivers));
    Tick(wizard.ChkNDIS, offersNdis || offersOdi);
    ChkNDIS_Click(wizard);
    if (offersNdis) {
        SwitchOn(wizard, kNdisMode);
        applyDefaults(kNdisDrivers);
    }
    if (offersOdi) {
        SwitchOn(wizard, kOdiMode);
        applyDefaults(kOdi16Drivers);
        applyDefaults(kOdi32Drivers);
    }
}

void ChkASPI_Click(FrmWizard& wizard) {
    wizard.CmdSelASPI.Enabled = wizard.ChkASPI.Value != 0;
}

void ChkNDIS_Click(FrmWizard& wizard) {
    wizard.CmdSelNDIS.Enabled = wizard.ChkNDIS.Value != 0;
}

}  // namespace velbooter
