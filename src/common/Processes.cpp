#include "src/common/Processes.h"

#include <windows.h>
// shellapi.h needs windows.h before it.
#include <shellapi.h>

#include <algorithm>

#include "src/common/Paths.h"

namespace velbooter {

namespace {

// How long one wait lasts before the caller may repaint. The end of the process ends the wait at once.
constexpr DWORD kWaitSliceMs = 50;

}  // namespace

std::string GetProgramFile() {
    char path[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    return path;
}

std::string GetProgramFolder() {
    return GetFolderPart(GetProgramFile());
}

void LoadSystemLibrariesAlone() {
    using SetDirectories = BOOL(WINAPI*)(DWORD);
    const auto setDirectories = reinterpret_cast<SetDirectories>(reinterpret_cast<void*>(
        ::GetProcAddress(::GetModuleHandleA("kernel32.dll"), "SetDefaultDllDirectories")));
    if (setDirectories != nullptr) setDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
}

std::string TextAfterName(const std::string& wholeCommandLine) {
    bool quoted = false;
    for (size_t i = 0; i < wholeCommandLine.size(); ++i) {
        const char c = wholeCommandLine[i];
        if (c == '"') quoted = !quoted;
        if (!quoted && (c == ' ' || c == '\t')) return wholeCommandLine.substr(i);
    }
    return "";
}

std::string ArgumentsOf(const std::string& wholeCommandLine) {
    const std::string text = TextAfterName(wholeCommandLine);
    return text.empty() ? "" : text.substr(1);
}

bool IsWithoutArguments(const std::string& text) {
    return text.find_first_not_of(' ') == std::string::npos;
}

KernelHandle StartProcess(const std::string& commandLine, bool hidden) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    if (hidden) {
        startup.dwFlags = STARTF_USESHOWWINDOW;
        startup.wShowWindow = SW_HIDE;
    }
    PROCESS_INFORMATION process{};
    std::string writable = commandLine;
    if (::CreateProcessA(nullptr, writable.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                         &process) == 0) {
        return {};
    }
    return KernelHandle(process.hProcess);
}

bool RunAndWait(const std::string& commandLine, std::int32_t timeoutMs, bool waitForInputIdle, bool hidden,
                const std::function<void()>& whileWaiting) {
    const KernelHandle process = StartProcess(commandLine, hidden);
    if (!process) return false;
    const ULONGLONG start = ::GetTickCount64();
    for (;;) {
        DWORD slice = kWaitSliceMs;
        if (timeoutMs >= 1) {
            const ULONGLONG gone = ::GetTickCount64() - start;
            const auto limit = static_cast<ULONGLONG>(timeoutMs);
            slice = gone >= limit ? 0 : static_cast<DWORD>(std::min<ULONGLONG>(slice, limit - gone));
        }
        const DWORD result = waitForInputIdle ? ::WaitForInputIdle(process.Get(), slice)
                                              : ::WaitForSingleObject(process.Get(), slice);
        if (result == WAIT_OBJECT_0) return true;
        if (result != WAIT_TIMEOUT || slice == 0) return false;
        if (whileWaiting) whileWaiting();
    }
}

std::int32_t OpenWithShell(const std::string& document) {
    const HINSTANCE result =
        ::ShellExecuteA(nullptr, nullptr, document.c_str(), nullptr, "C:\\", SW_SHOWNORMAL);
    return static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(result));
}

bool IsWindowPresent(const std::string& windowClass, const std::string& title) {
    return ::FindWindowA(windowClass.c_str(), title.c_str()) != nullptr;
}

}  // namespace velbooter
