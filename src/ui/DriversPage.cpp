#include "src/ui/DriversPage.h"

#include <algorithm>

#include "src/drivers/DriverSelection.h"
#include "src/ui/DiskSpace.h"

namespace velbooter {

namespace {

void Open(Application& app) {
    app.Drivers.Visible = true;
    app.Screen.Repaint();
}

void Hide(Application& app) {
    app.Drivers.Visible = false;
    app.Screen.Repaint();
}

}  // namespace

void ChkASPI_Click(Application& app) {
    EnableTickedRows(app.Wizard);
}

void ChkNDIS_Click(Application& app) {
    EnableTickedRows(app.Wizard);
}

void CmdSelASPI_Click(Application& app) {
    Open(app);
    LoadScsiDrivers(app.Paths, app.Screen, app.Drivers);
}

void CmdSelNDIS_Click(Application& app) {
    Open(app);
    LoadNetworkDrivers(app.Paths, app.Screen, app.Drivers, app.Wizard.Network);
}

void CmdOK_Click(Application& app) {
    StoreTicks(app.Paths, app.Drivers.LV);
    ShowSpace(app);
    Hide(app);
}

void CmdCancelDrivers_Click(Application& app) {
    Hide(app);
}

void CmdSelAll_Click(Application& app) {
    TickOrUntickAll(app.Drivers);
}

void DriverColumn_Click(Application& app, std::int16_t column) {
    SortByColumn(app.Drivers, column);
}

void DriverSelection_Resize(FrmDrivers& form) {
    constexpr int kLeastHeight = 2430;
    constexpr int kLeastWidth = 6870;
    form.Height = std::max(form.Height, kLeastHeight);
    form.LV.Height = form.Height - 1050;
    for (CommandButton* button : {&form.CmdOK, &form.CmdCancel, &form.CmdSelAll})
        button->Top = form.Height - 950;
    form.Width = std::max(form.Width, kLeastWidth);
    form.LV.Width = form.Width - 100;
    form.CmdOK.Left = form.Width - 3150;
    form.CmdCancel.Left = form.Width - 1710;
}

}  // namespace velbooter
