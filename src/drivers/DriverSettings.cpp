#include "src/drivers/DriverSettings.h"

#include "src/drivers/DriverIndex.h"
#include "src/drivers/DriverStore.h"

namespace velbooter {

namespace {

void Tick(CheckBox& box, bool ticked) {
    box.Enabled = ticked;
    box.Value = ticked ? 1 : 0;
}

}  // namespace

void GetDiskAndDriverSettings(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard,
                              const DiskEntry& disk) {
    wizard.TxtDest.Text = paths.FullPathOf(disk.Target);
    const auto applyDefaults = [&](const DriverGroup& group) {
        GetDefaultDriversOptions(paths, desktop, disk.ConfigurationFile(), group.Section);
    };

    const bool offersAspi = disk.TakesAspi && HasDriverFolder(paths, kAspiDrivers);
    Tick(wizard.ChkASPI, offersAspi);
    if (offersAspi) applyDefaults(kAspiDrivers);

    // ODI takes precedence over NDIS, whose defaults are applied nevertheless. A disabled row keeps the
    // caption and width of its last mode.
    const bool offersNdis = disk.TakesNdis && HasDriverFolder(paths, kNdisDrivers);
    const bool offersOdi =
        disk.TakesOdi && (HasDriverFolder(paths, kOdi16Drivers) || HasDriverFolder(paths, kOdi32Drivers));
    Tick(wizard.ChkNDIS, offersNdis || offersOdi);
    EnableTickedRows(wizard);
    if (offersNdis) {
        SetNetworkMode(wizard, NetworkMode::Ndis);
        applyDefaults(kNdisDrivers);
    }
    if (offersOdi) {
        SetNetworkMode(wizard, NetworkMode::Odi);
        applyDefaults(kOdi16Drivers);
        applyDefaults(kOdi32Drivers);
    }
}

}  // namespace velbooter
