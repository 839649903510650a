// The entry of the program: makes the real desktop, runs the start routine and turns its end into an exit
// code.

#include <windows.h>

#include <exception>

#include "src/common/CallText.h"
#include "src/common/ProgramEnd.h"
#include "src/common/SetupCommon.h"
#include "src/common/SingleInstance.h"
#include "src/forms/CancelApp.h"
#include "src/forms/ErrorMessage.h"
#include "src/start/Main.h"
#include "src/ui/windows/SystemDesktop.h"

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, char* /*commandLine*/, int /*show*/) {
    using velbooter::ExitCode;
    const std::string folder = velbooter::GetProgramFolder();
    const velbooter::SingleInstance instance(velbooter::GetProgramFile());
    velbooter::SystemDesktop desktop;
    velbooter::Application app(folder, desktop);
    desktop.ShowFormsOf(app);
    try {
        velbooter::Main(app, instance, velbooter::ArgumentsOf(::GetCommandLineA()));
        desktop.RunMessages();
        return static_cast<int>(ExitCode::Built);
    } catch (const velbooter::ProgramEnd& end) {
        return static_cast<int>(end.Code);
    } catch (const std::exception& error) {
        velbooter::ShowError(app, error);
        velbooter::DeleteWorkingFiles(app);
        return static_cast<int>(ExitCode::InternalError);
    }
}
