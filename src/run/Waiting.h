#pragma once
// What a step does while the user waits: it shows its status in the wait window and runs external programs.

#include <string>

#include "src/forms/Forms.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// Shows or hides the wait window at once.
void ShowWaitWindow(FrmWait& wait, Desktop& desktop, bool visible);

/// Puts `status` into the wait window's status line and paints it at once, so that it is visible while the
/// step runs.
void SetWaitStatus(FrmWait& wait, Desktop& desktop, const std::string& status);

/// Shows the wait window as long as it lives.
class ShownWaitWindow {
 public:
    /// Both must outlive the object.
    ShownWaitWindow(FrmWait& wait, Desktop& desktop);
    ~ShownWaitWindow();
    ShownWaitWindow(const ShownWaitWindow&) = delete;
    ShownWaitWindow& operator=(const ShownWaitWindow&) = delete;

 private:
    FrmWait& wait_;
    Desktop& desktop_;
};

/// Whether a program that is run shows its own window.
enum class ToolWindow { Hidden, Shown };

/// Runs `commandLine` and returns when the program has ended, or at once when it could not be started; the
/// windows keep painting, and there is no time limit. The files that the program leaves show what it
/// achieved.
void RunTool(Desktop& desktop, const std::string& commandLine, ToolWindow window);

}  // namespace velbooter
