#include "src/ui/windows/WizardWindow.h"

#include <commctrl.h>

#include <map>
#include <utility>

#include "src/forms/ProductTexts.h"
#include "src/run/CancelApp.h"
#include "src/run/Guard.h"
#include "src/ui/Destination.h"
#include "src/ui/DiskSpace.h"
#include "src/ui/DriversPage.h"
#include "src/ui/PageWalk.h"
#include "src/ui/WizardForm.h"
#include "src/ui/windows/Announcement.h"
#include "src/ui/windows/FormClass.h"
#include "src/ui/windows/OwnerDrawn.h"
#include "src/ui/windows/WizardIds.h"

namespace velbooter {

namespace {

constexpr const char* kWizardClass = "FrmWizard";
constexpr WPARAM kAccessKeyOfCancel = 'C';

// The place of the pages in the frame, in the templates' units.
constexpr RECT kPageArea{96, 6, 472, 196};

void RegisterControls() {
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof controls;
    controls.dwICC = ICC_LISTVIEW_CLASSES | ICC_PROGRESS_CLASS | ICC_STANDARD_CLASSES | ICC_LINK_CLASS;
    ::InitCommonControlsEx(&controls);
}

}  // namespace

void WizardWindow::Create() {
    const HINSTANCE program = ::GetModuleHandleA(nullptr);
    RegisterControls();
    RegisterFormClass(kWizardClass, ::DefDlgProcA, DLGWINDOWEXTRA, IDC_ARROW);
    window_.reset(::CreateDialogParamA(program, MAKEINTRESOURCEA(IDD_WIZARD), nullptr, Procedure,
                                       reinterpret_cast<LPARAM>(this)));
    ::SetWindowTextA(window_.get(), kProgramTitle);
    CreatePages();
    controls_.Attach(window_.get(), pages_);
}

void WizardWindow::CreatePages() {
    RECT area = kPageArea;
    ::MapDialogRect(window_.get(), &area);
    // The pages come before the buttons of the frame, for the Tab key as for the eye.
    HWND before = ::GetDlgItem(window_.get(), IDC_LINE);
    for (size_t i = 0; i < pages_.size(); ++i) {
        pages_[i] = ::CreateDialogParamA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDD_FIRST_PAGE + i),
                                         window_.get(), Procedure, reinterpret_cast<LPARAM>(this));
        ::SetWindowPos(pages_[i], before, area.left, area.top, area.right - area.left, area.bottom - area.top,
                       SWP_NOACTIVATE);
        before = pages_[i];
    }
}

void WizardWindow::Show(Application& app) {
    app_ = &app;
    if (!window_ && !app.Wizard.Visible) return;
    isShowing_ = true;
    if (!window_) Create();
    controls_.Show(app.Wizard);
    ShowPages();
    isShowing_ = false;
    const bool isVisible = ::IsWindowVisible(window_.get()) != FALSE;
    if (app.Wizard.Visible != isVisible) ::ShowWindow(window_.get(), app.Wizard.Visible ? SW_SHOW : SW_HIDE);
    ::RedrawWindow(window_.get(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

HWND WizardWindow::Handle() const {
    return window_ && ::IsWindowVisible(window_.get()) != FALSE ? window_.get() : nullptr;
}

void WizardWindow::ShowPages() {
    for (size_t i = 0; i < pages_.size(); ++i) {
        const bool visible = app_->Wizard.FraMain[i].Visible;
        const bool isShown = (::GetWindowLongA(pages_[i], GWL_STYLE) & WS_VISIBLE) != 0;
        if (visible != isShown) ::ShowWindow(pages_[i], visible ? SW_SHOWNA : SW_HIDE);
        if (visible && shownPage_ != pages_[i]) FocusPage(i);
    }
    const bool finishes = app_->Wizard.CmdFinish.Visible;
    const int wanted = finishes ? IDC_FINISH : IDC_NEXT;
    if (LOWORD(::SendMessageA(window_.get(), DM_GETDEFID, 0, 0)) != wanted)
        ::SendMessageA(window_.get(), DM_SETDEFID, static_cast<WPARAM>(wanted), 0);
}

// The first control of the page that takes the keyboard, else the default button, as on the final page, where
// Enter must not open a link.
void WizardWindow::FocusPage(size_t page) {
    shownPage_ = pages_[page];
    HWND target = page == kFinishedPage ? nullptr : ::GetNextDlgTabItem(pages_[page], nullptr, FALSE);
    const bool takesKeys = target != nullptr && ::IsWindowEnabled(target) != FALSE &&
                           (::GetWindowLongA(target, GWL_STYLE) & WS_TABSTOP) != 0;
    if (!takesKeys) target = controls_.Control(app_->Wizard.CmdFinish.Visible ? IDC_FINISH : IDC_NEXT);
    ::SendMessageA(window_.get(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(target), TRUE);
    if (page == kFinishedPage) CallForTheUser();
}

// Whoever has turned to other windows during a long build sees the button on the task bar flash.
void WizardWindow::CallForTheUser() const {
    Announce(controls_.Control(IDC_OUTCOME));
    if (::GetForegroundWindow() == window_.get()) return;
    FLASHWINFO flash{};
    flash.cbSize = sizeof flash;
    flash.hwnd = window_.get();
    flash.dwFlags = FLASHW_TRAY | FLASHW_TIMERNOFG;
    ::FlashWindowEx(&flash);
}

bool WizardWindow::Takes(MSG& message) const {
    return window_ && ::IsDialogMessageW(window_.get(), &message) != FALSE;
}

bool WizardWindow::WithholdsWhileWorking(const MSG& message) {
    const bool isOwn = message.hwnd == window_.get() || ::IsChild(window_.get(), message.hwnd) != FALSE;
    if (!isWorking_ || !window_ || !isOwn) return false;
    // Alt+F4 becomes a close, which waits by itself.
    if (message.message == WM_SYSKEYDOWN && message.wParam == VK_F4) return false;
    const bool isEscape = message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE;
    const bool isAccessKey = message.message == WM_SYSKEYDOWN && message.wParam == kAccessKeyOfCancel;
    if (isEscape || isAccessKey) Postpone(CancelApp);
    if (message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST) return true;
    // The system follows a held scroll bar in a loop of its own, and the work would stand still till then.
    const bool isScrollBar = message.wParam == HTVSCROLL || message.wParam == HTHSCROLL;
    if (message.message == WM_NCLBUTTONDOWN && isScrollBar) return true;
    const bool isMouse = message.message > WM_MOUSEMOVE && message.message <= WM_MOUSELAST;
    return isMouse && message.hwnd != controls_.Control(IDCANCEL);
}

INT_PTR CALLBACK WizardWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        ::SetWindowLongPtrA(window, DWLP_USER, lParam);
        return FALSE;
    }
    auto* self = reinterpret_cast<WizardWindow*>(::GetWindowLongPtrA(window, DWLP_USER));
    return self == nullptr ? FALSE : self->OnMessage(window, message, wParam, lParam);
}

INT_PTR WizardWindow::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            return OnCommand(LOWORD(wParam), HIWORD(wParam)) ? TRUE : FALSE;
        case WM_NOTIFY:
            return OnNotify(*reinterpret_cast<const NMHDR*>(lParam)) ? TRUE : FALSE;
        case WM_HELP:
            Run(CmdHelp_Click);
            return TRUE;
        case WM_CLOSE:
            Run(Form_Unload);
            return TRUE;
        case WM_QUERYENDSESSION:
            // Half a floppy is worth less than a moment of waiting, and the person is told what it is for.
            ::SetWindowLongPtrA(window, DWLP_MSGRESULT, hold_ ? FALSE : TRUE);
            return TRUE;
        case WM_ENDSESSION:
            // The system ends the program without another message, so the clean-up is done here.
            if (wParam != FALSE && !hold_) DeleteWorkingFiles(app_->Paths);
            return TRUE;
        case WM_DRAWITEM: {
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            if (item.CtlID == IDC_SIDE_IMAGE) {
                DrawSideImage(item);
            } else {
                DrawStepMark(item);
            }
            return TRUE;
        }
        case WM_CTLCOLORSTATIC:
            return reinterpret_cast<INT_PTR>(
                controls_.ColorLabel(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam)));
        case WM_SYSCOLORCHANGE:
            if (window == window_.get()) controls_.TellOfNewColors();
            return FALSE;
        case WM_SETCURSOR:
            if (!isWorking_) return FALSE;
            ::SetCursor(::LoadCursor(nullptr, IDC_WAIT));
            ::SetWindowLongPtrA(window, DWLP_MSGRESULT, TRUE);
            return TRUE;
        default:
            return FALSE;
    }
}

bool WizardWindow::OnCommand(int id, int notice) {
    static const std::map<int, Handler> kHandlers{
        {IDC_BACK, CmdBack_Click},           {IDC_NEXT, CmdNext_Click},
        {IDC_FINISH, CmdFinish_Click},       {IDCANCEL, CancelApp},
        {IDC_HELP_BUTTON, CmdHelp_Click},    {IDC_ASPI, ChkASPI_Click},
        {IDC_NDIS, ChkNDIS_Click},           {IDC_SELECT_ASPI, CmdSelASPI_Click},
        {IDC_SELECT_NDIS, CmdSelNDIS_Click}, {IDC_IMAGE_14, OptImage14_Click},
        {IDC_IMAGE_28, OptImage28_Click},    {IDC_FLOPPY, OptFloppy_Click},
        {IDC_BROWSE, CmdBrowse_Click},
    };
    // The second of two quick clicks changes the tick as well, and the list tells of nothing but a double
    // click.
    if (id == IDC_FILES && (notice == LBN_SELCHANGE || notice == LBN_DBLCLK)) {
        Run(ShowSpace);
        return true;
    }
    // What is typed starts no handler.
    if (notice == EN_CHANGE) {
        TakeInput();
        return true;
    }
    const auto found = kHandlers.find(id);
    if (notice != BN_CLICKED || found == kHandlers.end()) return false;
    if (TakesClicks(id) && !isShowing_ && !controls_.IsChosen(id, app_->Wizard)) Run(found->second);
    return true;
}

// The Esc key presses Cancel and the Enter key the default button, also one that is disabled or hidden.
bool WizardWindow::TakesClicks(int id) const {
    const HWND control = controls_.Control(id);
    return ::IsWindowVisible(control) != FALSE && ::IsWindowEnabled(control) != FALSE;
}

bool WizardWindow::OnNotify(const NMHDR& notice) {
    const bool isLink = notice.code == NM_CLICK || notice.code == NM_RETURN;
    if (notice.idFrom == IDC_HOME_PAGE && isLink) {
        Run(LblHomePage_Click);
    } else if (notice.idFrom == IDC_FRAMEWORK_SITE && isLink) {
        Run(LblFrameworkSite_Click);
    } else if (notice.idFrom == IDC_DISKS && notice.code == static_cast<UINT>(LVN_ITEMACTIVATE)) {
        // Later: the list is still in the middle of its own handling of the mouse.
        if (!isWorking_) ::PostMessageA(window_.get(), WM_COMMAND, MAKEWPARAM(IDC_NEXT, BN_CLICKED), 0);
    } else if (notice.idFrom == IDC_DISKS && notice.code == static_cast<UINT>(LVN_ITEMCHANGED)) {
        TakeInput();
    } else {
        return false;
    }
    return true;
}

// At each change, since the form is shown again not by this window alone: what the user does in the driver
// selection beside it must not bring the former texts back.
void WizardWindow::TakeInput() {
    if (!isShowing_ && !isWorking_) controls_.Read(app_->Wizard);
}

// Next, Back and Finish that are pressed during the work are forgotten: the user has not seen yet what they
// would be pressed on. Cancel and closing wait.
void WizardWindow::Postpone(Handler handler) {
    if (handler == Form_Unload || (handler == CancelApp && postponed_ == nullptr)) postponed_ = handler;
}

void WizardWindow::Run(Handler handler) {
    if (isWorking_) {
        Postpone(handler);
        return;
    }
    controls_.Read(app_->Wizard);
    isWorking_ = true;
    if (handler == CmdNext_Click || handler == CmdFinish_Click) hold_.emplace(window_.get());
    failure_.Guard([&] { return RunGuarded(*app_, [&] { handler(*app_); }); }, false);
    hold_.reset();
    if (failure_.Holds()) {
        // A message that was sent, not posted, does not wake the loop that raises the failure again.
        ::PostMessageA(window_.get(), WM_NULL, 0, 0);
        return;
    }
    isWorking_ = false;
    // Not this window alone: a handler may have hidden the driver selection.
    app_->Screen.Repaint();
    const Handler next = std::exchange(postponed_, nullptr);
    if (next == Form_Unload || (next == CancelApp && app_->Wizard.CmdCancel.Enabled)) Run(next);
}

}  // namespace velbooter
