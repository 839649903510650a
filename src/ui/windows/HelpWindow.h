#pragma once
// The door to the system's help viewer.

#include <windows.h>

#include <string>

#include "src/run/Desktop.h"

namespace velbooter {

/// Closes what the help viewer shows, if this program has called it: its windows live in this process and
/// must not outlive what they use.
void CloseHelp();

/// Calls the help viewer's HtmlHelpA with `owner`, `file` (which may name a window type behind ">"), a
/// command of its published interface and the command's data. The viewer is the one in the system's folder;
/// one that lies beside the program is never called. Nothing happens on a system without the viewer;
/// a missing file or topic is the viewer's to tell.
void CallHtmlHelp(HWND owner, const std::string& file, HelpCommand command, std::uintptr_t data);

}  // namespace velbooter
