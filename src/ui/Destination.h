#pragma once
// The destination page: what is created, and where.

#include "src/run/Application.h"

namespace velbooter {

/// The clicks on the three option buttons, after the choice has changed: they enable the target for an image
/// only and set the step lines of the progress page.
void OptImage14_Click(Application& app);
void OptImage28_Click(Application& app);
void OptFloppy_Click(Application& app);

/// Handles a click on the chosen option, so that the step lines describe what will be created even if the
/// user has clicked none.
void ClickChosenOption(Application& app);

/// The click on the browse button: asks for the image's path; a cancelled dialog leaves it as it was.
void CmdBrowse_Click(Application& app);

}  // namespace velbooter
