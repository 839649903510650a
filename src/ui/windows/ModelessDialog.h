#pragma once
// What the program's two dialogs, the wizard and the driver selection, have in common: the window and its
// procedure, which no exception leaves; the keys; and what happens to the user's input while work runs.
// Modeless, because the program's own loop has to see every message: a modal dialog would run one of its
// own.

#include <functional>
#include <optional>

#include "src/run/Application.h"
#include "src/ui/windows/FormWindow.h"
#include "src/ui/windows/WindowHandle.h"

namespace velbooter {

/// What happens to an action that the user asks for while work runs.
enum class ActionKind {
    Step,    ///< dropped: the user has not seen yet what it would act on
    Build,   ///< dropped, too; it works on a disk, and the end of the session waits for it
    Cancel,  ///< done when the work has ended
    Close,   ///< done when the work has ended, instead of Cancel
};

/// A handler of the forms, and how it behaves while another one works.
struct UserAction {
    std::function<void(Application&)> Handler;
    ActionKind Kind = ActionKind::Step;
};

/// Lives on the program's one thread. A handler runs within a message; messages that come while it runs are
/// handled by the same object, which is why it knows whether work runs.
class ModelessDialog {
 public:
    ModelessDialog(const ModelessDialog&) = delete;
    ModelessDialog& operator=(const ModelessDialog&) = delete;

    /// Destroys the window, if there is one.
    void Close() { window_.reset(); }

    /// The window that other dialogs may have as their owner; null while it is not visible.
    HWND Handle() const { return IfVisible(window_.get()); }

    /// Handles `message` when it is for this window, with the keys of a dialog (Tab, Enter, Esc, access
    /// keys), and returns whether it was.
    bool Takes(MSG& message) const;

    /// Marks that work runs, and so holds back the user's input to this window, as long as the result lives.
    [[nodiscard]] FlagScope HoldInput() { return FlagScope(isWorking_); }

    /// Whether input is held back, because work runs, or has failed and the message loop has not thrown that
    /// yet.
    bool IsWorking() const { return isWorking_ || failure_.Holds(); }

    /// Returns whether `message`, taken from the queue while work runs, is input to this window that is held
    /// back and must not be dispatched.
    bool Withholds(const MSG& message);

    /// Throws what the window's procedure has caught since the last call. Every message loop calls it after
    /// each message.
    void RethrowFailure() { failure_.Rethrow(); }

 protected:
    ModelessDialog() = default;
    /// A derived class closes the window in its own destructor, because the last messages still call its
    /// members.
    ~ModelessDialog() = default;

    /// The frame's window, visible or not; null before Create and after Close.
    HWND Frame() const { return window_.get(); }
    Application& App() const { return *app_; }
    CaughtFailure& Failure() { return failure_; }

    /// Creates the frame, hidden, from a template, which is needed only during the call. `owner` may be
    /// null. Messages that come before it is complete are left to the system.
    void Create(const DLGTEMPLATE* frame, HWND owner);

    /// Creates and returns a page of the frame, a child window whose messages reach the same members.
    HWND CreatePage(const DLGTEMPLATE* page);

    /// Sets the application that the window shows. It must outlive every later call and message.
    void ShowFormsOf(Application& app) { app_ = &app; }

    /// Runs `copy`, which brings the controls in line with the form. IsCopying is true meanwhile, so that
    /// what the controls report is not taken for the user's input.
    template <class Copy>
    void CopyToControls(Copy copy) {
        const FlagScope copying(isCopying_);
        copy();
    }
    bool IsCopying() const { return isCopying_; }

    /// Paints the window at once, and throws what the messages of showing it have thrown.
    void FinishShowing();

    /// Carries out `action`, then what was postponed meanwhile. While work runs it postpones or drops
    /// `action`, as its Kind says.
    void Run(const UserAction& action);

    /// Sets the result that the sender of a message to `window` gets and returns true, because a dialog's
    /// procedure itself returns only whether it has handled the message.
    static bool Reply(HWND window, LRESULT result);

    /// Carries out `action`. Input is held back meanwhile.
    virtual void Do(const UserAction& action) = 0;

    /// Handle what comes to the frame and its pages: a control's number and notification code, a
    /// notification, any other message. The first two return whether it was handled, the last the value for
    /// the dialog's procedure. What they throw reaches the message loop (RethrowFailure).
    virtual bool OnCommand(int id, int notice) = 0;
    virtual bool OnNotify(HWND window, const NMHDR& notice) = 0;
    virtual INT_PTR OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) = 0;

    /// Returns whether `message` to this window must not be dispatched while work runs. By default the user
    /// may look around, and what would change something is refused where it is handled.
    virtual bool IsHeldInput(const MSG& /*message*/) { return false; }

 private:
    void Postpone(const UserAction& action);
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR Dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    bool ShowWaiting(HWND window, int hit) const;

    Application* app_ = nullptr;
    CaughtFailure failure_;
    std::optional<UserAction> postponed_;
    bool isWorking_ = false;
    bool isCopying_ = false;
    Window window_;
};

}  // namespace velbooter
