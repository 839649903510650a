#include "src/forms/CancelApp.h"

#include "src/common/FileSystem.h"
#include "src/common/RuntimeError.h"
#include "src/common/SetupCommon.h"
#include "src/forms/ErrorMessage.h"
#include "src/forms/Help.h"

namespace velbooter {

void DeleteWorkingFiles(Application& app) {
    const std::string drivers = app.PathOf(kDriverIndexFile);
    if (FileExists(drivers)) {
        try {
            DeleteFileAt(drivers);
        } catch (const RuntimeError&) {
            // A file that cannot be deleted is replaced by the next run.
        }
    }
    for (const char* tree : {"cabs", "Temp"}) {
        if (FolderExists(app.PathOf(tree))) DeleteFolderTree(app.PathOf(tree));
    }
}

void CancelApp(Application& app) {
    FrmWizard& wizard = app.Wizard;
    app.RunEnded = true;
    wizard.LblFinish.Caption = kOutcomeCanceled;
    app.Drivers.Visible = false;  // there is nothing left that a choice could be written to
    DeleteWorkingFiles(app);
    wizard.CmdNext.Visible = false;
    wizard.CmdFinish.Visible = true;
    wizard.CmdBack.Enabled = false;
    wizard.CmdCancel.Enabled = false;
    wizard.CmdFinish.Enabled = true;
    for (Frame& page : wizard.FraMain) page.Visible = false;
    wizard.FraMain[kFinishedPage].Visible = true;
    ShowHelp(app, kFinishedPage, false);
}

bool RunGuarded(Application& app, const std::function<void()>& step) {
    try {
        step();
        return true;
    } catch (const std::exception& error) {
        ShowError(app, error);
        CancelApp(app);
        return false;
    }
}

ExitCode CodeOfLastRun(const Application& app) {
    const bool canceled = app.RunEnded && app.Wizard.LblFinish.Caption == kOutcomeCanceled;
    if (canceled) return ExitCode::Canceled;
    return app.ImageMissing ? ExitCode::NoImage : ExitCode::Built;
}

}  // namespace velbooter
