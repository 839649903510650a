#include <windows.h>

#include <array>
#include <string>

#include "tests/tools/shared/RunProgram.h"
#include "tools/shared/Utf8.h"

namespace tools::testing {
namespace {

// No argument of a test ends with a backslash or holds a quote, so quoting is simple.
std::wstring CommandLine(const std::vector<std::string>& words) {
    std::wstring line;
    for (const std::string& word : words) {
        const std::u16string wide = Utf16FromUtf8(word);
        line += (line.empty() ? L"\"" : L" \"") + std::wstring(wide.begin(), wide.end()) + L"\"";
    }
    return line;
}

}  // namespace

ProgramResult RunProgram(const std::vector<std::string>& words) {
    ProgramResult result;
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE readEnd = nullptr;
    HANDLE writeEnd = nullptr;
    if (!CreatePipe(&readEnd, &writeEnd, &inherited, 0)) return result;
    SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = INVALID_HANDLE_VALUE;
    start.hStdOutput = writeEnd;
    start.hStdError = writeEnd;
    PROCESS_INFORMATION process{};
    std::wstring line = CommandLine(words);
    const BOOL isStarted =
        CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process);
    CloseHandle(writeEnd);
    std::array<char, 4096> piece{};
    DWORD count = 0;
    while (isStarted && ReadFile(readEnd, piece.data(), static_cast<DWORD>(piece.size()), &count, nullptr) &&
           count > 0)
        result.Output.append(piece.data(), count);
    CloseHandle(readEnd);
    if (!isStarted) return result;
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 0;
    if (GetExitCodeProcess(process.hProcess, &code)) result.ExitCode = static_cast<int>(code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return result;
}

}  // namespace tools::testing
