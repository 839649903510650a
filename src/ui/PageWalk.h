#pragma once
// What the wizard does around its pages: its buttons, its links, closing it. Each Next runs the work that the
// page just left asks for; pages that a disk does not need are skipped in the same click.

#include "src/run/Application.h"

namespace velbooter {

/// The click on Next. When a step cancels the run, the final page is shown and RunEnded is set. Raises
/// RuntimeError when a step does.
void CmdNext_Click(Application& app);

/// The click on Back: one page back, over those that this disk does not have. The work of the pages is not
/// undone; the next Next repeats it.
void CmdBack_Click(Application& app);

/// The click on Finish: runs the build and shows the final page; when a run has already ended, ends the
/// program (ProgramEnd). Raises RuntimeError when a step of the build does.
void CmdFinish_Click(Application& app);

/// The click on Help: shows the current page's topic.
void CmdHelp_Click(Application& app);

/// The clicks on the two links: open their addresses.
void LblHomePage_Click(Application& app);
void LblFrameworkSite_Click(Application& app);

/// The window is being closed: cleans up the application folder and ends the program (ProgramEnd).
[[noreturn]] void Form_Unload(Application& app);

}  // namespace velbooter
