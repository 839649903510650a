#pragma once
// The wizard's other handlers: the buttons that belong to no page, the links, and closing the window.

#include "src/run/Application.h"

namespace velbooter {

/// The click on Help: shows the current page's topic.
void CmdHelp_Click(Application& app);

/// The clicks on the two links: open their addresses.
void LblHomePage_Click(Application& app);
void LblFrameworkSite_Click(Application& app);

/// The window is being closed: cleans up the application folder and ends the program (ProgramEnd).
[[noreturn]] void Form_Unload(Application& app);

}  // namespace velbooter
