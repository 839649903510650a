#pragma once
// The walk through the wizard's pages. Each Next runs the work that the page just left asks for; pages that a
// disk does not need are skipped in the same click.

#include "src/forms/Application.h"

namespace velbooter {

/// The click on Next. A step that cancels leaves the final page standing (RunEnded is set). Raises
/// RuntimeError when a step does.
void CmdNext_Click(Application& app);

/// The click on Back.
void CmdBack_Click(Application& app);

}  // namespace velbooter
