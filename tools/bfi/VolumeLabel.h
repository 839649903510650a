#pragma once
// The volume label of a disk: a name of eleven characters without a dot, in which spaces are allowed.

#include <string>

#include "floppy/ShortName.h"

namespace tools::bfi {

/// Returns the volume label in upper case, padded with spaces. Throws ToolError when it is empty, longer than
/// eleven characters, begins with a space or holds a character that DOS does not allow.
floppy::ShortName ToVolumeLabel(const std::string& label);

}  // namespace tools::bfi
