#include "src/start/BuildRun.h"

#include "src/common/Folders.h"
#include "src/disk/contents/FileCopying.h"
#include "src/disk/output/Floppy.h"
#include "src/disk/output/Staging.h"
#include "src/dos/DosFiles.h"
#include "src/drivers/DriverIndex.h"
#include "src/drivers/DriverPreparation.h"
#include "src/drivers/NetworkLists.h"
#include "src/forms/Forms.h"
#include "src/run/RunEnd.h"
#include "src/run/Waiting.h"

namespace velbooter {

namespace {

// The check mark in the symbol font of the LblRight labels.
constexpr const char* kCheckMark = "\xFC";

void BeginStep(Application& app, Label& line) {
    SetWaitStatus(app.Wait, app.Screen, line.Caption + " ...");
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
    const bool formatted = FormatFloppy(app.Screen);
    app.Screen.Repaint();
    if (!formatted) return false;
    FinishStep(app, wizard.LblMsg3, wizard.LblRight3);
    BeginStep(app, wizard.LblMsg4);
    return InjectFilesToDir(app.Paths, app.Screen, wizard, "A:");
}

bool BuildImage(Application& app, const std::string& pluginName) {
    FrmWizard& wizard = app.Wizard;
    BeginStep(app, wizard.LblMsg3);
    if (!CreateDiskAsDir(app.Paths, app.Screen, wizard, app.Staging)) return false;
    if (!pluginName.empty()) InjectPlugin(app.Paths, app.Screen, app.Staging.Folder, pluginName);
    FinishStep(app, wizard.LblMsg3, wizard.LblRight3);
    BeginStep(app, wizard.LblMsg4);
    app.ImageMissing = !CreateImageFromDir(app.Paths, app.Screen, wizard, app.Staging.Folder);
    return true;
}

}  // namespace

void FinishApp(Application& app, const std::string& pluginName) {
    FrmWizard& wizard = app.Wizard;
    BeginStep(app, wizard.LblMsg1);
    if (!PrepareDrivers(app.Paths, app.Screen, wizard)) {
        CancelApp(app);
        return;
    }
    FinishStep(app, wizard.LblMsg1, wizard.LblRight1);
    BeginStep(app, wizard.LblMsg2);
    CreatePrebuiltFiles(app.Paths, app.Screen, wizard);
    FinishStep(app, wizard.LblMsg2, wizard.LblRight2);

    const bool isImage = wizard.OptImage14.Value || wizard.OptImage28.Value;
    const bool built = isImage ? BuildImage(app, pluginName) : BuildFloppy(app);
    if (!built) {
        CancelApp(app);
        return;
    }
    FinishStep(app, wizard.LblMsg4, wizard.LblRight4);
    SetOutcome(wizard, RunOutcome::Completed);
    DeleteWorkingFiles(app.Paths);
}

void InitApp(Application& app) {
    RenewDriverIndex(app.Paths, app.Screen);
    app.Wizard.TxtDest.Text = app.Paths.PathOf(kDefaultImageName);
    RefreshDosModuleFolder(app.Paths, app.Screen);
    DeleteFolderTree(app.Paths.PathOf(kCabsFolder));

    std::string root = kCabsFolder;
    std::string bin = InCabs("bin");
    const bool rootCopied =
        CopyFileWithPrompt(app.Paths, app.Screen, app.Paths.PathOf(InFiles("base_files\\*.*")), root, false);
    const bool binCopied = CopyFileWithPrompt(app.Paths, app.Screen,
                                              app.Paths.PathOf(InFiles("base_files\\bin\\*.*")), bin, false);
    if (!rootCopied || !binCopied) CancelApp(app);
}

}  // namespace velbooter
