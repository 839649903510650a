// The entry point of velbooter.com, the program's companion for command prompts. A prompt does not wait for a
// window program and does not show how it ended; typed without an extension, "velbooter" runs this companion
// first. It starts the velbooter.exe in its own folder with the same command line, waits until it ends,
// prints one line about how it went, and returns the same exit code.

#include <windows.h>

#include <cstdio>
#include <optional>

#include "console/BuiltImage.h"
#include "console/Report.h"
#include "src/common/Files.h"
#include "src/common/Handle.h"
#include "src/common/Paths.h"
#include "src/common/Processes.h"
#include "src/common/RunReport.h"
#include "src/common/Text.h"
#include "src/run/ProgramEnd.h"

namespace {

using velbooter::KernelHandle;

struct Started {
    KernelHandle Process;  ///< empty when the start failed
    DWORD Error = 0;       ///< why, a result of GetLastError
    std::optional<velbooter::RunReport> Report;
};

// The program runs only when it can report. It inherits neither the streams nor the console. With them, a
// program that reads the streams would wait for the wizard to end, and the tools of a build would print into
// the prompt.
Started Start(const std::string& program, const std::string& text) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    PROCESS_INFORMATION process{};
    std::string commandLine = velbooter::QuotePath(program, true, false) + text;
    if (::CreateProcessA(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE,
                         DETACHED_PROCESS | CREATE_SUSPENDED, nullptr, nullptr, &startup, &process) == 0) {
        return {{}, ::GetLastError(), std::nullopt};
    }
    const KernelHandle thread(process.hThread);
    Started started{KernelHandle(process.hProcess), 0, velbooter::RunReport(process.dwProcessId)};
    ::ResumeThread(thread.Get());
    return started;
}

// Paths are in the ANSI code page; a console usually has another one.
std::string ForConsole(const std::string& text) {
    const std::wstring wide = velbooter::WideFromAnsi(text);
    const UINT page = ::GetConsoleOutputCP();  // 0, without a console, means the ANSI code page
    const auto wideLength = static_cast<int>(wide.size());
    const int size = ::WideCharToMultiByte(page, 0, wide.data(), wideLength, nullptr, 0, nullptr, nullptr);
    std::string shown(static_cast<size_t>(size), '\0');
    ::WideCharToMultiByte(page, 0, wide.data(), wideLength, shown.data(), size, nullptr, nullptr);
    return shown;
}

// The line about a run that has ended with `code`.
std::string LineAbout(const velbooter::RunReport& report, DWORD code) {
    const std::string image = report.BuiltImage();
    const auto use = image.empty() ? std::nullopt : velbooter::UseOfImage(image);
    return use ? velbooter::BuiltLine(image, *use) : velbooter::OutcomeLine(code);
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
    std::fputs(ForConsole(LineAbout(*started.Report, code)).c_str(), stdout);
    return static_cast<int>(code);
}
