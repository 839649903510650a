#pragma once
// A message box as another process sees it, read in full and answered by messages.

#include <windows.h>

#include <iosfwd>
#include <string>
#include <vector>

#include "tests/e2e/spy/SpyProtocol.h"

namespace velbooter::e2e {

/// Everything that a message box shows. Buttons are their texts from left to right, without access keys.
struct ShownMessage {
    std::string Text;
    std::string Title;
    std::vector<std::string> Buttons;
    Picture Icon = Picture::None;

    bool operator==(const ShownMessage&) const = default;
};

/// Prints a message for GoogleTest.
void PrintTo(const ShownMessage& message, std::ostream* out);

/// Reads the message box `box`. The spy must be loaded into its thread.
ShownMessage ReadMessageBox(HWND box);

/// Clicks the button with the text `button` and returns at once. Throws HarnessFailure when the box has
/// none.
void PressButton(HWND box, const std::string& button);

}  // namespace velbooter::e2e
