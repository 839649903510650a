// The entry of the program: makes the real desktop, runs the start routine and turns its end into an exit
// code.

#include <windows.h>
// objbase.h needs windows.h before it.
#include <objbase.h>

#include <exception>

#include "src/common/Processes.h"
#include "src/common/SingleInstance.h"
#include "src/run/CancelApp.h"
#include "src/run/Guard.h"
#include "src/run/ProgramEnd.h"
#include "src/start/Main.h"
#include "src/ui/windows/SystemDesktop.h"

namespace {

// What the process asks of the system before anything else.
void PrepareProcess() {
    // That a drive has no disk is told by the step that needs it, not by a box of the system before that. The
    // tools inherit it.
    ::SetErrorMode(::GetErrorMode() | SEM_FAILCRITICALERRORS);
    velbooter::LoadSystemLibrariesAlone();
    // While a slow drive keeps a call of the system waiting nobody is answered. The system's stand-in for
    // such a window has a close box that would end the program in the middle of a disk.
    ::DisableProcessWindowsGhosting();
}

// What the system opens for the program (links, dialogs for files, the format dialog) may need an apartment
// of COM.
class ComApartment {
 public:
    ComApartment()
        : isOpen_(SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE))) {}
    ~ComApartment() {
        if (isOpen_) ::CoUninitialize();
    }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

 private:
    bool isOpen_;
};

// The windows show the application for as long as this lives. It ends before the application does.
class ShownForms {
 public:
    ShownForms(velbooter::SystemDesktop& desktop, velbooter::Application& app) : desktop_(desktop) {
        desktop_.ShowFormsOf(app);
    }
    ~ShownForms() { desktop_.CloseWindows(); }
    ShownForms(const ShownForms&) = delete;
    ShownForms& operator=(const ShownForms&) = delete;

 private:
    velbooter::SystemDesktop& desktop_;
};

}  // namespace

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, char* /*commandLine*/, int /*show*/) {
    using velbooter::ExitCode;
    PrepareProcess();
    const ComApartment apartment;
    const std::string folder = velbooter::GetProgramFolder();
    const velbooter::SingleInstance instance(velbooter::GetProgramFile());
    velbooter::SystemDesktop desktop;
    velbooter::Application app(folder, desktop);
    const ShownForms forms(desktop, app);
    try {
        velbooter::Main(app, instance, velbooter::ArgumentsOf(::GetCommandLineA()));
        desktop.RunMessages();
        return static_cast<int>(ExitCode::Built);
    } catch (const velbooter::ProgramEnd& end) {
        return static_cast<int>(end.Code);
    } catch (const std::exception& error) {
        velbooter::ShowError(desktop, error);
        velbooter::DeleteWorkingFiles(app.Paths);
        return static_cast<int>(ExitCode::InternalError);
    }
}
