#include "src/ui/windows/DiskList.h"

#include <algorithm>

#include "resources/ids.h"
#include "src/ui/windows/ScreenMetrics.h"

namespace velbooter {

namespace {

constexpr int kPictureSize = 32;  // at 96 dots per inch
constexpr int kDiskPictures = 8;

HIMAGELIST LoadPictures(int size) {
    const HIMAGELIST pictures = ::ImageList_Create(size, size, ILC_COLOR32, kDiskPictures, 0);
    const HINSTANCE program = ::GetModuleHandleA(nullptr);
    for (int i = 0; i < kDiskPictures; ++i) {
        const auto icon = static_cast<HICON>(
            ::LoadImageA(program, MAKEINTRESOURCEA(IDI_DISK_1 + i), IMAGE_ICON, size, size, LR_DEFAULTCOLOR));
        ::ImageList_ReplaceIcon(pictures, -1, icon);
        ::DestroyIcon(icon);
    }
    return pictures;
}

void SetTitle(HWND list, int index, std::string title) {
    LVCOLUMNA column{};
    column.mask = LVCF_TEXT;
    column.pszText = title.data();
    ::SendMessageA(list, LVM_SETCOLUMNA, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
}

bool SameRows(const std::vector<ListItem>& left, const std::vector<ListItem>& right) {
    return left.size() == right.size() &&
           std::equal(left.begin(), left.end(), right.begin(), [](const ListItem& a, const ListItem& b) {
               return a.Text == b.Text && a.SubItem == b.SubItem && a.SmallIcon == b.SmallIcon;
           });
}

}  // namespace

void DiskList::Attach(HWND list) {
    list_ = list;
    pictures_.reset(LoadPictures(ScaledPixels(kPictureSize)));
    ::SendMessageA(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP);
    const auto pictures = reinterpret_cast<LPARAM>(pictures_.get());
    ::SendMessageA(list_, LVM_SETIMAGELIST, LVSIL_SMALL, pictures);
    ::SendMessageA(list_, LVM_SETIMAGELIST, LVSIL_NORMAL, pictures);
    const auto header = reinterpret_cast<HWND>(::SendMessageA(list_, LVM_GETHEADER, 0, 0));
    ::SendMessageA(header, HDM_SETIMAGELIST, 0, pictures);
    LVCOLUMNA column{};
    for (int i = 0; i < 2; ++i)
        ::SendMessageA(list_, LVM_INSERTCOLUMNA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
}

void DiskList::ShowRows(const std::vector<ListItem>& rows) {
    ::SendMessageA(list_, WM_SETREDRAW, FALSE, 0);
    ::SendMessageA(list_, LVM_DELETEALLITEMS, 0, 0);
    for (size_t i = 0; i < rows.size(); ++i) {
        std::string text = rows[i].Text;
        std::string name = rows[i].SubItem;
        LVITEMA item{};
        item.mask = LVIF_TEXT | LVIF_IMAGE;
        item.iItem = static_cast<int>(i);
        item.pszText = text.data();
        item.iImage = rows[i].SmallIcon >= 1 ? rows[i].SmallIcon - 1 : I_IMAGENONE;
        ::SendMessageA(list_, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
        item.iSubItem = 1;
        item.pszText = name.data();
        ::SendMessageA(list_, LVM_SETITEMTEXTA, i, reinterpret_cast<LPARAM>(&item));
    }
    ::SendMessageA(list_, WM_SETREDRAW, TRUE, 0);
    ::InvalidateRect(list_, nullptr, TRUE);
}

// The names take what they need and the descriptions the rest; descriptions that are longer than that scroll.
void DiskList::FitColumns(const std::string& nameTitle) {
    constexpr int kMargins = 16;
    const auto titleWidth = static_cast<int>(
        ::SendMessageA(list_, LVM_GETSTRINGWIDTHA, 0, reinterpret_cast<LPARAM>(nameTitle.c_str())));
    const int names = std::max(FitColumn(1), titleWidth + ScaledPixels(kMargins));
    RECT client{};
    ::GetClientRect(list_, &client);
    const int descriptions = std::max(FitColumn(0), static_cast<int>(client.right) - names);
    ::SendMessageA(list_, LVM_SETCOLUMNWIDTH, 0, descriptions);
    ::SendMessageA(list_, LVM_SETCOLUMNWIDTH, 1, names);
}

int DiskList::FitColumn(int column) {
    ::SendMessageA(list_, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column), LVSCW_AUTOSIZE);
    return static_cast<int>(::SendMessageA(list_, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0));
}

void DiskList::Show(const ListView& form) {
    if (!SameRows(shown_, form.ListItems)) {
        SetTitle(list_, 0, form.FirstColumnTitle);
        SetTitle(list_, 1, form.SecondColumnTitle);
        ShowRows(form.ListItems);
        FitColumns(form.SecondColumnTitle);
        shown_ = form.ListItems;
    }
    for (size_t i = 0; i < form.ListItems.size(); ++i) {
        const bool selected = ::SendMessageA(list_, LVM_GETITEMSTATE, i, LVIS_SELECTED) != 0;
        if (selected == form.ListItems[i].Selected) continue;
        LVITEMA item{};
        item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        item.state = form.ListItems[i].Selected ? item.stateMask : 0;
        ::SendMessageA(list_, LVM_SETITEMSTATE, i, reinterpret_cast<LPARAM>(&item));
    }
}

void DiskList::Read(ListView& form) const {
    for (size_t i = 0; i < form.ListItems.size(); ++i)
        form.ListItems[i].Selected = ::SendMessageA(list_, LVM_GETITEMSTATE, i, LVIS_SELECTED) != 0;
}

}  // namespace velbooter
