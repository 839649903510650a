#include "src/ui/windows/DiskList.h"

#include <algorithm>

#include "resources/ids.h"
#include "src/ui/windows/ScreenMetrics.h"

namespace velbooter {

namespace {

constexpr int kPictureSize = 32;  // at 96 dots per inch
constexpr int kDiskPictures = 8;
constexpr int kNameColumnPercent = 20;

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

void AddColumn(HWND list, int index, int width) {
    LVCOLUMNA column{};
    column.mask = LVCF_WIDTH | LVCF_TEXT;
    column.cx = width;
    char title[] = "";
    column.pszText = title;
    ::SendMessageA(list, LVM_INSERTCOLUMNA, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
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
    ::SendMessageA(list_, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(pictures_.get()));
    RECT client{};
    ::GetClientRect(list_, &client);
    const int width = client.right - ::GetSystemMetrics(SM_CXVSCROLL);
    const int nameWidth = width * kNameColumnPercent / 100;
    AddColumn(list_, 0, width - nameWidth);
    AddColumn(list_, 1, nameWidth);
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

void DiskList::Show(const ListView& form) {
    if (!SameRows(shown_, form.ListItems)) {
        SetTitle(list_, 0, form.FirstColumnTitle);
        SetTitle(list_, 1, form.SecondColumnTitle);
        ShowRows(form.ListItems);
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
