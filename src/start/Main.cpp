#include "src/start/Main.h"

#include "src/common/ProgramEnd.h"
#include "src/common/RuntimeError.h"
#include "src/common/SetupCommon.h"
#include "src/dos/DosFiles.h"
#include "src/forms/CancelApp.h"
#include "src/forms/ErrorMessage.h"
#include "src/forms/ProductTexts.h"
#include "src/start/Automator.h"
#include "src/start/CommandLine.h"
#include "src/start/InitApp.h"

namespace velbooter {

namespace {

// Without a command line there are no pages to show yet: the folder is prepared, which shows whether it is
// complete, and the user is told how to build.
[[noreturn]] void PrepareOnly(Application& app) {
    try {
        InitApp(app);
    } catch (const RuntimeError& error) {
        ShowRuntimeError(app, error);
        CancelApp(app);
        throw ProgramEnd{ExitCode::InternalError};
    }
    if (app.RunEnded) throw ProgramEnd{ExitCode::Canceled};
    app.Screen.ShowMessage(
        {"The application folder is prepared and complete. This version has no wizard pages; "
         "disks are built from the command line.\r\n\r\n" +
             UsageText(),
         kProgramTitle, Buttons::Ok, Icon::Information});
    DeleteWorkingFiles(app);
    throw ProgramEnd{ExitCode::Built};
}

}  // namespace

void Main(Application& app, const SingleInstance& instance, const std::string& commandLine) {
    if (!instance.IsFirst()) {
        app.Screen.ShowMessage(
            {"The Veltrane is already running", "Already Running", Buttons::Ok, Icon::Critical});
        throw ProgramEnd{ExitCode::AlreadyRunning};
    }
    app.WindowsFolder = GetWindowsFolder();
    app.SystemFolder = GetSystemFolder();
    CheckDOSFiles(app);
    if (commandLine.empty()) PrepareOnly(app);
    RunBatch(app, ParseCommandLine(app, commandLine));
}

}  // namespace velbooter
