#include "src/start/BuildRun.h"

#include "src/common/ProgramEnd.h"
#include "src/disk/FloppyDisk.h"
#include "src/disk/FloppyImage.h"
#include "src/disk/Plugins.h"
#include "src/disk/Staging.h"
#include "src/drivers/DriverPreparation.h"
#include "src/drivers/NetworkLists.h"
#include "src/forms/CancelApp.h"
#include "src/forms/Help.h"
#include "src/forms/WaitStatus.h"

namespace velbooter {

namespace {

// The check mark of the symbol font that the mark labels use.
constexpr const char* kCheckMark = "\xFC";

void BeginStep(Application& app, Label& line) {
    SetWaitStatus(app, line.Caption + " ...");
    line.Bold = true;
    app.Screen.Repaint();
}

void FinishStep(Application& app, Label& line, Label& mark) {
    line.Bold = false;
    mark.Caption = kCheckMark;
    app.Screen.Repaint();
}

bool BuildFloppy(Application& app) {
    FrmWizard& wizard = app.Wizard;
    BeginStep(app, wizard.LblMsg3);
    const bool formatted = FormatFloppy(app);
    app.Screen.Repaint();
    if (!formatted) return false;
    FinishStep(app, wizard.LblMsg3, wizard.LblRight3);
    BeginStep(app, wizard.LblMsg4);
    return InjectFilesToDir(app, "A:");
}

bool BuildImage(Application& app, const std::string& pluginName) {
    FrmWizard& wizard = app.Wizard;
    BeginStep(app, wizard.LblMsg3);
    if (!CreateDiskAsDir(app)) return false;
    if (!pluginName.empty()) InjectPlugin(app, pluginName);
    FinishStep(app, wizard.LblMsg3, wizard.LblRight3);
    BeginStep(app, wizard.LblMsg4);
    CreateImageFromDir(app);
    return true;
}

}  // namespace

void FinishApp(Application& app, const std::string& pluginName) {
    FrmWizard& wizard = app.Wizard;
    BeginStep(app, wizard.LblMsg1);
    PrepareDrivers(app);
    if (app.RunEnded) return;
    FinishStep(app, wizard.LblMsg1, wizard.LblRight1);
    BeginStep(app, wizard.LblMsg2);
    CreatePrebuiltFiles(app);
    FinishStep(app, wizard.LblMsg2, wizard.LblRight2);

    const bool isImage = wizard.OptImage14.Value || wizard.OptImage28.Value;
    const bool built = isImage ? BuildImage(app, pluginName) : BuildFloppy(app);
    if (!built) {
        CancelApp(app);
        return;
    }
    FinishStep(app, wizard.LblMsg4, wizard.LblRight4);
    wizard.LblFinish.Caption = kOutcomeCompleted;
    DeleteWorkingFiles(app);
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

}  // namespace velbooter
