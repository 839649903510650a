#include "tests/e2e/support/Announcements.h"

#include "tests/e2e/support/HarnessFailure.h"

namespace velbooter::e2e {

namespace {

// The system's call has no parameter for the object that listens.
std::vector<HWND>& Windows() {
    static std::vector<HWND> windows;
    return windows;
}

void CALLBACK Hear(HWINEVENTHOOK /*hook*/, DWORD /*event*/, HWND window, LONG /*object*/, LONG /*child*/,
                   DWORD /*thread*/, DWORD /*time*/) {
    Windows().push_back(window);
}

}  // namespace

Announcements::Announcements(DWORD process)
    : hook_(::SetWinEventHook(EVENT_SYSTEM_ALERT, EVENT_SYSTEM_ALERT, nullptr, Hear, process, 0,
                              WINEVENT_OUTOFCONTEXT)) {
    if (hook_ == nullptr) throw HarnessFailure("nobody can listen to the program");
    Windows().clear();
}

Announcements::~Announcements() {
    ::UnhookWinEvent(hook_);
}

// The calls arrive while the thread looks for messages.
std::vector<HWND> Announcements::Heard() const {
    MSG message{};
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != 0) ::DispatchMessageA(&message);
    return Windows();
}

}  // namespace velbooter::e2e
