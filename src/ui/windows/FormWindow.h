#pragma once
// What the windows of the forms share: registering classes and creating controls, bringing a control in line
// with a form without flicker, announcements for screen readers, holding back the end of the session, and
// carrying a failure out of a procedure that the system calls.

#include <windows.h>

#include <exception>
#include <string>
#include <utility>

namespace velbooter {

/// Registers the window class `name` of a form, by which other programs find its windows. `procedure`
/// handles their messages, each has `extraBytes` bytes of its own, and `cursor` is one of the system's
/// pointers (IDC_ARROW). Registering a class again is harmless.
void RegisterFormClass(const char* name, WNDPROC procedure, int extraBytes, LPCSTR cursor);

/// Creates a visible control of the class `className` in `parent`, which owns it, at first without a size,
/// and returns it. `style` and `extendedStyle` are added to those of a child window. `font` must outlive the
/// control.
HWND CreateControl(HWND parent, int id, const char* className, const std::string& text, DWORD style,
                   HFONT font, DWORD extendedStyle = 0);

/// Gives `control` the text (ANSI code page) when it has another, and returns whether it had. The texts are
/// compared as UTF-16: when a user has typed characters that the code page lacks, the box then shows what
/// the program has read instead of them.
bool ShowText(HWND control, const std::string& text);

/// Shows or hides `control` unless it is so already, without giving it the keyboard focus.
void ShowVisible(HWND control, bool visible);

/// Returns `window` (may be null) when it is visible, else null.
HWND IfVisible(HWND window);

/// Paints `window` and its controls at once, without waiting for the message loop.
void PaintNow(HWND window);

/// Makes screen readers speak the text of `label`: a step of the work or its outcome, which the user has not
/// caused. By themselves they speak what gets the focus, which such a label never does.
void Announce(HWND label);

/// Wakes a message loop that waits, so that it looks at the state again.
void WakeLoop();

/// Keeps the Windows session from ending while a disk is being created: the system then asks the user and
/// shows the reason that this object gives it as long as it lives. The window itself has to answer
/// WM_QUERYENDSESSION with FALSE meanwhile.
class SessionHold {
 public:
    explicit SessionHold(HWND window);
    ~SessionHold();
    SessionHold(const SessionHold&) = delete;
    SessionHold& operator=(const SessionHold&) = delete;

 private:
    HWND window_;
};

/// Sets `flag` as long as it lives and then restores its former value, so scopes may be nested.
class FlagScope {
 public:
    explicit FlagScope(bool& flag) : flag_(flag), former_(std::exchange(flag, true)) {}
    ~FlagScope() { flag_ = former_; }
    FlagScope(const FlagScope&) = delete;
    FlagScope& operator=(const FlagScope&) = delete;

 private:
    bool& flag_;
    bool former_;
};

/// Carries an exception past the system's code. None may leave a procedure that the system calls, so the
/// procedure catches it at its edge, and the program's own code that waits for the system throws it again.
class CaughtFailure {
 public:
    /// Runs `action` and returns its result. When it throws, `otherwise` is returned and the exception kept,
    /// unless an earlier one is still kept. The message loop is woken, because it may be waiting: a message
    /// that is sent, not posted, is handled within GetMessage.
    template <class Step, class Result>
    Result Guard(Step action, Result otherwise) noexcept {
        try {
            return action();
        } catch (...) {
            if (!failure_) failure_ = std::current_exception();
            WakeLoop();
            return otherwise;
        }
    }

    /// Whether a failure is kept.
    bool Holds() const { return failure_ != nullptr; }

    /// Throws the failure and forgets it; does nothing when there is none.
    void Rethrow() {
        if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
    }

 private:
    std::exception_ptr failure_;
};

}  // namespace velbooter
