#include "tests/e2e/support/ConsoleTwin.h"

#include "tests/e2e/support/HarnessFailure.h"
#include "tests/e2e/support/Programs.h"
#include "tests/e2e/support/Screen.h"
#include "tests/support/Patience.h"

namespace velbooter::e2e {

namespace {

// Returns the end that programs write to; `reading` becomes the end of the test, which no program inherits.
HANDLE MakePipe(HANDLE& reading) {
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE writing = nullptr;
    if (::CreatePipe(&reading, &writing, &inheritable, 0) == 0)
        throw HarnessFailure("no pipe can be created");
    ::SetHandleInformation(reading, HANDLE_FLAG_INHERIT, 0);
    return writing;
}

}  // namespace

ConsoleTwin::ConsoleTwin(const DemoFolder& folder, const std::string& arguments)
    : ConsoleTwin("\"" + folder.Path("velbooter.com") + "\"" + arguments, folder.OutsidePath("")) {}

ConsoleTwin ConsoleTwin::Typed(const DemoFolder& folder, const std::string& line) {
    return {"cmd.exe /c " + line, folder.Path()};
}

ConsoleTwin::ConsoleTwin(std::string commandLine, const std::string& currentFolder) {
    LeaveWindowsUnmanaged("velbooter.exe");
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = MakePipe(output_);
    startup.hStdError = MakePipe(errors_);
    const BOOL started =
        ::CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr,
                         currentFolder.c_str(), &startup, &process_);
    const DWORD error = ::GetLastError();
    ::CloseHandle(startup.hStdOutput);
    ::CloseHandle(startup.hStdError);
    if (started == 0)
        throw HarnessFailure("did not start: " + commandLine + ": error " + std::to_string(error));
}

ConsoleTwin::~ConsoleTwin() {
    ::CloseHandle(process_.hThread);
    ::CloseHandle(process_.hProcess);
    ::CloseHandle(output_);
    ::CloseHandle(errors_);
}

DWORD ConsoleTwin::Program() const {
    return WaitForChild(process_.dwProcessId, "velbooter.exe");
}

bool ConsoleTwin::IsRunning() const {
    return ::WaitForSingleObject(process_.hProcess, 0) == WAIT_TIMEOUT;
}

DWORD ConsoleTwin::ExitCode() const {
    if (::WaitForSingleObject(process_.hProcess, kPatienceMs) != WAIT_OBJECT_0) {
        throw HarnessFailure("velbooter.com does not end");
    }
    DWORD code = 0;
    ::GetExitCodeProcess(process_.hProcess, &code);
    return code;
}

// Under Wine a console is a process, too, which keeps the streams open a moment longer.
std::string ConsoleTwin::Drain(HANDLE pipe, const std::string& what) const {
    constexpr DWORD kStep = 10;
    std::string text;
    DWORD size = 0;
    ExitCode();
    const ULONGLONG end = ::GetTickCount64() + kPatienceMs;
    while (::PeekNamedPipe(pipe, nullptr, 0, nullptr, &size, nullptr) != 0) {
        if (::GetTickCount64() > end) throw HarnessFailure("after its end somebody else holds its " + what);
        std::string part(size, '\0');
        if (size > 0) ::ReadFile(pipe, part.data(), size, &size, nullptr);
        if (size == 0) ::Sleep(kStep);
        text += part.substr(0, size);
    }
    return text;
}

}  // namespace velbooter::e2e
