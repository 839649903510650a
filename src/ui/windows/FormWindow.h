#pragma once
// What the windows of the forms share: their classes and controls, how a person hears of what happens, how
// the session is kept, and how a failure gets out of a procedure that the system calls.

#include <windows.h>

#include <exception>
#include <string>
#include <utility>

namespace velbooter {

/// Registers the class `name` of a form, by which other programs find its windows. `procedure` serves them
/// with `extraBytes` bytes of their own; `cursor` is one of the system's pointers (IDC_ARROW). That it is
/// registered already does no harm.
void RegisterFormClass(const char* name, WNDPROC procedure, int extraBytes, LPCSTR cursor);

/// Creates a visible control of the class `className` within `parent`, which owns it, with no size yet.
/// `style` and `extendedStyle` are added to those of a child.
HWND CreateControl(HWND parent, int id, const char* className, const std::string& text, DWORD style,
                   HFONT font, DWORD extendedStyle = 0);

/// Gives `control` the text when it has another, and returns whether it had. Compared in 16-bit characters: a
/// box into which somebody has typed what the code page cannot hold shows in the end what the program has
/// taken for it.
bool ShowText(HWND control, const std::string& text);

/// Shows or hides `control` when it is not so yet, without giving it the keyboard.
void ShowVisible(HWND control, bool visible);

/// Returns `window` (may be null) when it is visible, else null.
HWND IfVisible(HWND window);

/// Paints `window` and its controls at once.
void PaintNow(HWND window);

/// Lets readers of the screen say the text of `label`: a step of the work or its outcome, which happens
/// without the user's doing. None of these labels ever has the focus.
void Announce(HWND label);

/// Lets a loop that waits for a message look at the state again.
void WakeLoop();

/// While a disk is made the session should not end: the system then asks the person at the screen, and shows
/// what there is to wait for. It has the reason for as long as the object lives; the window answers
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

/// Sets `flag` for as long as it lives; then the flag is as it was.
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

/// Carries an exception past the system. None may cross a procedure that the system calls, so the procedure
/// catches it at its edge, and the program's own code that waits for the system throws it again.
class CaughtFailure {
 public:
    /// Runs `action` and returns its result. What it throws is remembered, unless an earlier failure still
    /// is, and `otherwise` returned. The message loop is woken: a message that was sent, not posted, is
    /// handled within its waiting.
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

    /// Whether a failure is remembered.
    bool Holds() const { return failure_ != nullptr; }

    /// Throws the remembered failure and forgets it; does nothing when there is none.
    void Rethrow() {
        if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
    }

 private:
    std::exception_ptr failure_;
};

}  // namespace velbooter
