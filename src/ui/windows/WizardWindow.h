#pragma once
// The window that shows FrmWizard: a frame with a side picture and a row of buttons, and eight pages of which
// one is visible. What the user does reaches the form's state first and then the form's handlers.

#include <windows.h>

#include <array>
#include <optional>

#include "src/run/Application.h"
#include "src/ui/windows/CaughtFailure.h"
#include "src/ui/windows/SessionHold.h"
#include "src/ui/windows/WindowHandle.h"
#include "src/ui/windows/WizardControls.h"

namespace velbooter {

class WizardWindow {
 public:
    /// Brings the window in line with the wizard of `app`, which must outlive the object. It is created when
    /// it is first to be shown.
    void Show(Application& app);

    /// Ends the window, if there is one.
    void Close() { window_.reset(); }

    /// The window to own dialogs; null while it is not visible.
    HWND Handle() const;

    /// Whether a handler of this window works.
    bool IsWorking() const { return isWorking_; }

    /// Does with `message` what belongs to the keyboard's way through the window. Returns whether it is done
    /// with.
    bool Takes(MSG& message) const;

    /// Returns whether `message`, taken from the queue while a handler works, is the user's input to this
    /// window, which has to wait and must not be dispatched. The keys of Cancel are remembered.
    bool WithholdsWhileWorking(const MSG& message);

    /// Raises again what a handler has raised in the window procedure, if it has.
    void RethrowFailure() { failure_.Rethrow(); }

 private:
    using Handler = void (*)(Application&);

    /// Serves the frame and the pages.
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    void Create();
    void CreatePages();
    void ShowPages();
    void FocusPage(size_t page);
    void CallForTheUser() const;
    bool OnCommand(int id, int notice);
    bool TakesClicks(int id) const;
    bool OnNotify(const NMHDR& notice);
    void Run(Handler handler);
    void TakeInput();
    void Postpone(Handler handler);
    INT_PTR OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    Application* app_ = nullptr;
    std::array<HWND, kPageCount> pages_{};  ///< children, destroyed with window_
    HWND shownPage_ = nullptr;
    WizardControls controls_;
    bool isShowing_ = false;  ///< what changes in the controls is the program's doing, not the user's
    bool isWorking_ = false;  ///< a handler runs: the user's input waits
    std::optional<SessionHold> hold_;  ///< it makes something of a disk: the end of the session waits, too
    Handler postponed_ = nullptr;      ///< to be run when the work has ended
    CaughtFailure failure_;
    Window window_;  ///< ends first: its messages still need the rest
};

}  // namespace velbooter
