#pragma once
// The volume label of a disk: a name of up to eleven characters without a dot, in which spaces are allowed.
// DOS keeps it in the boot sector and as an entry of the root directory.

#include <string>

#include "floppy/ShortName.h"

namespace tools::bfi {

/// Returns `label` (the value of the option -l=, which messages name) in upper case, padded with spaces to
/// eleven characters. Throws ToolError when it is empty, longer than eleven characters, begins with a space
/// or contains a character that DOS does not allow; beyond ASCII none is allowed.
floppy::ShortName ToVolumeLabel(const std::string& label);

}  // namespace tools::bfi
