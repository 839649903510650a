// The program's entry point: creates the real desktop, runs the start routine and turns the way it ends into
// an exit code.

#include <windows.h>
// objbase.h needs windows.h before it.
#include <objbase.h>

#include <exception>

#include "src/common/Processes.h"
#include "src/common/SingleInstance.h"
#include "src/run/ProgramEnd.h"
#include "src/run/RunEnd.h"
#include "src/start/Main.h"
#include "src/ui/windows/SystemDesktop.h"

namespace {

// The settings of the whole process, before anything else.
void PrepareProcess() {
    // A drive without a disk is reported by the step that needs it, not first by a message box of the system.
    // The tools inherit this setting.
    ::SetErrorMode(::GetErrorMode() | SEM_FAILCRITICALERRORS);
    velbooter::LoadSystemLibrariesAlone();
    // While a system call waits for a slow drive, the windows do not respond. The system would replace them
    // with ghost windows, whose close button ends the program in the middle of writing a disk.
    ::DisableProcessWindowsGhosting();
}

// Links, file dialogs and the format dialog may need a COM apartment.
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

// The windows show the application as long as this object lives. It is destroyed before the application.
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
