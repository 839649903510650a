#pragma once
// The line that says whether what is selected fits on the disk. It never prevents a build: the image tool has
// the final say.

#include "src/run/Application.h"

namespace velbooter {

/// Reads the length of every listed file below cabs, for ShowSpace to add up. Call it when a page with the
/// line is about to be shown.
void MeasureSpace(Application& app);

/// Puts into LblSpace what the selected files and drivers take on a disk of the chosen size and what it
/// holds, in KB (1,024 bytes), as a warning when they, or their names in the root directory, do not fit. A
/// missing file takes nothing. The two network lists are estimated, because only the build creates them.
/// Raises nothing.
void ShowSpace(Application& app);

}  // namespace velbooter
