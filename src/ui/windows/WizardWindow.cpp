#include "src/ui/windows/WizardWindow.h"

#include <commctrl.h>

#include <map>

#include "src/forms/ProductTexts.h"
#include "src/run/RunEnd.h"
#include "src/ui/Destination.h"
#include "src/ui/DiskSpace.h"
#include "src/ui/DriversPage.h"
#include "src/ui/PageWalk.h"
#include "src/ui/windows/OwnerDrawn.h"
#include "src/ui/windows/WizardIds.h"

namespace velbooter {

namespace {

constexpr const char* kWizardClass = "FrmWizard";
constexpr WPARAM kAccessKeyOfCancel = 'C';

// The place of the pages in the frame, in the templates' units.
constexpr RECT kPageArea{96, 6, 472, 196};

const DLGTEMPLATE* TemplateOf(size_t id) {
    const HINSTANCE program = ::GetModuleHandleA(nullptr);
    const HRSRC found = ::FindResourceA(program, MAKEINTRESOURCEA(id), RT_DIALOG);
    return static_cast<const DLGTEMPLATE*>(::LockResource(::LoadResource(program, found)));
}

// A run can be cancelled until it is over. A Cancel that was postponed may come after that.
void CancelIfPossible(Application& app) {
    if (app.Wizard.CmdCancel.Enabled) CancelApp(app);
}

const UserAction& CancelAction() {
    static const UserAction cancel{CancelIfPossible, ActionKind::Cancel};
    return cancel;
}

}  // namespace

void WizardWindow::CreateFrame() {
    RegisterFormClass(kWizardClass, ::DefDlgProcA, DLGWINDOWEXTRA, IDC_ARROW);
    Create(TemplateOf(IDD_WIZARD), nullptr);
    ::SetWindowTextA(Frame(), kProgramTitle);
    CreatePages();
    controls_.Attach(Frame(), pages_, Failure());
}

void WizardWindow::CreatePages() {
    RECT area = kPageArea;
    ::MapDialogRect(Frame(), &area);
    // The pages come before the buttons of the frame, for the Tab key as for the eye.
    HWND before = ::GetDlgItem(Frame(), IDC_LINE);
    for (size_t i = 0; i < pages_.size(); ++i) {
        pages_[i] = CreatePage(TemplateOf(IDD_FIRST_PAGE + i));
        ::SetWindowPos(pages_[i], before, area.left, area.top, area.right - area.left, area.bottom - area.top,
                       SWP_NOACTIVATE);
        before = pages_[i];
    }
}

void WizardWindow::Show(Application& app) {
    ShowFormsOf(app);
    const bool visible = app.Wizard.Visible;
    if (Frame() == nullptr && !visible) return;
    CopyToControls([&] {
        if (Frame() == nullptr) CreateFrame();
        controls_.Show(app.Wizard);
        ShowPages();
    });
    if (visible != (Handle() != nullptr)) ::ShowWindow(Frame(), visible ? SW_SHOW : SW_HIDE);
    FinishShowing();
}

void WizardWindow::ShowPages() {
    for (size_t i = 0; i < pages_.size(); ++i) {
        const bool visible = App().Wizard.FraMain[i].Visible;
        ShowVisible(pages_[i], visible);
        if (visible && shownPage_ != pages_[i]) FocusPage(i);
    }
    const bool finishes = App().Wizard.CmdFinish.Visible;
    const int wanted = finishes ? IDC_FINISH : IDC_NEXT;
    if (LOWORD(::SendMessageA(Frame(), DM_GETDEFID, 0, 0)) != wanted)
        ::SendMessageA(Frame(), DM_SETDEFID, static_cast<WPARAM>(wanted), 0);
}

// The first control of the page that takes the keyboard, else the default button, as on the final page, where
// Enter must not open a link.
void WizardWindow::FocusPage(size_t page) {
    shownPage_ = pages_[page];
    HWND target = page == kFinishedPage ? nullptr : ::GetNextDlgTabItem(pages_[page], nullptr, FALSE);
    const bool takesKeys = target != nullptr && ::IsWindowEnabled(target) != FALSE &&
                           (::GetWindowLongA(target, GWL_STYLE) & WS_TABSTOP) != 0;
    if (!takesKeys) target = controls_.Control(App().Wizard.CmdFinish.Visible ? IDC_FINISH : IDC_NEXT);
    ::SendMessageA(Frame(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(target), TRUE);
    if (page == kFinishedPage) CallForTheUser();
}

// A user who works in other windows during a long build sees the button on the task bar flash.
void WizardWindow::CallForTheUser() const {
    Announce(controls_.Control(IDC_OUTCOME));
    if (::GetForegroundWindow() == Frame()) return;
    FLASHWINFO flash{};
    flash.cbSize = sizeof flash;
    flash.hwnd = Frame();
    flash.dwFlags = FLASHW_TRAY | FLASHW_TIMERNOFG;
    ::FlashWindowEx(&flash);
}

bool WizardWindow::IsHeldInput(const MSG& message) {
    // Alt+F4 becomes WM_CLOSE, which is postponed by itself.
    if (message.message == WM_SYSKEYDOWN && message.wParam == VK_F4) return false;
    const bool isEscape = message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE;
    const bool isAccessKey = message.message == WM_SYSKEYDOWN && message.wParam == kAccessKeyOfCancel;
    if (isEscape || isAccessKey) Run(CancelAction());
    if (message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST) return true;
    // The system follows a scroll bar that is held in a loop of its own, and the work would stand still
    // until it is released.
    const bool isScrollBar = message.wParam == HTVSCROLL || message.wParam == HTHSCROLL;
    if (message.message == WM_NCLBUTTONDOWN && isScrollBar) return true;
    const bool isMouse = message.message > WM_MOUSEMOVE && message.message <= WM_MOUSELAST;
    return isMouse && message.hwnd != controls_.Control(IDCANCEL);
}

INT_PTR WizardWindow::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_HELP:
            Run({CmdHelp_Click});
            return TRUE;
        case WM_CLOSE:
            Run({Form_Unload, ActionKind::Close});
            return TRUE;
        case WM_QUERYENDSESSION:
            // An incomplete floppy would be useless, so the session waits; SessionHold gives the reason.
            return Reply(window, isBuilding_ ? FALSE : TRUE) ? TRUE : FALSE;
        case WM_ENDSESSION:
            // The system ends the program without another message, so the clean-up is done here.
            if (wParam != FALSE && !isBuilding_) DeleteWorkingFiles(App().Paths);
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
            if (window == Frame()) controls_.ForwardColorChange();
            return FALSE;
        default:
            return FALSE;
    }
}

bool WizardWindow::OnCommand(int id, int notice) {
    static const std::map<int, UserAction> kActions{
        {IDC_BACK, {CmdBack_Click}},
        {IDC_NEXT, {CmdNext_Click, ActionKind::Build}},
        {IDC_FINISH, {CmdFinish_Click, ActionKind::Build}},
        {IDCANCEL, CancelAction()},
        {IDC_HELP_BUTTON, {CmdHelp_Click}},
        {IDC_ASPI, {ChkASPI_Click}},
        {IDC_NDIS, {ChkNDIS_Click}},
        {IDC_SELECT_ASPI, {CmdSelASPI_Click}},
        {IDC_SELECT_NDIS, {CmdSelNDIS_Click}},
        {IDC_IMAGE_14, {OptImage14_Click}},
        {IDC_IMAGE_28, {OptImage28_Click}},
        {IDC_FLOPPY, {OptFloppy_Click}},
        {IDC_BROWSE, {CmdBrowse_Click}},
    };
    // The second of two quick clicks changes the selection, too, and the list reports it only as a double
    // click.
    if (id == IDC_FILES && (notice == LBN_SELCHANGE || notice == LBN_DBLCLK)) {
        Run({ShowSpace});
        return true;
    }
    // Typing starts no handler.
    if (notice == EN_CHANGE) {
        TakeInput();
        return true;
    }
    const auto found = kActions.find(id);
    if (notice != BN_CLICKED || found == kActions.end()) return false;
    if (TakesClicks(id) && !IsCopying() && !controls_.IsChosen(id, App().Wizard)) Run(found->second);
    return true;
}

// The Esc key clicks Cancel and the Enter key the default button even if it is disabled or hidden.
bool WizardWindow::TakesClicks(int id) const {
    const HWND control = controls_.Control(id);
    return ::IsWindowVisible(control) != FALSE && ::IsWindowEnabled(control) != FALSE;
}

bool WizardWindow::OnNotify(HWND /*window*/, const NMHDR& notice) {
    const bool isLink = notice.code == NM_CLICK || notice.code == NM_RETURN;
    if (notice.idFrom == IDC_HOME_PAGE && isLink) {
        Run({LblHomePage_Click});
    } else if (notice.idFrom == IDC_FRAMEWORK_SITE && isLink) {
        Run({LblFrameworkSite_Click});
    } else if (notice.idFrom == IDC_DISKS && notice.code == static_cast<UINT>(LVN_ITEMACTIVATE)) {
        // Posted, because the list is still handling the mouse itself.
        if (!IsWorking()) ::PostMessageA(Frame(), WM_COMMAND, MAKEWPARAM(IDC_NEXT, BN_CLICKED), 0);
    } else if (notice.idFrom == IDC_DISKS && notice.code == static_cast<UINT>(LVN_ITEMCHANGED)) {
        TakeInput();
    } else {
        return false;
    }
    return true;
}

// At each change, because other windows cause the form to be shown again, too: an action in the driver
// selection must not bring the former texts back.
void WizardWindow::TakeInput() {
    if (!IsCopying() && !IsWorking()) controls_.Read(App().Wizard);
}

// An error that no step handles is shown, and cancels the run; the end of the program passes through.
void WizardWindow::Do(const UserAction& action) {
    controls_.Read(App().Wizard);
    const auto work = [&] { RunGuarded(App(), [&] { action.Handler(App()); }); };
    if (action.Kind != ActionKind::Build) {
        work();
        return;
    }
    const SessionHold hold(Frame());
    const FlagScope building(isBuilding_);
    work();
}

}  // namespace velbooter
