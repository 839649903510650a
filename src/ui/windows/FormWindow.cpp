#include "src/ui/windows/FormWindow.h"

#include "src/common/Text.h"

namespace velbooter {

void RegisterFormClass(const char* name, WNDPROC procedure, int extraBytes, LPCSTR cursor) {
    const HINSTANCE program = ::GetModuleHandleA(nullptr);
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = procedure;
    windowClass.cbWndExtra = extraBytes;
    windowClass.hInstance = program;
    windowClass.hCursor = ::LoadCursorA(nullptr, cursor);
    windowClass.hIcon = ::LoadIconA(program, MAKEINTRESOURCEA(1));
    windowClass.hbrBackground = ::GetSysColorBrush(COLOR_BTNFACE);
    windowClass.lpszClassName = name;
    ::RegisterClassA(&windowClass);
}

HWND CreateControl(HWND parent, int id, const char* className, const std::string& text, DWORD style,
                   HFONT font, DWORD extendedStyle) {
    const HWND control = ::CreateWindowExA(
        extendedStyle, className, text.c_str(), WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, parent,
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ::GetModuleHandleA(nullptr), nullptr);
    ::SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    return control;
}

bool ShowText(HWND control, const std::string& text) {
    const std::wstring wanted = WideFromAnsi(text);
    std::wstring shown(static_cast<size_t>(::GetWindowTextLengthW(control)) + 1, L'\0');
    shown.resize(
        static_cast<size_t>(::GetWindowTextW(control, shown.data(), static_cast<int>(shown.size()))));
    if (shown == wanted) return false;
    ::SetWindowTextW(control, wanted.c_str());
    return true;
}

void ShowVisible(HWND control, bool visible) {
    const bool shown = (::GetWindowLongA(control, GWL_STYLE) & WS_VISIBLE) != 0;
    if (shown != visible) ::ShowWindow(control, visible ? SW_SHOWNA : SW_HIDE);
}

HWND IfVisible(HWND window) {
    return window != nullptr && ::IsWindowVisible(window) != FALSE ? window : nullptr;
}

void PaintNow(HWND window) {
    ::RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void Announce(HWND label) {
    ::NotifyWinEvent(EVENT_SYSTEM_ALERT, label, OBJID_CLIENT, CHILDID_SELF);
}

void WakeLoop() {
    ::PostThreadMessageA(::GetCurrentThreadId(), WM_NULL, 0, 0);
}

SessionHold::SessionHold(HWND window) : window_(window) {
    ::ShutdownBlockReasonCreate(window_, L"The Veltrane is still at work on a disk.");
}

SessionHold::~SessionHold() {
    ::ShutdownBlockReasonDestroy(window_);
}

}  // namespace velbooter
