#pragma once
// The system's own dialogs in which the wizard and the steps of a build ask the user.

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>

#include "src/forms/Controls.h"

namespace velbooter {

/// Shows the dialog that asks for an existing file above `owner` (may be null), preset from `dialog`.
/// Returns the full path of the chosen file in the ANSI code page, or nothing after Cancel. A dialog that
/// fails is reported in a message and counts as Cancel. The current folder stays as it is.
std::optional<std::string> AskForExistingFile(HWND owner, const CommonDialog& dialog);

/// Shows the dialog that asks where to save a file above `owner` (may be null), preset from `dialog`. The
/// user is asked before an existing file is chosen; a folder that does not exist yet is accepted. Returns
/// the full path, or nothing after Cancel. Failures and the current folder as above.
std::optional<std::string> AskForTargetFile(HWND owner, const CommonDialog& dialog);

/// Shows the dialog that formats drive A: above `owner` and returns its result (a FormatResult or another
/// value) when it closes.
std::int32_t ShowFormatDialogForDriveA(HWND owner);

}  // namespace velbooter
