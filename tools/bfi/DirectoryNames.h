#pragma once
// Finds the names under which the entries of one folder are stored. A name of the form 8.3 is stored in
// upper case, as DOS users expect it, even where only its case would need a long name; any other gets a long
// name and an alias, the short name by which DOS knows it. The format of long names is in
// docs/formats/fat12.md. The volume label, too, is an entry of the root directory.

#include <string>
#include <vector>

#include "floppy/Geometry.h"
#include "floppy/ShortName.h"

namespace tools::bfi {

/// How one entry is named on the disk.
struct DirectoryName {
    floppy::ShortName Short{};
    std::u16string Long;  ///< UTF-16; empty when the short name is the whole name

    /// Number of 32-byte directory entries that the name takes: the short one and the parts of the long name.
    std::size_t Slots() const { return floppy::SlotsOfName(Long.size()); }
};

/// Returns the names for `names` (UTF-8, in the order in which they are stored), one for each. No alias is
/// the short name of another entry, whatever the order. `folder` is put before a name in messages, so it
/// ends in a separator. Throws ToolError naming the entry when a name cannot be stored: it holds a character
/// that DOS does not allow, ends in a dot or a space, is a device's, or is longer than 255 UTF-16 units.
/// Throws naming both when two names are the same to DOS.
std::vector<DirectoryName> NameEntries(const std::string& folder, const std::vector<std::string>& names);

/// Returns the volume label, a name of up to eleven characters without a dot, in which spaces are allowed:
/// `label` (the value of the option -l=, which messages name) in upper case, padded with spaces to
/// eleven characters. Throws ToolError when it is empty, longer than eleven characters, begins with a space
/// or contains a character that DOS does not allow; beyond ASCII none is allowed.
floppy::ShortName ToVolumeLabel(const std::string& label);

}  // namespace tools::bfi
