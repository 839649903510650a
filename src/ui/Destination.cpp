#include "src/ui/Destination.h"

#include "src/forms/Forms.h"
#include "src/ui/DiskSpace.h"

namespace velbooter {

namespace {

void EnableTarget(FrmWizard& wizard, bool enabled) {
    wizard.TxtDest.Enabled = enabled;
    wizard.CmdBrowse.Enabled = enabled;
}

}  // namespace

void OptImage14_Click(Application& app) {
    EnableTarget(app.Wizard, app.Wizard.OptImage14.Value);
    FloppyImageLabels(app.Wizard, true);
    ShowSpace(app);
}

void OptImage28_Click(Application& app) {
    EnableTarget(app.Wizard, app.Wizard.OptImage28.Value);
    FloppyImageLabels(app.Wizard, true);
    ShowSpace(app);
}

// The floppy passes its own value, which is true, so its step lines are those of an image.
void OptFloppy_Click(Application& app) {
    EnableTarget(app.Wizard, !app.Wizard.OptFloppy.Value);
    FloppyImageLabels(app.Wizard, app.Wizard.OptFloppy.Value);
    ShowSpace(app);
}

void ClickChosenOption(Application& app) {
    const FrmWizard& wizard = app.Wizard;
    if (wizard.OptImage14.Value) OptImage14_Click(app);
    if (wizard.OptImage28.Value) OptImage28_Click(app);
    if (wizard.OptFloppy.Value) OptFloppy_Click(app);
}

void CmdBrowse_Click(Application& app) {
    CommonDialog& dialog = app.Wizard.DlgNew;
    dialog.FileName = app.Wizard.TxtDest.Text;
    const auto chosen = app.Screen.ShowSaveDialog(dialog);
    if (!chosen) return;
    dialog.FileName = *chosen;
    app.Wizard.TxtDest.Text = *chosen;
}

}  // namespace velbooter
