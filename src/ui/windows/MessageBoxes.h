#pragma once
// Shows messages as real system message boxes, so that screen readers and other programs can read and press
// them.

#include <windows.h>

#include "src/run/Desktop.h"

namespace velbooter {

/// Shows `message` above `owner` (may be null) and returns the button pressed. Its Help button opens the help
/// topic and leaves the message standing.
Answer ShowMessageBox(HWND owner, const Message& message);

}  // namespace velbooter
