#pragma once
// What the program's two dialogs, the wizard and the driver selection, have in common: the window and its
// procedure, which no exception leaves; the keys; and what becomes of the user's input while work runs.

#include <functional>
#include <optional>

#include "src/run/Application.h"
#include "src/ui/windows/FormWindow.h"
#include "src/ui/windows/WindowHandle.h"

namespace velbooter {

/// What becomes of an action that the user asks for while work runs.
enum class ActionKind {
    Step,    ///< forgotten: the user has not seen yet what it would act on
    Build,   ///< the same; it works on a disk, and the end of the session waits for it
    Cancel,  ///< done when the work has ended
    Close,   ///< done when the work has ended, instead of Cancel
};

struct UserAction {
    std::function<void(Application&)> Handler;
    ActionKind Kind = ActionKind::Step;
};

class ModelessDialog {
 public:
    ModelessDialog(const ModelessDialog&) = delete;
    ModelessDialog& operator=(const ModelessDialog&) = delete;

    /// Ends the window, if there is one.
    void Close() { window_.reset(); }

    /// The window to own other dialogs; null while it is not visible.
    HWND Handle() const { return IfVisible(window_.get()); }

    /// Handles `message` when it is for this window: its keys are those of a dialog. Returns whether it was.
    bool Takes(MSG& message) const;

    /// Holds the user's input to this window back for as long as the result lives: work runs.
    [[nodiscard]] FlagScope HoldInput() { return FlagScope(isWorking_); }

    /// Whether input is held back, because work runs or has failed and the loop does not know yet.
    bool IsWorking() const { return isWorking_ || failure_.Holds(); }

    /// Returns whether `message`, taken from the queue while work runs, is input to this window that is held
    /// back and must not be dispatched.
    bool Withholds(const MSG& message);

    /// Throws what has been thrown within the window's procedure since the last call. Every message loop
    /// calls it after each message.
    void RethrowFailure() { failure_.Rethrow(); }

 protected:
    ModelessDialog() = default;
    /// A derived class closes the window in its own destructor: messages at the end still need it whole.
    ~ModelessDialog() = default;

    /// The frame's window, visible or not; null before Create and after its end.
    HWND Frame() const { return window_.get(); }
    Application& App() const { return *app_; }
    CaughtFailure& Failure() { return failure_; }

    /// Creates the frame from a template, hidden, above `owner` (may be null). Messages that come before it
    /// stands are left to the system.
    void Create(const DLGTEMPLATE* frame, HWND owner);

    /// Creates a page of the frame, a child that is served by the same members.
    HWND CreatePage(const DLGTEMPLATE* page);

    /// Says which application the window shows. It must outlive every later call and message.
    void ShowFormsOf(Application& app) { app_ = &app; }

    /// Runs `copy`, which brings the controls in line with the form: what they report meanwhile is the
    /// program's doing.
    template <class Copy>
    void CopyToControls(Copy copy) {
        const FlagScope copying(isCopying_);
        copy();
    }
    bool IsCopying() const { return isCopying_; }

    /// Paints the window at once, and throws what the messages of showing it have thrown.
    void FinishShowing();

    /// Does `action`, then what was postponed meanwhile. While work runs it postpones or forgets it.
    void Run(const UserAction& action);

    /// Sets what the sender of a message to `window` gets and returns true: a dialog's procedure itself
    /// returns only whether it has handled the message.
    static bool Reply(HWND window, LRESULT result);

    /// Carries out `action`. Input is held back meanwhile.
    virtual void Do(const UserAction& action) = 0;

    /// What comes to the frame and its pages. Each returns whether, or with what, it was handled; what is
    /// thrown reaches the message loop.
    virtual bool OnCommand(int id, int notice) = 0;
    virtual bool OnNotify(HWND window, const NMHDR& notice) = 0;
    virtual INT_PTR OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) = 0;

    /// Returns whether `message` to this window must not be dispatched while work runs. Without a rule of its
    /// own a dialog lets the user look around, and refuses what would change something where it is handled.
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
