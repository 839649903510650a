#include "src/ui/windows/WaitWindow.h"

#include "src/forms/ProductTexts.h"
#include "src/ui/windows/ScreenMetrics.h"

namespace velbooter {

namespace {

constexpr const char* kWaitClass = "FrmWait";
constexpr int kStatusId = 1001;
// Client area at 96 dots per inch, in pixels: space for the longest status text with its margins.
constexpr int kWidth = 420;
constexpr int kHeight = 72;
constexpr int kMargin = 16;
constexpr DWORD kWaitStyle = WS_POPUP | WS_CAPTION;

LRESULT CALLBACK WaitProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    // The window cannot be closed: the program hides it when the work has ended.
    if (message == WM_CLOSE) return 0;
    // The session may not end before that either; afterwards it may.
    if (message == WM_QUERYENDSESSION) return ::IsWindowVisible(window) != FALSE ? FALSE : TRUE;
    return ::DefWindowProcA(window, message, wParam, lParam);
}

}  // namespace

void WaitWindow::Create() {
    const HINSTANCE instance = ::GetModuleHandleA(nullptr);
    RegisterFormClass(kWaitClass, WaitProcedure, 0, IDC_WAIT);
    RECT frame{0, 0, ScaledPixels(kWidth), ScaledPixels(kHeight)};
    ::AdjustWindowRectEx(&frame, kWaitStyle, FALSE, WS_EX_DLGMODALFRAME | WS_EX_APPWINDOW);
    const SIZE size{frame.right - frame.left, frame.bottom - frame.top};
    const POINT place = CenteredPlace(size, nullptr);
    window_.reset(::CreateWindowExA(WS_EX_DLGMODALFRAME | WS_EX_APPWINDOW, kWaitClass, kProgramTitle,
                                    kWaitStyle, place.x, place.y, size.cx, size.cy, nullptr, nullptr,
                                    instance, nullptr));
    font_ = DialogFont();
    status_ = CreateControl(window_.get(), kStatusId, "STATIC", "", SS_LEFT | SS_NOPREFIX, font_.get());
    ::MoveWindow(status_, ScaledPixels(kMargin), ScaledPixels(kMargin), ScaledPixels(kWidth - 2 * kMargin),
                 ScaledPixels(kHeight - 2 * kMargin), FALSE);
}

void WaitWindow::Show(const FrmWait& form) {
    if (!window_) {
        if (!form.Visible) return;
        Create();
    }
    const bool changes = ShowText(status_, form.LblStatus.Caption);
    if (form.Visible != (Handle() != nullptr)) {
        if (form.Visible) hold_.emplace(window_.get());
        if (!form.Visible) hold_.reset();
        ::ShowWindow(window_.get(), form.Visible ? SW_SHOW : SW_HIDE);
    }
    if (changes && form.Visible) Announce(status_);
    PaintNow(window_.get());
}

}  // namespace velbooter
