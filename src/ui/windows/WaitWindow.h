#pragma once
// The window that shows FrmWait: a small framed window with one status line. The user cannot close it; it is
// hidden when the work that it describes has ended.

#include <optional>

#include "src/forms/Forms.h"
#include "src/ui/windows/FormWindow.h"
#include "src/ui/windows/WindowHandle.h"

namespace velbooter {

/// Also keeps the Windows session from ending while it is visible (SessionHold).
class WaitWindow {
 public:
    /// Brings the window in line with `form`, creating it when it is first to be visible, and paints it at
    /// once. A new status is announced to screen readers.
    void Show(const FrmWait& form);

    /// Destroys the window, if there is one.
    void Close() {
        hold_.reset();
        window_.reset();
    }

    /// The window that message boxes may have as their owner; null while it is not visible.
    HWND Handle() const { return IfVisible(window_.get()); }

 private:
    void Create();

    Window window_;
    Font font_;
    std::optional<SessionHold> hold_;  ///< while the window is visible
    HWND status_ = nullptr;            ///< a child, destroyed with window_
};

}  // namespace velbooter
