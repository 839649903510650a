#include "src/ui/windows/ReportList.h"

#include <algorithm>

namespace velbooter {

namespace {

constexpr UINT kSelection = LVIS_SELECTED | LVIS_FOCUSED;

// The state images of check boxes: 1 without a tick, 2 with one.
UINT TickImage(bool ticked) {
    return INDEXTOSTATEIMAGEMASK(ticked ? 2U : 1U);
}

bool HaveSameTexts(const ListItem& left, const ListItem& right) {
    return left.Text == right.Text && left.SubItem == right.SubItem && left.SmallIcon == right.SmallIcon;
}

bool HaveSameState(const ListItem& left, const ListItem& right) {
    return left.Checked == right.Checked && left.Selected == right.Selected;
}

template <class Parameter>
LRESULT Send(HWND list, UINT message, size_t index, const Parameter* parameter) {
    return ::SendMessageA(list, message, index, reinterpret_cast<LPARAM>(parameter));
}

}  // namespace

void ReportList::Attach(HWND list) {
    list_ = list;
    hasTicks_ = (::SendMessageA(list_, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0) & LVS_EX_CHECKBOXES) != 0;
    titles_ = {};
    shown_.clear();
    LVCOLUMNA column{};
    column.mask = LVCF_FMT;
    column.fmt = LVCFMT_LEFT;
    for (size_t i = 0; i < 2; ++i) Send(list_, LVM_INSERTCOLUMNA, i, &column);
}

void ReportList::ShowTitle(size_t column, const std::string& title, int arrow) {
    Title& shown = titles_.at(column);
    if (shown == Title{title, arrow}) return;
    shown = {title, arrow};
    HDITEMA item{};
    item.mask = HDI_TEXT | HDI_FORMAT;
    item.pszText = shown.Text.data();
    item.fmt = HDF_LEFT | HDF_STRING | arrow;
    Send(reinterpret_cast<HWND>(::SendMessageA(list_, LVM_GETHEADER, 0, 0)), HDM_SETITEMA, column, &item);
}

ReportList::Change ReportList::ShowRows(const std::vector<ListItem>& rows) {
    const auto differ = [&](const auto& haveSame) {
        return !std::equal(rows.begin(), rows.end(), shown_.begin(), shown_.end(), haveSame);
    };
    const bool rowsDiffer = differ(HaveSameTexts);
    if (!rowsDiffer && !differ(HaveSameState)) return Change::None;

    ::SendMessageA(list_, WM_SETREDRAW, FALSE, 0);
    for (; shown_.size() > rows.size(); shown_.pop_back())
        ::SendMessageA(list_, LVM_DELETEITEM, shown_.size() - 1, 0);
    for (size_t i = 0; i < rows.size(); ++i) {
        if (i == shown_.size()) {
            LVITEMA item{};
            item.mask = LVIF_IMAGE;
            item.iItem = static_cast<int>(i);
            item.iImage = I_IMAGENONE;
            Send(list_, LVM_INSERTITEMA, 0, &item);
            shown_.emplace_back();
        } else if (HaveSameTexts(rows[i], shown_[i]) && HaveSameState(rows[i], shown_[i])) {
            continue;
        }
        ShowRow(i, rows[i], shown_[i]);
    }
    ::SendMessageA(list_, WM_SETREDRAW, TRUE, 0);
    ::InvalidateRect(list_, nullptr, TRUE);
    return rowsDiffer ? Change::Rows : Change::State;
}

void ReportList::ShowRow(size_t row, const ListItem& wanted, ListItem& shown) const {
    if (wanted.Text != shown.Text) ShowText(row, 0, wanted.Text);
    if (wanted.SubItem != shown.SubItem) ShowText(row, 1, wanted.SubItem);
    LVITEMA item{};
    item.iItem = static_cast<int>(row);
    if (wanted.SmallIcon != shown.SmallIcon) {
        item.mask = LVIF_IMAGE;
        item.iImage = wanted.SmallIcon >= 1 ? wanted.SmallIcon - 1 : I_IMAGENONE;
        Send(list_, LVM_SETITEMA, 0, &item);
    }
    item.state = (hasTicks_ ? TickImage(wanted.Checked) : 0) | (wanted.Selected ? kSelection : 0);
    item.stateMask = (hasTicks_ ? static_cast<UINT>(LVIS_STATEIMAGEMASK) : 0) |
                     (wanted.Selected != shown.Selected ? kSelection : 0);
    Send(list_, LVM_SETITEMSTATE, row, &item);
    shown = wanted;
}

void ReportList::ShowText(size_t row, int column, std::string text) const {
    LVITEMA item{};
    item.iSubItem = column;
    item.pszText = text.data();
    Send(list_, LVM_SETITEMTEXTA, row, &item);
}

void ReportList::Read(std::vector<ListItem>& rows) {
    ReadState();
    for (size_t i = 0; i < std::min(rows.size(), shown_.size()); ++i) {
        rows[i].Checked = shown_[i].Checked;
        rows[i].Selected = shown_[i].Selected;
    }
}

void ReportList::ReadState() {
    for (size_t i = 0; i < shown_.size(); ++i) {
        const auto state = static_cast<UINT>(
            ::SendMessageA(list_, LVM_GETITEMSTATE, i, LVIS_STATEIMAGEMASK | LVIS_SELECTED));
        shown_[i].Checked = (state & LVIS_STATEIMAGEMASK) == TickImage(true);
        shown_[i].Selected = (state & LVIS_SELECTED) != 0;
    }
}

int ReportList::SelectedRow() const {
    return static_cast<int>(::SendMessageA(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

int ReportList::TextWidth(const std::string& text) const {
    return static_cast<int>(Send(list_, LVM_GETSTRINGWIDTHA, 0, text.c_str()));
}

void ReportList::FitColumn(int column, int least) const {
    ::SendMessageA(list_, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column), LVSCW_AUTOSIZE);
    WidenColumn(column, least);
}

void ReportList::FillWithColumn(int column) const {
    FitColumn(column, 0);
    RECT inner{};
    ::GetClientRect(list_, &inner);
    const auto other =
        static_cast<int>(::SendMessageA(list_, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(1 - column), 0));
    WidenColumn(column, inner.right - other);
}

void ReportList::WidenColumn(int column, int least) const {
    if (::SendMessageA(list_, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0) < least)
        ::SendMessageA(list_, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column), least);
}

}  // namespace velbooter
