#pragma once
// The system's dialog that asks for an existing file.

#include <windows.h>

#include <optional>
#include <string>

#include "src/forms/Controls.h"

namespace velbooter {

/// Shows the dialog above `owner`, preset from `dialog`. Returns the full path of the chosen file, or nothing
/// after Cancel. The current folder stays as it is.
std::optional<std::string> AskForExistingFile(HWND owner, const CommonDialog& dialog);

}  // namespace velbooter
