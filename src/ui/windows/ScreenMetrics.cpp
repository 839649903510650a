#include "src/ui/windows/ScreenMetrics.h"

#include <algorithm>

namespace velbooter {

namespace {

constexpr int kTwipsPerInch = 1440;

// Where the window is too large for the work area, its caption stays in sight.
LONG Centered(LONG length, LONG from, LONG to, LONG workFrom, LONG workTo) {
    const LONG centered = from + (to - from - length) / 2;
    return std::max(std::min(centered, workTo - length), workFrom);
}

}  // namespace

int ScreenDpi() {
    return ::GetDeviceCaps(WindowContext(nullptr).get(), LOGPIXELSX);
}

int ScaledPixels(int pixels) {
    return ::MulDiv(pixels, ScreenDpi(), USER_DEFAULT_SCREEN_DPI);
}

int PixelsFromTwips(int twips) {
    return ::MulDiv(twips, ScreenDpi(), kTwipsPerInch);
}

int TwipsFromPixels(int pixels) {
    return ::MulDiv(pixels, kTwipsPerInch, ScreenDpi());
}

Font DialogFont() {
    constexpr int kPoints = 8;
    constexpr int kPointsPerInch = 72;
    LOGFONTA description{};
    description.lfHeight = -::MulDiv(kPoints, ScreenDpi(), kPointsPerInch);
    description.lfWeight = FW_NORMAL;
    description.lfCharSet = DEFAULT_CHARSET;
    // What the system takes for the "MS Shell Dlg" of a template with DS_SHELLFONT.
    ::lstrcpynA(description.lfFaceName, "MS Shell Dlg 2", LF_FACESIZE);
    return Font(::CreateFontIndirectA(&description));
}

POINT CenteredPlace(SIZE size, HWND owner) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    ::GetMonitorInfoA(::MonitorFromWindow(owner, MONITOR_DEFAULTTOPRIMARY), &monitor);
    const RECT& work = monitor.rcWork;
    RECT around = work;
    if (owner != nullptr) ::GetWindowRect(owner, &around);
    return {Centered(size.cx, around.left, around.right, work.left, work.right),
            Centered(size.cy, around.top, around.bottom, work.top, work.bottom)};
}

}  // namespace velbooter
