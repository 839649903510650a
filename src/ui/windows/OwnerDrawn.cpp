#include "src/ui/windows/OwnerDrawn.h"

#include <algorithm>
#include <iterator>

#include "resources/ids.h"
#include "src/ui/windows/WindowHandle.h"

namespace velbooter {

namespace {

SIZE SizeOf(const Bitmap& picture) {
    BITMAP size{};
    ::GetObjectA(picture.get(), sizeof size, &size);
    return {size.bmWidth, size.bmHeight};
}

// The smallest of the pictures that covers the control, else the largest.
Bitmap LoadSideImage(SIZE control) {
    Bitmap picture;
    for (const int id : {IDB_SIDE_96, IDB_SIDE_120, IDB_SIDE_144, IDB_SIDE_192}) {
        picture.reset(static_cast<HBITMAP>(::LoadImageA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id),
                                                        IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
        const SIZE size = SizeOf(picture);
        if (size.cx >= control.cx && size.cy >= control.cy) break;
    }
    return picture;
}

}  // namespace

void DrawSideImage(const DRAWITEMSTRUCT& item) {
    const RECT& place = item.rcItem;
    const SIZE control{place.right - place.left, place.bottom - place.top};
    const Bitmap picture = LoadSideImage(control);
    const SIZE size = SizeOf(picture);
    // The middle is shown as it is; what is cut off at the edges is plain. Only a picture too small is
    // stretched.
    const SIZE part{std::min(size.cx, control.cx), std::min(size.cy, control.cy)};
    const CreatedContext source(::CreateCompatibleDC(item.hDC));
    const SelectedObject drawn(source.get(), picture.get());
    ::SetStretchBltMode(item.hDC, HALFTONE);
    ::SetBrushOrgEx(item.hDC, 0, 0, nullptr);
    ::StretchBlt(item.hDC, place.left, place.top, control.cx, control.cy, source.get(),
                 (size.cx - part.cx) / 2, (size.cy - part.cy) / 2, part.cx, part.cy, SRCCOPY);
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
    const Pen pen(::CreatePen(PS_SOLID, std::max(1, side / 7), ::GetSysColor(COLOR_HIGHLIGHT)));
    const SelectedObject drawn(item.hDC, pen.get());
    ::Polyline(item.hDC, strokes, static_cast<int>(std::size(strokes)));
}

}  // namespace velbooter
