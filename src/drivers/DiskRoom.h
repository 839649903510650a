#pragma once
// The quiet line that tells whether what is selected has room on the disk. It never stops anybody: the image
// tool judges in the end.

#include "src/forms/Application.h"

namespace velbooter {

/// Reads the length of every listed file below cabs, for ShowRoom to add up. To be called when a page with
/// the line is turned to.
void MeasureRoom(Application& app);

/// Puts into LblRoom what the selected files and drivers take on a disk of the chosen size and what it holds,
/// in KB (1,024 bytes), as a warning when they, or their names in the root directory, do not fit. A file that
/// is not there takes nothing. The two network lists are estimated, because only the build makes them. Raises
/// nothing.
void ShowRoom(Application& app);

}  // namespace velbooter
