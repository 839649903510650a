#include <windows.h>

#include <array>
#include <future>
#include <stdexcept>
#include <string>

#include "tests/support/RunProgram.h"
#include "tools/shared/Handle.h"
#include "tools/shared/Utf8.h"

namespace tools::testing {
namespace {

// No argument of a test ends with a backslash or contains a quote, so quoting is simple.
std::wstring CommandLine(const std::vector<std::string>& words) {
    std::wstring line;
    for (const std::string& word : words) {
        const std::u16string wide = Utf16FromUtf8(word);
        line += (line.empty() ? L"\"" : L" \"") + std::wstring(wide.begin(), wide.end()) + L"\"";
    }
    return line;
}

// Kernel objects, whose handles are null for none: a process, a thread, the end of a pipe.
struct KernelObject {
    using Value = HANDLE;
    static Value None() { return nullptr; }
    static void Close(Value object) { CloseHandle(object); }
};
using KernelHandle = base::UniqueHandle<KernelObject>;

// A pipe whose writing end is inherited.
struct Pipe {
    KernelHandle Read;
    KernelHandle Write;

    Pipe() {
        SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
        HANDLE readEnd = nullptr;
        HANDLE writeEnd = nullptr;
        if (!CreatePipe(&readEnd, &writeEnd, &inherited, 0))
            throw std::runtime_error("there is no pipe for the test");
        Read.Reset(readEnd);
        Write.Reset(writeEnd);
        SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
    }

    std::string ReadToTheEnd() const {
        std::string text;
        std::array<char, 4096> piece{};
        DWORD count = 0;
        while (ReadFile(Read.Get(), piece.data(), static_cast<DWORD>(piece.size()), &count, nullptr) &&
               count > 0)
            text.append(piece.data(), count);
        return text;
    }
};

// Starts a program with the given standard streams. Returns its process, or none.
KernelHandle Start(const std::vector<std::string>& words, HANDLE output, HANDLE errors) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = INVALID_HANDLE_VALUE;
    start.hStdOutput = output;
    start.hStdError = errors;
    PROCESS_INFORMATION process{};
    std::wstring line = CommandLine(words);
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process))
        return {};
    const KernelHandle thread(process.hThread);
    return KernelHandle(process.hProcess);
}

}  // namespace

ProgramResult RunProgram(const std::vector<std::string>& words) {
    ProgramResult result;
    Pipe output;
    Pipe errors;
    const KernelHandle process = Start(words, output.Write.Get(), errors.Write.Get());
    output.Write.Reset();
    errors.Write.Reset();
    if (!process) return result;
    // Both are read at once, because a program waits when nobody reads what it writes.
    auto said = std::async(std::launch::async, [&] { return errors.ReadToTheEnd(); });
    result.Output = output.ReadToTheEnd();
    result.Errors = said.get();
    WaitForSingleObject(process.Get(), INFINITE);
    DWORD code = 0;
    if (GetExitCodeProcess(process.Get(), &code)) result.ExitCode = static_cast<int>(code);
    return result;
}

}  // namespace tools::testing
