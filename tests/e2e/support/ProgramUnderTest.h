#pragma once
// One run of the real velbooter.exe, watched and answered from outside. Anything that the program shows and
// the test does not expect is the test's failure.

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/e2e/support/DemoFolder.h"
#include "tests/e2e/support/Programs.h"
#include "tests/e2e/support/ShownMessage.h"

namespace velbooter::e2e {

class ProgramUnderTest {
 public:
    /// Starts the program of `folder`, which must live longer. Its command line is its path in double quotes
    /// followed by `arguments` unchanged, the separating space included. The current folder is not the
    /// program's own, so that nothing can rely on it.
    ProgramUnderTest(const DemoFolder& folder, const std::string& arguments);

    /// Watches a program that another one has started; `process` is its id, and `showsWizard` says whether
    /// it was started without arguments. Its StatusTexts are not recorded. Throws HarnessFailure when it has
    /// ended.
    ProgramUnderTest(DWORD process, bool showsWizard);

    /// Ends a program that still runs, and then fails the test.
    ~ProgramUnderTest();
    ProgramUnderTest(const ProgramUnderTest&) = delete;
    ProgramUnderTest& operator=(const ProgramUnderTest&) = delete;

    /// Waits for the next message box and reads it. It stays open until Press.
    ShownMessage Message();

    /// Clicks a button of the message box that Message has read, and waits until the box is gone.
    void Press(const std::string& button);

    /// Clicks a button that leaves the message box open.
    void PressAndKeep(const std::string& button);

    /// Waits for the next message box, reads it and clicks `button`.
    ShownMessage Answer(const std::string& button);

    /// Waits for the dialog that asks for a file.
    HWND FileDialog();

    /// Waits for the driver selection.
    HWND DriverSelection();

    /// Waits for the wizard, which a program without arguments shows.
    HWND Wizard();

    /// Waits for the window of the help viewer, which may be open from then on.
    HWND HelpWindow();

    /// Loads the spy into the thread of `window`, a window of the program, once. TextSizeOf needs it; for a
    /// message box this class loads it. It sees each message of the thread, which makes the program slow.
    void PlaceSpy(HWND window);

    /// Waits until `condition` holds; `what` says in the failure what did not happen.
    void WaitUntil(const std::function<bool()>& condition, const std::string& what) const;

    /// Waits until `window`, which the program keeps for later, is hidden.
    void WaitUntilHidden(HWND window);

    /// Waits until `window` is gone.
    void WaitUntilGone(HWND window);

    /// Waits until the driver selection, if there was one, is hidden, then for the program's end, and returns
    /// its exit code. Throws HarnessFailure when it shows a dialog instead.
    DWORD ExitCode();

    /// Ends the program from outside, as a task manager would, and waits until it is gone.
    void Kill();

    DWORD ProcessId() const { return process_.dwProcessId; }

    /// When it was started, in units of 100 nanoseconds.
    ULONGLONG Start() const { return StartOf(process_.hProcess); }

    /// The wait window, or null while it is not shown.
    HWND WaitWindow() const;

    /// The status line of the wait window; "" while it is not shown.
    std::string Status() const;

    /// Every text that the status line has received since the first message was read, in order.
    std::vector<std::string> StatusTexts() const;

    /// Whether the wait window has ever been seen on the screen.
    bool SawWaitWindow() const { return sawWaitWindow_; }

 private:
    enum class Dialogs { Allowed, Refused };

    bool IsRunning() const;
    HWND Look(Dialogs dialogs);
    HWND NextDialog();
    HWND TopLevelWindow(const std::string& className) const;
    [[noreturn]] void Fail(const std::string& reason) const;

    std::string statusFile_;
    PROCESS_INFORMATION process_{};
    HHOOK spy_ = nullptr;
    HWND box_ = nullptr;        ///< the message box that was read and not yet answered
    HWND selection_ = nullptr;  ///< the driver selection that was last waited for
    bool showsWizard_ = false;
    bool showsHelp_ = false;
    bool sawWaitWindow_ = false;
};

}  // namespace velbooter::e2e
