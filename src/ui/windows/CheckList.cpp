#include "src/ui/windows/CheckList.h"

#include "src/ui/windows/FormWindow.h"
#include "src/ui/windows/ScreenMetrics.h"

namespace velbooter {

bool ChangesTick(const NMLISTVIEW& change) {
    return (change.uChanged & LVIF_STATE) != 0 &&
           ((change.uOldState ^ change.uNewState) & LVIS_STATEIMAGEMASK) != 0;
}

void CheckList::Create(HWND parent, int id, const char* name, HFONT font) {
    const DWORD style = WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS;
    const HWND list = CreateControl(parent, id, WC_LISTVIEWA, name, style, font, WS_EX_CLIENTEDGE);
    const DWORD extended = LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP;
    ::SendMessageA(list, LVM_SETEXTENDEDLISTVIEWSTYLE, extended, extended);
    Attach(list);
    fits_ = true;
    // A driver's name is that of a DOS file.
    constexpr const char* kLongestName = "WWWWWWWW";
    constexpr int kBoxAndMargins = 36;
    FitColumn(0, TextWidth(kLongestName) + ScaledPixels(kBoxAndMargins));
}

void CheckList::Show(ListView& list) {
    const int arrow = list.Order == SortOrder::Ascending ? HDF_SORTUP : HDF_SORTDOWN;
    ShowTitle(0, list.FirstColumnTitle, list.Sorted && list.SortKey == 0 ? arrow : 0);
    ShowTitle(1, list.SecondColumnTitle, list.Sorted && list.SortKey == 1 ? arrow : 0);
    const bool changed = ShowRows(list.ListItems) != Change::None;
    fits_ = fits_ && !changed;
    // A list is sorted when it has been loaded. Until then its columns stay as they are, because fitting
    // them reads every row.
    if (!list.Sorted) return;
    if (!fits_) FillWithColumn(1);
    fits_ = true;
    if (list.ListItems.empty()) return;
    if (const int selected = SelectedRow(); selected < 0) {
        list.ListItems.front().Selected = true;
        ShowRows(list.ListItems);
    } else if (changed) {
        ::SendMessageA(Handle(), LVM_ENSUREVISIBLE, static_cast<WPARAM>(selected), FALSE);
    }
}

void CheckList::Place(int left, int top, int width, int height) const {
    ::MoveWindow(Handle(), left, top, width, height, TRUE);
    FillWithColumn(1);
}

POINT CheckList::PlaceForMenu() const {
    const int selected = SelectedRow();
    RECT row{};
    row.left = LVIR_LABEL;
    POINT place{};
    if (selected >= 0 && ::SendMessageA(Handle(), LVM_GETITEMRECT, static_cast<WPARAM>(selected),
                                        reinterpret_cast<LPARAM>(&row)) != 0) {
        place = {row.left, row.bottom};
    }
    ::ClientToScreen(Handle(), &place);
    return place;
}

}  // namespace velbooter
