#pragma once
// While a disk is made the session should not end: the system then asks the person at the screen, and shows
// what there is to wait for.

#include <windows.h>

namespace velbooter {

class SessionHold {
 public:
    /// Gives the system the reason, for as long as the object lives. The window answers WM_QUERYENDSESSION
    /// with FALSE meanwhile.
    explicit SessionHold(HWND window) : window_(window) {
        ::ShutdownBlockReasonCreate(window_, L"The Veltrane is still at work on a disk.");
    }
    ~SessionHold() { ::ShutdownBlockReasonDestroy(window_); }
    SessionHold(const SessionHold&) = delete;
    SessionHold& operator=(const SessionHold&) = delete;

 private:
    HWND window_;
};

}  // namespace velbooter
