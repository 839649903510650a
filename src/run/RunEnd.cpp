#include "src/run/RunEnd.h"

#include <new>

#include "src/common/Files.h"
#include "src/common/Folders.h"
#include "src/common/RuntimeError.h"
#include "src/forms/ProductTexts.h"
#include "src/run/Help.h"

namespace velbooter {

void DeleteWorkingFiles(const ApplicationPaths& paths) {
    const std::string drivers = paths.PathOf(kDriverIndexFile);
    if (FileExists(drivers)) {
        try {
            DeleteFileAt(drivers);
        } catch (const RuntimeError&) {
            // A file that cannot be deleted is replaced by the next run.
        }
    }
    for (const char* tree : {kCabsFolder, kStagingTree}) {
        if (FolderExists(paths.PathOf(tree))) DeleteFolderTree(paths.PathOf(tree));
    }
}

void CancelApp(Application& app) {
    FrmWizard& wizard = app.Wizard;
    app.RunEnded = true;
    SetOutcome(wizard, RunOutcome::Canceled);
    app.Drivers.Visible = false;  // its choices would go into Drivers.ini, which is deleted now
    DeleteWorkingFiles(app.Paths);
    wizard.CmdNext.Visible = false;
    wizard.CmdFinish.Visible = true;
    wizard.CmdBack.Enabled = false;
    wizard.CmdCancel.Enabled = false;
    wizard.CmdFinish.Enabled = true;
    for (Frame& page : wizard.FraMain) page.Visible = false;
    wizard.FraMain[kFinishedPage].Visible = true;
    ShowHelp(app, kFinishedPage, false);
}

ExitCode CodeOfLastRun(const Application& app) {
    if (app.RunEnded && app.Wizard.Outcome == RunOutcome::Canceled) return ExitCode::Canceled;
    return app.ImageMissing ? ExitCode::NoImage : ExitCode::Built;
}

void ShowRuntimeError(Desktop& desktop, const RuntimeError& error) {
    std::string text = "Error " + std::to_string(error.Number) + ": " + error.Text;
    if (!error.File.empty()) text += "\r\n" + error.File;
    desktop.ShowMessage({text, kProgramTitle, Buttons::Ok, Icon::Critical});
}

void ShowError(Desktop& desktop, const std::exception& error) {
    if (const auto* known = dynamic_cast<const RuntimeError*>(&error)) {
        ShowRuntimeError(desktop, *known);
    } else if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) {
        ShowRuntimeError(desktop, RuntimeError(kOutOfMemory));
    } else {
        desktop.ShowMessage({std::string("The program stopped because of an internal error (") +
                                 error.what() + ").\r\n\r\nNo new disk was created.",
                             kProgramTitle, Buttons::Ok, Icon::Critical});
    }
}

bool RunGuarded(Application& app, const std::function<void()>& step) {
    try {
        step();
        return true;
    } catch (const std::exception& error) {
        ShowError(app.Screen, error);
        CancelApp(app);
        return false;
    }
}

}  // namespace velbooter
