#pragma once
// Calls the system's help viewer, which runs in this process.

#include <windows.h>

#include <string>

#include "src/run/Desktop.h"

namespace velbooter {

/// Closes the help viewer's windows, if this program has called it: they live in this process and must not
/// outlive the program's own windows.
void CloseHelp();

/// Calls the help viewer's HtmlHelpA with `owner`, `file` (which may be followed by ">" and a window type),
/// a command of its published interface and the command's data. The viewer is the one in the system's
/// folder; one that lies beside the program is never called. On a system without the viewer nothing happens;
/// a missing file or topic is reported by the viewer itself.
void CallHtmlHelp(HWND owner, const std::string& file, HelpCommand command, std::uintptr_t data);

}  // namespace velbooter
