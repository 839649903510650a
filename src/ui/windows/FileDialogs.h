#pragma once
// The system's dialogs that ask for a file.

#include <windows.h>

#include <optional>
#include <string>

#include "src/forms/Controls.h"

namespace velbooter {

/// Shows the dialog above `owner`, preset from `dialog`. Returns the full path of the chosen file, or nothing
/// after Cancel. A dialog that fails is told of in a message and counts as Cancel. The current folder stays
/// as it is.
std::optional<std::string> AskForExistingFile(HWND owner, const CommonDialog& dialog);

/// Shows the dialog that asks where to save a file above `owner`, preset from `dialog`. The user is asked
/// before an existing file is chosen; a folder that does not exist yet is taken. Returns the full path, or
/// nothing after Cancel. The current folder stays as it is.
std::optional<std::string> AskForTargetFile(HWND owner, const CommonDialog& dialog);

}  // namespace velbooter
