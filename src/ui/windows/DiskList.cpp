#include "src/ui/windows/DiskList.h"

#include "resources/ids.h"
#include "src/ui/windows/ScreenMetrics.h"

namespace velbooter {

namespace {

constexpr int kPictureSize = 32;  // at 96 dots per inch
constexpr int kDiskPictures = 8;

ImageList LoadPictures(int size) {
    ImageList pictures(::ImageList_Create(size, size, ILC_COLOR32, kDiskPictures, 0));
    for (int i = 0; i < kDiskPictures; ++i) {
        const IconHandle icon(
            static_cast<HICON>(::LoadImageA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDI_DISK_1 + i),
                                            IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
        ::ImageList_ReplaceIcon(pictures.get(), -1, icon.get());
    }
    return pictures;
}

}  // namespace

void DiskList::Attach(HWND list) {
    pictures_ = LoadPictures(ScaledPixels(kPictureSize));
    ::SendMessageA(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP);
    const auto pictures = reinterpret_cast<LPARAM>(pictures_.get());
    ::SendMessageA(list, LVM_SETIMAGELIST, LVSIL_SMALL, pictures);
    ::SendMessageA(list, LVM_SETIMAGELIST, LVSIL_NORMAL, pictures);
    const auto header = reinterpret_cast<HWND>(::SendMessageA(list, LVM_GETHEADER, 0, 0));
    ::SendMessageA(header, HDM_SETIMAGELIST, 0, pictures);
    ReportList::Attach(list);
}

void DiskList::Show(const ListView& form) {
    // What was selected while the program was working is not the user's choice; it is undone below.
    ReadState();
    if (ShowRows(form.ListItems) != Change::Rows) return;
    ShowTitle(0, form.FirstColumnTitle, 0);
    ShowTitle(1, form.SecondColumnTitle, 0);
    // The names take what they need and the descriptions the rest; longer descriptions scroll.
    constexpr int kMargins = 16;
    FitColumn(1, TextWidth(form.SecondColumnTitle) + ScaledPixels(kMargins));
    FillWithColumn(0);
}

}  // namespace velbooter
