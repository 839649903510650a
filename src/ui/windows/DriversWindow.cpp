#include "src/ui/windows/DriversWindow.h"

#include <algorithm>

#include "src/ui/DriversPage.h"
#include "src/ui/windows/ScreenMetrics.h"

namespace velbooter {

namespace {

constexpr const char* kTitle = "Select Drivers";
constexpr const char* kListName = "Drivers";
constexpr const char* kSortBy = "Sort by &";

constexpr int kListId = 1001;
constexpr int kSelectAllId = 1002;
constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME;
constexpr DWORD kExtendedStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;

// Measures of the layout, in twips. The button on the left is as far from the left side as Cancel is from
// the right one.
constexpr int kButtonWidth = 1335;
constexpr int kButtonHeight = 375;
constexpr int kSelectAllLeft = 255;
// The layout is given for the outer size of a window whose frame takes this much. A wider frame makes the
// window larger, so that the buttons stay within it.
constexpr int kFrameWidth = 120;
constexpr int kFrameHeight = 405;

SIZE FrameBeyondLayout() {
    RECT frame{};
    ::AdjustWindowRectEx(&frame, kStyle, FALSE, kExtendedStyle);
    const LONG width = frame.right - frame.left - PixelsFromTwips(kFrameWidth);
    const LONG height = frame.bottom - frame.top - PixelsFromTwips(kFrameHeight);
    return {std::max(width, LONG{0}), std::max(height, LONG{0})};
}

SIZE SizeInPixels(const FrmDrivers& form) {
    const SIZE frame = FrameBeyondLayout();
    return {PixelsFromTwips(form.Width) + frame.cx, PixelsFromTwips(form.Height) + frame.cy};
}

}  // namespace

void DriversWindow::Show(Application& app, HWND owner) {
    ShowFormsOf(app);
    FrmDrivers& form = app.Drivers;
    if (!form.Visible) {
        Hide();
        return;
    }
    if (Frame() == nullptr) CreateControls(owner);
    CopyToControls([&] {
        list_.Show(form.LV);
        ShowText(::GetDlgItem(Frame(), kSelectAllId), form.CmdSelAll.Caption);
    });
    if (Handle() == nullptr) Appear(owner);
    FinishShowing();
}

void DriversWindow::BlockWhileOpen(HWND owner) {
    blockedOwner_ = owner;
    if (owner != nullptr) ::EnableWindow(owner, FALSE);
}

void DriversWindow::CreateControls(HWND owner) {
    // A template without menu, class, title and font creates the system's own dialog class, which screen
    // readers know.
    struct Template {
        DLGTEMPLATE Dialog;
        WORD Menu;
        WORD Class;
        WORD Title;
    };
    alignas(DWORD) const Template empty{{kStyle, kExtendedStyle, 0, 0, 0, 0, 0}, 0, 0, 0};
    Create(&empty.Dialog, owner);
    ::SetWindowTextA(Frame(), kTitle);
    ::SendMessageA(Frame(), WM_SETICON, ICON_SMALL,
                   reinterpret_cast<LPARAM>(::LoadIconA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(1))));
    font_ = DialogFont();

    // Screen readers announce a list by the label before it. The layout has no space for one, so it has no
    // size.
    CreateControl(Frame(), 0, "STATIC", kListName, 0, font_.get());
    list_.Create(Frame(), kListId, kListName, font_.get());
    const FrmDrivers& form = App().Drivers;
    const auto addButton = [&](int id, const CommandButton& button, DWORD kind) {
        CreateControl(Frame(), id, "BUTTON", button.Caption, WS_TABSTOP | kind, font_.get());
    };
    addButton(kSelectAllId, form.CmdSelAll, BS_PUSHBUTTON);
    addButton(IDOK, form.CmdOK, BS_DEFPUSHBUTTON);
    addButton(IDCANCEL, form.CmdCancel, BS_PUSHBUTTON);
}

void DriversWindow::Appear(HWND owner) {
    ::SetWindowLongPtrA(Frame(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
    DriverSelection_Resize(App().Drivers);
    const SIZE size = SizeInPixels(App().Drivers);
    const POINT place = CenteredPlace(size, owner);
    ::SetWindowPos(Frame(), nullptr, place.x, place.y, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    Resized();
    ::ShowWindow(Frame(), SW_SHOW);
    ::SetFocus(list_.Handle());
}

void DriversWindow::Hide() {
    // Before the window is hidden, because the system then activates the owner only if it is enabled.
    if (blockedOwner_ != nullptr) ::EnableWindow(blockedOwner_, TRUE);
    blockedOwner_ = nullptr;
    if (Handle() == nullptr) return;
    ::ShowWindow(Frame(), SW_HIDE);
    WakeLoop();
}

INT_PTR DriversWindow::OnMessage(HWND /*window*/, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CLOSE:
            OnCommand(IDCANCEL, BN_CLICKED);
            return TRUE;
        case WM_CONTEXTMENU:
            if (reinterpret_cast<HWND>(wParam) != list_.Handle()) return FALSE;
            ShowSortMenu(lParam);
            return TRUE;
        case WM_SIZE:
            if (Handle() != nullptr && wParam != SIZE_MINIMIZED) Resized();
            return TRUE;
        case WM_GETMINMAXINFO:
            SetLeastSize(*reinterpret_cast<MINMAXINFO*>(lParam));
            return TRUE;
        case WM_SYSCOLORCHANGE:
            ::SendMessageA(list_.Handle(), message, wParam, lParam);
            return FALSE;
        default:
            return FALSE;
    }
}

bool DriversWindow::OnCommand(int id, int notice) {
    // A second press may follow the one that hid the selection.
    if (notice != BN_CLICKED || !App().Drivers.Visible) return true;
    if (id == IDOK) Run({CmdOK_Click});
    if (id == IDCANCEL) Run({CmdCancelDrivers_Click});
    if (id == kSelectAllId) Run({CmdSelAll_Click});
    return true;
}

bool DriversWindow::OnNotify(HWND window, const NMHDR& notice) {
    if (notice.hwndFrom != list_.Handle()) return false;
    // Each of the list's notices that are handled here has this form.
    const auto& change = reinterpret_cast<const NMLISTVIEW&>(notice);
    switch (notice.code) {
        case LVN_ITEMCHANGING:
            return Reply(window, IsWorking() && !IsCopying() && ChangesTick(change) ? TRUE : FALSE);
        case LVN_ITEMCHANGED:
            if (!IsCopying()) list_.Read(App().Drivers.LV.ListItems);
            return true;
        case LVN_COLUMNCLICK:
            SortBy(change.iSubItem);
            return true;
        default:
            return false;
    }
}

void DriversWindow::Resized() {
    RECT outer{};
    ::GetWindowRect(Frame(), &outer);
    const SIZE frame = FrameBeyondLayout();
    FrmDrivers& form = App().Drivers;
    form.Width = TwipsFromPixels(outer.right - outer.left - frame.cx);
    form.Height = TwipsFromPixels(outer.bottom - outer.top - frame.cy);
    DriverSelection_Resize(form);
    PlaceControls();
}

void DriversWindow::PlaceControls() const {
    const FrmDrivers& form = App().Drivers;
    RECT inner{};
    ::GetClientRect(Frame(), &inner);
    list_.Place(0, 0, std::min(PixelsFromTwips(form.LV.Width), static_cast<int>(inner.right)),
                PixelsFromTwips(form.LV.Height));
    const auto place = [&](int id, int left, int top) {
        ::MoveWindow(::GetDlgItem(Frame(), id), PixelsFromTwips(left), PixelsFromTwips(top),
                     PixelsFromTwips(kButtonWidth), PixelsFromTwips(kButtonHeight), TRUE);
    };
    place(kSelectAllId, kSelectAllLeft, form.CmdSelAll.Top);
    place(IDOK, form.CmdOK.Left, form.CmdOK.Top);
    place(IDCANCEL, form.CmdCancel.Left, form.CmdCancel.Top);
}

void DriversWindow::SetLeastSize(MINMAXINFO& limits) const {
    FrmDrivers least;
    least.Width = 0;
    least.Height = 0;
    DriverSelection_Resize(least);
    const SIZE size = SizeInPixels(least);
    limits.ptMinTrackSize = {size.cx, size.cy};
}

void DriversWindow::SortBy(int column) {
    Run({[column](Application& app) { DriverColumn_Click(app, static_cast<std::int16_t>(column)); }});
}

// The way to sort without a mouse.
void DriversWindow::ShowSortMenu(LPARAM place) {
    if (IsWorking()) return;
    constexpr LPARAM kByKeyboard = -1;
    const POINT at = place == kByKeyboard
                         ? list_.PlaceForMenu()
                         : POINT{static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))};
    const ListView& list = App().Drivers.LV;
    const Menu menu(::CreatePopupMenu());
    ::AppendMenuA(menu.get(), MF_STRING, 1, (kSortBy + list.FirstColumnTitle).c_str());
    ::AppendMenuA(menu.get(), MF_STRING, 2, (kSortBy + list.SecondColumnTitle).c_str());
    if (list.Sorted) {
        const UINT sorted = static_cast<UINT>(list.SortKey) + 1;
        ::CheckMenuRadioItem(menu.get(), 1, 2, sorted, MF_BYCOMMAND);
    }
    const int chosen =
        ::TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, at.x, at.y, 0, Frame(), nullptr);
    if (chosen != 0) SortBy(chosen - 1);
}

}  // namespace velbooter
