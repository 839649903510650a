// The entry of velbooter.com, the program's twin for command prompts. A prompt waits for no window program
// and shows no result of it; typed without an extension, "velbooter" finds this twin first. It starts
// velbooter.exe of its own folder with the same command line, waits for its end, says in one line how it
// went, and returns the same exit code.

#include <windows.h>

#include <cstdio>

#include "console/Report.h"
#include "src/common/Files.h"
#include "src/common/Handle.h"
#include "src/common/Paths.h"
#include "src/common/Processes.h"
#include "src/common/Text.h"
#include "src/run/ProgramEnd.h"

namespace {

using velbooter::KernelHandle;

struct Started {
    KernelHandle Process;  ///< empty when the start failed
    DWORD Error = 0;       ///< why, a result of GetLastError
};

// The program gets neither the streams nor the console: whoever reads them would wait for the wizard's end,
// and the tools of a build would write between the lines.
Started Start(const std::string& program, const std::string& text) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    PROCESS_INFORMATION process{};
    std::string commandLine = velbooter::QuotePath(program, true, false) + text;
    if (::CreateProcessA(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS,
                         nullptr, nullptr, &startup, &process) == 0) {
        return {{}, ::GetLastError()};
    }
    ::CloseHandle(process.hThread);
    return {KernelHandle(process.hProcess)};
}

// Paths are in the ANSI code page, a console mostly has another one.
std::string ForConsole(const std::string& text) {
    const std::wstring wide = velbooter::WideFromAnsi(text);
    const UINT page = ::GetConsoleOutputCP();  // none, without a console, is the ANSI code page again
    const auto wideLength = static_cast<int>(wide.size());
    const int size = ::WideCharToMultiByte(page, 0, wide.data(), wideLength, nullptr, 0, nullptr, nullptr);
    std::string shown(static_cast<size_t>(size), '\0');
    ::WideCharToMultiByte(page, 0, wide.data(), wideLength, shown.data(), size, nullptr, nullptr);
    return shown;
}

int Fail(const std::string& line) {
    std::fputs(ForConsole(line).c_str(), stderr);
    return static_cast<int>(velbooter::kNotStarted);
}

}  // namespace

int main() {
    velbooter::LoadSystemLibrariesAlone();
    const std::string program = velbooter::GetProgramFolder() + "\\velbooter.exe";
    const std::string text = velbooter::TextAfterName(::GetCommandLineA());
    const bool isWizard = velbooter::IsWithoutArguments(text);
    const Started started = Start(program, isWizard ? "" : text);
    if (!started.Process) {
        return Fail(velbooter::FileExists(program) ? velbooter::NotStartedLine(program, started.Error)
                                                   : velbooter::MissingLine(program));
    }
    if (isWizard) return static_cast<int>(velbooter::ExitCode::Built);

    DWORD code = 0;
    if (::WaitForSingleObject(started.Process.Get(), INFINITE) != WAIT_OBJECT_0 ||
        ::GetExitCodeProcess(started.Process.Get(), &code) == 0) {
        return Fail(velbooter::NotStartedLine(program, ::GetLastError()));
    }
    std::fputs(velbooter::OutcomeLine(code).c_str(), stdout);
    return static_cast<int>(code);
}
