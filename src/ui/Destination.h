#pragma once
// The destination page: what is made, and where.

#include "src/run/Application.h"

namespace velbooter {

/// The clicks on the three option buttons, each after the choice has been made: the target can be given for
/// an image only, and the step lines of the progress page are set.
void OptImage14_Click(Application& app);
void OptImage28_Click(Application& app);
void OptFloppy_Click(Application& app);

/// Clicks the option that is chosen, so that the step lines are those of what will be created though nobody
/// has clicked.
void ClickChosenOption(Application& app);

/// The click on the browse button: asks for the image's path; a cancelled dialog leaves it as it was.
void CmdBrowse_Click(Application& app);

}  // namespace velbooter
