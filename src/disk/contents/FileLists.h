#pragma once
// The list of files that go onto the disk, taken from the finished tree cabs.

#include <string>

#include "src/forms/Forms.h"
#include "src/run/ApplicationPaths.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// Fills LstFiles with every file under cabs, as paths relative to it, IO.SYS, MSDOS.SYS and COMMAND.COM
/// first whether or not the tree holds them, and selects every entry. Raises RuntimeError when a folder
/// cannot be read.
void FillInitialList(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard);

/// Lists one folder of the walk: appends its files that match `pattern` to LstFiles and inserts its
/// sub-folders into LstDirs at position 1 (0 in an empty list), which decides the order of the walk. Folders
/// whose name begins with a dot are left out. `folder` is a full path below cabs. Raises RuntimeError when
/// it cannot be read.
void ScanCabsFolder(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard,
                    const std::string& folder, const std::string& pattern);

}  // namespace velbooter
