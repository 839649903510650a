#include "src/common/Webcollect.h"

#include <windows.h>
// Behind windows.h, on which it depends.
#include <shellapi.h>

#include <algorithm>

namespace velbooter {

namespace {

// How long one wait lasts before the caller may repaint; the end of the process is noticed at once all the
// same.
constexpr DWORD kWaitSliceMs = 50;

}  // namespace

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
