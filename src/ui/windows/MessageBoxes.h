#pragma once
// Shows messages as real system message boxes, so that screen readers and other programs can read and press
// them.

#include <windows.h>

#include "src/run/Desktop.h"

namespace velbooter {

/// Shows `message` above `owner` (may be null) and returns the button pressed; a box that the system cannot
/// show counts as Abort where that is a choice, else as Cancel. The Help button opens the help topic and
/// leaves the message open. Throws what opening it throws, once the box is closed.
Answer ShowMessageBox(HWND owner, const Message& message);

}  // namespace velbooter
