#pragma once
// The walk through the wizard's pages. Each Next runs the work that the page just left asks for; pages that a
// disk does not need are skipped in the same click.

#include "src/run/Application.h"

namespace velbooter {

/// The click on Next. When a step cancels the run, the final page is shown and RunEnded is set. Raises
/// RuntimeError when a step does.
void CmdNext_Click(Application& app);

/// The click on Back: one page back, over those that this disk does not have. The work of the pages is not
/// undone; the next Next repeats it.
void CmdBack_Click(Application& app);

/// The click on Finish: runs the build and shows the final page; when a run has already ended, ends the
/// program (ProgramEnd).
void CmdFinish_Click(Application& app);

}  // namespace velbooter
