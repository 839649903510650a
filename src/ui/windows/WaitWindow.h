#pragma once
// The window that shows FrmWait: a small framed window with one status line. It cannot be closed by the user;
// the work it tells of decides when it goes.

#include <optional>

#include "src/forms/Forms.h"
#include "src/ui/windows/FormWindow.h"
#include "src/ui/windows/WindowHandle.h"

namespace velbooter {

class WaitWindow {
 public:
    /// Brings the window in line with `form`, creating it when it is first needed, and paints it at once.
    void Show(const FrmWait& form);

    /// Ends the window, if there is one.
    void Close() {
        hold_.reset();
        window_.reset();
    }

    /// The window to own message boxes; null while it is not visible.
    HWND Handle() const { return IfVisible(window_.get()); }

 private:
    void Create();

    Window window_;
    Font font_;
    std::optional<SessionHold> hold_;  ///< while the window is visible
    HWND status_ = nullptr;            ///< a child, destroyed with window_
};

}  // namespace velbooter
