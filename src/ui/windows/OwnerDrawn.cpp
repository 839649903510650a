#include "src/ui/windows/OwnerDrawn.h"

#include <algorithm>
#include <iterator>

#include "resources/ids.h"

namespace velbooter {

void DrawSideImage(const DRAWITEMSTRUCT& item) {
    const auto picture =
        static_cast<HBITMAP>(::LoadImageA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDB_SIDE_IMAGE),
                                          IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
    BITMAP size{};
    ::GetObjectA(picture, sizeof size, &size);
    const HDC source = ::CreateCompatibleDC(item.hDC);
    const HGDIOBJ former = ::SelectObject(source, picture);
    ::SetStretchBltMode(item.hDC, HALFTONE);
    ::SetBrushOrgEx(item.hDC, 0, 0, nullptr);
    ::StretchBlt(item.hDC, item.rcItem.left, item.rcItem.top, item.rcItem.right - item.rcItem.left,
                 item.rcItem.bottom - item.rcItem.top, source, 0, 0, size.bmWidth, size.bmHeight, SRCCOPY);
    ::SelectObject(source, former);
    ::DeleteDC(source);
    ::DeleteObject(picture);
}

void DrawStepMark(const DRAWITEMSTRUCT& item) {
    ::FillRect(item.hDC, &item.rcItem, ::GetSysColorBrush(COLOR_BTNFACE));
    if (::GetWindowTextLengthA(item.hwndItem) == 0) return;
    // Two strokes in a field of twelve units, so that the mark is as sharp at every size.
    constexpr int kField = 12;
    const int side = std::min(item.rcItem.right - item.rcItem.left, item.rcItem.bottom - item.rcItem.top);
    const auto at = [&](int x, int y) {
        return POINT{item.rcItem.left + side * x / kField, item.rcItem.top + side * y / kField};
    };
    const POINT strokes[] = {at(2, 6), at(5, 9), at(10, 3)};
    const HPEN pen = ::CreatePen(PS_SOLID, std::max(1, side / 7), ::GetSysColor(COLOR_HIGHLIGHT));
    const HGDIOBJ former = ::SelectObject(item.hDC, pen);
    ::Polyline(item.hDC, strokes, static_cast<int>(std::size(strokes)));
    ::SelectObject(item.hDC, former);
    ::DeleteObject(pen);
}

}  // namespace velbooter
