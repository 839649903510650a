#include "src/start/Main.h"

#include "src/common/Folders.h"
#include "src/dos/DosFiles.h"
#include "src/run/ProgramEnd.h"
#include "src/run/RunEnd.h"
#include "src/start/Automator.h"
#include "src/start/BuildRun.h"
#include "src/start/CommandLine.h"

namespace velbooter {

namespace {

// When the preparation is cancelled or fails, the wizard is shown all the same, on its final page.
void ShowWizard(Application& app) {
    RunGuarded(app, [&] { InitApp(app); });
    app.Wizard.Visible = true;
    app.Screen.Repaint();
}

}  // namespace

void Main(Application& app, const SingleInstance& instance, const std::string& commandLine) {
    if (!instance.IsFirst()) {
        app.Screen.ShowMessage(
            {"The Veltrane is already running", "Already Running", Buttons::Ok, Icon::Critical});
        throw ProgramEnd{ExitCode::AlreadyRunning};
    }
    app.Paths.WindowsFolder = GetWindowsFolder();
    app.Paths.SystemFolder = GetSystemFolder();
    CheckDOSFiles(app.Paths, app.Screen, app.Wait, app.Wizard.DlgOpen);
    if (commandLine.empty()) {
        ShowWizard(app);
        return;
    }
    RunBatch(app, ParseCommandLine(app.Paths, app.Screen, commandLine));
}

}  // namespace velbooter
