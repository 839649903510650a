#include "src/ui/windows/CheckList.h"

#include <algorithm>

#include "src/ui/windows/ScreenMetrics.h"

namespace velbooter {

namespace {

constexpr UINT kSelection = LVIS_SELECTED | LVIS_FOCUSED;

// The state images of check boxes: 1 without a tick, 2 with one.
UINT TickImage(bool ticked) {
    return INDEXTOSTATEIMAGEMASK(ticked ? 2U : 1U);
}

bool LookAlike(const ListItem& left, const ListItem& right) {
    return left.Text == right.Text && left.SubItem == right.SubItem && left.Checked == right.Checked &&
           left.Selected == right.Selected;
}

}  // namespace

bool ChangesTick(const NMLISTVIEW& change) {
    return (change.uChanged & LVIF_STATE) != 0 &&
           ((change.uOldState ^ change.uNewState) & LVIS_STATEIMAGEMASK) != 0;
}

void CheckList::Create(HWND parent, int id, const char* name, HFONT font) {
    const DWORD style = WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS;
    list_ = ::CreateWindowExA(WS_EX_CLIENTEDGE, WC_LISTVIEWA, name, style, 0, 0, 0, 0, parent,
                              reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ::GetModuleHandleA(nullptr),
                              nullptr);
    const DWORD extended = LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP;
    ::SendMessageA(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, extended, extended);
    ::SendMessageA(list_, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    LVCOLUMNA column{};
    column.mask = LVCF_FMT;
    column.fmt = LVCFMT_LEFT;
    for (int i = 0; i < 2; ++i) {
        ::SendMessageA(list_, LVM_INSERTCOLUMNA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
    }
    // A driver's name is that of a DOS file.
    constexpr const char* kLongestName = "WWWWWWWW";
    constexpr int kBoxAndMargins = 36;
    const auto nameWidth = static_cast<int>(
        ::SendMessageA(list_, LVM_GETSTRINGWIDTHA, 0, reinterpret_cast<LPARAM>(kLongestName)));
    ::SendMessageA(list_, LVM_SETCOLUMNWIDTH, 0, nameWidth + ScaledPixels(kBoxAndMargins));
}

void CheckList::Show(const ListView& list) {
    copying_ = true;
    ShowColumn(0, list.FirstColumnTitle, list.Sorted && list.SortKey == 0, list.Order);
    ShowColumn(1, list.SecondColumnTitle, list.Sorted && list.SortKey == 1, list.Order);
    const bool changed = ShowRows(list.ListItems);
    copying_ = false;
    fits_ = fits_ && !changed;
    // A list that is being loaded is sorted in the end. Till then its columns stay: to fit them takes a look
    // at every row.
    if (!list.Sorted) return;
    if (!fits_) FitColumns();
    fits_ = true;
    const auto selected = ::SendMessageA(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
    if (selected < 0) {
        SelectFirstRow();
    } else if (changed) {
        ::SendMessageA(list_, LVM_ENSUREVISIBLE, static_cast<WPARAM>(selected), FALSE);
    }
}

void CheckList::ShowColumn(int column, const std::string& title, bool sorted, SortOrder order) const {
    const auto header = reinterpret_cast<HWND>(::SendMessageA(list_, LVM_GETHEADER, 0, 0));
    char shownTitle[128] = "";
    HDITEMA shown{};
    shown.mask = HDI_TEXT | HDI_FORMAT;
    shown.pszText = shownTitle;
    shown.cchTextMax = sizeof shownTitle;
    ::SendMessageA(header, HDM_GETITEMA, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&shown));
    const int arrow = !sorted ? 0 : order == SortOrder::Ascending ? HDF_SORTUP : HDF_SORTDOWN;
    const int format = (shown.fmt & ~(HDF_SORTUP | HDF_SORTDOWN)) | HDF_STRING | arrow;
    if (title == shown.pszText && format == shown.fmt) return;

    std::string text = title;
    HDITEMA wanted{};
    wanted.mask = HDI_TEXT | HDI_FORMAT;
    wanted.pszText = text.data();
    wanted.fmt = format;
    ::SendMessageA(header, HDM_SETITEMA, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&wanted));
}

bool CheckList::ShowRows(const std::vector<ListItem>& rows) {
    if (std::equal(rows.begin(), rows.end(), shown_.begin(), shown_.end(), LookAlike)) return false;

    ::SendMessageA(list_, WM_SETREDRAW, FALSE, 0);
    for (; shown_.size() > rows.size(); shown_.pop_back())
        ::SendMessageA(list_, LVM_DELETEITEM, shown_.size() - 1, 0);
    for (size_t i = 0; i < rows.size(); ++i) {
        if (i == shown_.size()) {
            LVITEMA item{};
            item.iItem = static_cast<int>(i);
            ::SendMessageA(list_, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
            shown_.emplace_back();
        } else if (LookAlike(rows[i], shown_[i])) {
            continue;
        }
        ShowRow(static_cast<int>(i), rows[i], shown_[i]);
    }
    ::SendMessageA(list_, WM_SETREDRAW, TRUE, 0);
    ::InvalidateRect(list_, nullptr, TRUE);
    return true;
}

void CheckList::ShowRow(int row, const ListItem& wanted, ListItem& shown) const {
    const auto setText = [&](int column, std::string text) {
        LVITEMA item{};
        item.iSubItem = column;
        item.pszText = text.data();
        ::SendMessageA(list_, LVM_SETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    };
    if (wanted.Text != shown.Text) setText(0, wanted.Text);
    if (wanted.SubItem != shown.SubItem) setText(1, wanted.SubItem);
    LVITEMA item{};
    item.state = TickImage(wanted.Checked) | (wanted.Selected ? kSelection : 0);
    item.stateMask = LVIS_STATEIMAGEMASK | (wanted.Selected != shown.Selected ? kSelection : 0);
    ::SendMessageA(list_, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    shown = wanted;
}

void CheckList::ReadInto(ListView& list) {
    if (copying_) return;
    const size_t count = std::min(list.ListItems.size(), shown_.size());
    for (size_t i = 0; i < count; ++i) {
        const auto state = static_cast<UINT>(
            ::SendMessageA(list_, LVM_GETITEMSTATE, i, LVIS_STATEIMAGEMASK | LVIS_SELECTED));
        shown_[i].Checked = (state & LVIS_STATEIMAGEMASK) == TickImage(true);
        shown_[i].Selected = (state & LVIS_SELECTED) != 0;
        list.ListItems[i].Checked = shown_[i].Checked;
        list.ListItems[i].Selected = shown_[i].Selected;
    }
}

void CheckList::Place(int left, int top, int width, int height) const {
    ::MoveWindow(list_, left, top, width, height, TRUE);
    FitColumns();
}

// The second column is as wide as its longest text, so that all of it can be reached, and fills the rest of
// the list.
void CheckList::FitColumns() const {
    ::SendMessageA(list_, LVM_SETCOLUMNWIDTH, 1, LVSCW_AUTOSIZE);
    const auto longest = static_cast<int>(::SendMessageA(list_, LVM_GETCOLUMNWIDTH, 1, 0));
    const auto first = static_cast<int>(::SendMessageA(list_, LVM_GETCOLUMNWIDTH, 0, 0));
    RECT inner{};
    ::GetClientRect(list_, &inner);
    const int rest = static_cast<int>(inner.right) - first;
    if (longest < rest) ::SendMessageA(list_, LVM_SETCOLUMNWIDTH, 1, rest);
}

void CheckList::SelectFirstRow() const {
    LVITEMA item{};
    item.state = kSelection;
    item.stateMask = kSelection;
    ::SendMessageA(list_, LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&item));
}

POINT CheckList::PlaceForMenu() const {
    const auto selected = ::SendMessageA(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
    RECT row{};
    row.left = LVIR_LABEL;
    POINT place{};
    if (selected >= 0 && ::SendMessageA(list_, LVM_GETITEMRECT, static_cast<WPARAM>(selected),
                                        reinterpret_cast<LPARAM>(&row)) != 0) {
        place = {row.left, row.bottom};
    }
    ::ClientToScreen(list_, &place);
    return place;
}

}  // namespace velbooter
