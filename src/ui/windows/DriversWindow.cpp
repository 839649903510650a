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

// Of the layout, in twips. The button on the left is as far from its side as Cancel is from the other.
constexpr int kButtonWidth = 1335;
constexpr int kButtonHeight = 375;
constexpr int kSelectAllLeft = 255;
// The layout counts from the outer size of a window whose frame takes this much. A wider frame makes the
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

// A loop that waits for a message looks at the state again.
void WakeLoop() {
    ::PostThreadMessageA(::GetCurrentThreadId(), WM_NULL, 0, 0);
}

void MakeButton(HWND parent, int id, const CommandButton& button, DWORD kind, HFONT font) {
    const HWND made = ::CreateWindowExA(
        0, "BUTTON", button.Caption.c_str(), WS_CHILD | WS_VISIBLE | WS_TABSTOP | kind, 0, 0, 0, 0, parent,
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ::GetModuleHandleA(nullptr), nullptr);
    ::SendMessageA(made, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
}

void ShowCaption(HWND button, const std::string& caption) {
    char shown[128] = "";
    ::GetWindowTextA(button, shown, sizeof shown);
    if (caption != shown) ::SetWindowTextA(button, caption.c_str());
}

}  // namespace

void DriversWindow::Show(Application& app, HWND owner) {
    app_ = &app;
    const FrmDrivers& form = app.Drivers;
    if (!form.Visible) {
        Hide();
        return;
    }
    if (!window_) Create(owner);
    list_.Show(form.LV);
    ShowCaption(::GetDlgItem(window_.get(), kSelectAllId), form.CmdSelAll.Caption);
    if (!open_) Appear(owner);
    ::RedrawWindow(window_.get(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void DriversWindow::Close() {
    open_ = false;
    window_.reset();
}

void DriversWindow::BlockWhileOpen(HWND owner) {
    blockedOwner_ = owner;
    if (owner != nullptr) ::EnableWindow(owner, FALSE);
}

bool DriversWindow::Takes(MSG& message) {
    return open_ && ::IsDialogMessageW(window_.get(), &message) != FALSE;
}

void DriversWindow::Create(HWND owner) {
    // A template without menu, class, title and font: the system's own dialog, which screen readers know.
    struct Template {
        DLGTEMPLATE Dialog;
        WORD Menu;
        WORD Class;
        WORD Title;
    };
    alignas(DWORD) const Template blank{{kStyle, kExtendedStyle, 0, 0, 0, 0, 0}, 0, 0, 0};
    const HINSTANCE instance = ::GetModuleHandleA(nullptr);
    window_.reset(::CreateDialogIndirectParamA(instance, &blank.Dialog, owner, Procedure,
                                               reinterpret_cast<LPARAM>(this)));
    ::SetWindowTextA(window_.get(), kTitle);
    ::SendMessageA(window_.get(), WM_SETICON, ICON_SMALL,
                   reinterpret_cast<LPARAM>(::LoadIconA(instance, MAKEINTRESOURCEA(1))));
    font_ = DialogFont();

    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES};
    ::InitCommonControlsEx(&controls);
    // Readers of the screen call a list by the label before it. The layout has no room for one, so it takes
    // none.
    ::CreateWindowExA(0, "STATIC", kListName, WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, window_.get(), nullptr,
                      instance, nullptr);
    list_.Create(window_.get(), kListId, kListName, font_.get());
    const FrmDrivers& form = app_->Drivers;
    MakeButton(window_.get(), kSelectAllId, form.CmdSelAll, BS_PUSHBUTTON, font_.get());
    MakeButton(window_.get(), IDOK, form.CmdOK, BS_DEFPUSHBUTTON, font_.get());
    MakeButton(window_.get(), IDCANCEL, form.CmdCancel, BS_PUSHBUTTON, font_.get());
}

void DriversWindow::Appear(HWND owner) {
    ::SetWindowLongPtrA(window_.get(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
    DriverSelection_Resize(app_->Drivers);
    const SIZE size = SizeInPixels(app_->Drivers);
    const POINT place = CenteredPlace(size, owner);
    ::SetWindowPos(window_.get(), nullptr, place.x, place.y, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    Resized();
    open_ = true;
    ::ShowWindow(window_.get(), SW_SHOW);
    ::SetFocus(list_.Handle());
}

void DriversWindow::Hide() {
    // Before the window goes: the system gives the activation to an owner that can take it.
    if (blockedOwner_ != nullptr) ::EnableWindow(blockedOwner_, TRUE);
    blockedOwner_ = nullptr;
    if (!open_) return;
    open_ = false;
    ::ShowWindow(window_.get(), SW_HIDE);
    WakeLoop();
}

INT_PTR CALLBACK DriversWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        ::SetWindowLongPtrA(window, DWLP_USER, lParam);
        return FALSE;
    }
    auto* const self = reinterpret_cast<DriversWindow*>(::GetWindowLongPtrA(window, DWLP_USER));
    if (self == nullptr || !self->window_) return FALSE;
    const INT_PTR handled =
        self->failure_.Guard([&] { return self->Respond(message, wParam, lParam); }, INT_PTR{FALSE});
    // A message that was sent, not posted, is handled within the loop's waiting.
    if (self->failure_.Holds()) WakeLoop();
    return handled;
}

INT_PTR DriversWindow::Respond(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            if (HIWORD(wParam) == BN_CLICKED) Press(LOWORD(wParam));
            return TRUE;
        case WM_CLOSE:
            Press(IDCANCEL);
            return TRUE;
        case WM_NOTIFY:
            return Notified(*reinterpret_cast<const NMHDR*>(lParam), lParam);
        case WM_CONTEXTMENU:
            if (reinterpret_cast<HWND>(wParam) != list_.Handle()) return FALSE;
            ShowSortMenu(lParam);
            return TRUE;
        case WM_SIZE:
            if (open_ && wParam != SIZE_MINIMIZED) Resized();
            return TRUE;
        case WM_GETMINMAXINFO:
            TellLeastSize(*reinterpret_cast<MINMAXINFO*>(lParam));
            return TRUE;
        case WM_SYSCOLORCHANGE:
            ::SendMessageA(list_.Handle(), message, wParam, lParam);
            return FALSE;
        case WM_SETCURSOR:
            if (!ignoresInput_ || LOWORD(lParam) != HTCLIENT) return FALSE;
            ::SetCursor(::LoadCursor(nullptr, IDC_WAIT));
            return Answer(TRUE);
        case WM_DESTROY:
            // The system takes the window along when its owner goes.
            open_ = false;
            static_cast<void>(window_.release());
            list_ = CheckList();
            return TRUE;
        default:
            return FALSE;
    }
}

// A dialog's procedure returns whether it handled a message; what the sender gets goes another way.
INT_PTR DriversWindow::Answer(LRESULT result) const {
    ::SetWindowLongPtrA(window_.get(), DWLP_MSGRESULT, result);
    return TRUE;
}

INT_PTR DriversWindow::Notified(const NMHDR& notification, LPARAM lParam) {
    if (notification.hwndFrom != list_.Handle()) return FALSE;
    switch (notification.code) {
        case LVN_ITEMCHANGING: {
            const auto& change = *reinterpret_cast<const NMLISTVIEW*>(lParam);
            return Answer(ignoresInput_ && !list_.IsCopying() && ChangesTick(change) ? TRUE : FALSE);
        }
        case LVN_ITEMCHANGED:
            list_.ReadInto(app_->Drivers.LV);
            return TRUE;
        case LVN_COLUMNCLICK:
            SortBy(reinterpret_cast<const NMLISTVIEW*>(lParam)->iSubItem);
            return TRUE;
        default:
            return FALSE;
    }
}

void DriversWindow::Resized() {
    RECT outer{};
    ::GetWindowRect(window_.get(), &outer);
    const SIZE frame = FrameBeyondLayout();
    FrmDrivers& form = app_->Drivers;
    form.Width = TwipsFromPixels(outer.right - outer.left - frame.cx);
    form.Height = TwipsFromPixels(outer.bottom - outer.top - frame.cy);
    DriverSelection_Resize(form);
    PlaceControls();
}

void DriversWindow::PlaceControls() const {
    const FrmDrivers& form = app_->Drivers;
    RECT inner{};
    ::GetClientRect(window_.get(), &inner);
    list_.Place(0, 0, std::min(PixelsFromTwips(form.LV.Width), static_cast<int>(inner.right)),
                PixelsFromTwips(form.LV.Height));
    const auto place = [&](int id, int left, int top) {
        ::MoveWindow(::GetDlgItem(window_.get(), id), PixelsFromTwips(left), PixelsFromTwips(top),
                     PixelsFromTwips(kButtonWidth), PixelsFromTwips(kButtonHeight), TRUE);
    };
    place(kSelectAllId, kSelectAllLeft, form.CmdSelAll.Top);
    place(IDOK, form.CmdOK.Left, form.CmdOK.Top);
    place(IDCANCEL, form.CmdCancel.Left, form.CmdCancel.Top);
}

void DriversWindow::TellLeastSize(MINMAXINFO& limits) const {
    FrmDrivers least;
    least.Width = 0;
    least.Height = 0;
    DriverSelection_Resize(least);
    const SIZE size = SizeInPixels(least);
    limits.ptMinTrackSize = {size.cx, size.cy};
}

void DriversWindow::Press(int button) {
    // A second press may have waited behind the one that hid the selection.
    if (ignoresInput_ || !app_->Drivers.Visible) return;
    switch (button) {
        case IDOK:
            CmdOK_Click(*app_);
            break;
        case IDCANCEL:
            CmdCancelDrivers_Click(*app_);
            break;
        case kSelectAllId:
            CmdSelAll_Click(*app_);
            break;
        default:
            return;
    }
    app_->Screen.Repaint();
}

void DriversWindow::SortBy(int column) {
    if (ignoresInput_) return;
    DriverColumn_Click(*app_, static_cast<std::int16_t>(column));
    app_->Screen.Repaint();
}

// The way to sort without a mouse.
void DriversWindow::ShowSortMenu(LPARAM place) {
    if (ignoresInput_) return;
    constexpr LPARAM kByKeyboard = -1;
    const POINT at = place == kByKeyboard
                         ? list_.PlaceForMenu()
                         : POINT{static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))};
    const ListView& list = app_->Drivers.LV;
    const Menu menu(::CreatePopupMenu());
    ::AppendMenuA(menu.get(), MF_STRING, 1, (kSortBy + list.FirstColumnTitle).c_str());
    ::AppendMenuA(menu.get(), MF_STRING, 2, (kSortBy + list.SecondColumnTitle).c_str());
    if (list.Sorted) {
        const UINT sorted = static_cast<UINT>(list.SortKey) + 1;
        ::CheckMenuRadioItem(menu.get(), 1, 2, sorted, MF_BYCOMMAND);
    }
    const int chosen =
        ::TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, at.x, at.y, 0, window_.get(), nullptr);
    if (chosen != 0) SortBy(chosen - 1);
}

}  // namespace velbooter
