#pragma once
// Carries out a disk's configuration file, files\<name>.ini: which module cabinets, loose files and packed
// folders make up the disk.

#include <string>

#include "src/common/Text.h"
#include "src/forms/Forms.h"
#include "src/run/ApplicationPaths.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// What the catalogue says about one disk.
struct DiskEntry {
    std::string Name;
    std::string Target;  ///< the image's path; "" when the disk names none
    bool TakesAspi = false;
    bool TakesNdis = false;
    bool TakesOdi = false;

    /// Returns the name of the disk's configuration file, which is in the folder files.
    std::string ConfigurationFile() const { return LowerCase(Name) + ".ini"; }
};

/// Reads `diskFile`, a file name in the folder files, and carries out each line at once, filling the tree
/// cabs. Sets SetupWinIncluded and SetupNTIncluded of `wizard`, and its status line. Stops at a failed
/// operation and returns false; the caller then cancels the run. Raises RuntimeError when the file cannot be
/// read.
[[nodiscard]] bool Init_Lists(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard,
                              const std::string& diskFile);

}  // namespace velbooter
