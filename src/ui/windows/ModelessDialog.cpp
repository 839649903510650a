#include "src/ui/windows/ModelessDialog.h"

#include <utility>

namespace velbooter {

bool ModelessDialog::Takes(MSG& message) const {
    return Handle() != nullptr && ::IsDialogMessageW(window_.get(), &message) != FALSE;
}

bool ModelessDialog::Withholds(const MSG& message) {
    const HWND frame = window_.get();
    const bool isOwn = message.hwnd == frame || ::IsChild(frame, message.hwnd) != FALSE;
    return frame != nullptr && IsWorking() && isOwn && IsHeldInput(message);
}

void ModelessDialog::Create(const DLGTEMPLATE* frame, HWND owner) {
    const INITCOMMONCONTROLSEX controls{
        sizeof controls, ICC_LISTVIEW_CLASSES | ICC_PROGRESS_CLASS | ICC_STANDARD_CLASSES | ICC_LINK_CLASS};
    ::InitCommonControlsEx(&controls);
    window_.reset(::CreateDialogIndirectParamA(::GetModuleHandleA(nullptr), frame, owner, Procedure,
                                               reinterpret_cast<LPARAM>(this)));
}

HWND ModelessDialog::CreatePage(const DLGTEMPLATE* page) {
    return ::CreateDialogIndirectParamA(::GetModuleHandleA(nullptr), page, window_.get(), Procedure,
                                        reinterpret_cast<LPARAM>(this));
}

void ModelessDialog::FinishShowing() {
    PaintNow(window_.get());
    RethrowFailure();
}

void ModelessDialog::Run(const UserAction& action) {
    if (IsWorking()) {
        Postpone(action);
        return;
    }
    for (std::optional<UserAction> next = action; next; next = std::exchange(postponed_, std::nullopt)) {
        {
            const FlagScope work = HoldInput();
            Do(*next);
        }
        // Not this window alone: a handler may have hidden another one.
        App().Screen.Repaint();
    }
}

void ModelessDialog::Postpone(const UserAction& action) {
    const bool isFirstCancel = action.Kind == ActionKind::Cancel && !postponed_;
    if (isFirstCancel || action.Kind == ActionKind::Close) postponed_ = action;
}

bool ModelessDialog::Reply(HWND window, LRESULT result) {
    ::SetWindowLongPtrA(window, DWLP_MSGRESULT, result);
    return true;
}

INT_PTR CALLBACK ModelessDialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        ::SetWindowLongPtrA(window, DWLP_USER, lParam);
        return FALSE;
    }
    auto* const self = reinterpret_cast<ModelessDialog*>(::GetWindowLongPtrA(window, DWLP_USER));
    if (self == nullptr || !self->window_) return FALSE;
    return self->failure_.Guard([&] { return self->Dispatch(window, message, wParam, lParam); },
                                INT_PTR{FALSE});
}

INT_PTR ModelessDialog::Dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            return OnCommand(LOWORD(wParam), HIWORD(wParam)) ? TRUE : FALSE;
        case WM_NOTIFY:
            return OnNotify(window, *reinterpret_cast<const NMHDR*>(lParam)) ? TRUE : FALSE;
        case WM_SETCURSOR:
            return ShowWaiting(window, LOWORD(lParam)) ? TRUE : FALSE;
        case WM_DESTROY:
            // The system also destroys a window together with its owner.
            if (window == window_.get()) static_cast<void>(window_.release());
            return TRUE;
        default:
            return OnMessage(window, message, wParam, lParam);
    }
}

// Over a border that can be dragged, the pointer that says so stays.
bool ModelessDialog::ShowWaiting(HWND window, int hit) const {
    const bool canBePulled = (::GetWindowLongA(window, GWL_STYLE) & WS_THICKFRAME) != 0;
    if (!IsWorking() || (canBePulled && hit != HTCLIENT)) return false;
    ::SetCursor(::LoadCursor(nullptr, IDC_WAIT));
    return Reply(window, TRUE);
}

}  // namespace velbooter
