#pragma once
// Carries out a disk's configuration file, files\<name>.ini: which module cabinets, loose files and packed
// folders make up the disk.

#include <string>

#include "src/forms/Application.h"

namespace velbooter {

/// Reads `diskFile`, a file name in the folder files, and carries out each line at once, filling the tree
/// cabs. Sets SetupWinIncluded and SetupNTIncluded. A failed operation calls CancelApp and ends the reading:
/// test RunEnded afterwards. Raises RuntimeError when the file cannot be read.
void Init_Lists(Application& app, const std::string& diskFile);

}  // namespace velbooter
