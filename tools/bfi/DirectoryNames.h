#pragma once
// Finds the names under which the entries of one folder are stored. A name of the form 8.3 is stored in upper
// case, as DOS users expect it, even where only its case would need a long name; any other gets a long name
// and an alias.

#include <string>
#include <vector>

#include "floppy/Geometry.h"
#include "floppy/ShortName.h"

namespace tools::bfi {

/// How one entry is named on the disk.
struct DirectoryName {
    floppy::ShortName Short{};
    std::u16string Long;  ///< empty when the short name says it all

    /// Number of 32-byte directory entries that the name takes: the short one and the parts of the long name.
    std::size_t Slots() const { return floppy::SlotsOfName(Long.size()); }
};

/// Returns the names for `names` (UTF-8, in the order in which they are stored), one for each. Throws
/// ToolError with `folder` (for display) in front of the name that cannot be stored, and when two names are
/// the same to DOS.
std::vector<DirectoryName> NameEntries(const std::string& folder, const std::vector<std::string>& names);

}  // namespace tools::bfi
