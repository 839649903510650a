#pragma once
// Copies the disk's files into a fresh staging folder for an image, a plugin's on top of them, or straight
// onto the floppy.

#include <string>

#include "src/run/Application.h"
#include "src/run/ApplicationPaths.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// Creates a fresh staging folder Temp\Velbooter<number>, stores it in `staging` and fills it. Returns
/// whether that succeeded; if not, the caller cancels the run.
[[nodiscard]] bool CreateDiskAsDir(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard,
                                   StagingArea& staging);

/// Copies the selected entries of LstFiles from the tree cabs to `destination`, a folder without a trailing
/// "\", or exactly "A:" for the floppy, whose free space is then tested before each file. Advances
/// WorkProgress by one step for each entry, and again for each retry. Failures are shown. Returns false when
/// a source could not be read or the user aborted; files left out because the floppy is full or because the
/// user chose Ignore do not count.
bool InjectFilesToDir(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard,
                      const std::string& destination);

/// Runs the program plugins\<name>.exe, .com or .bat (the first that exists, in this order), its window
/// shown, in the application folder, waits for its end, and then copies the tree of the folder plugins\<name>
/// over `stagingFolder`. Nothing is reported: a missing program or folder adds nothing. Raises RuntimeError
/// when the application folder cannot be made current.
void InjectPlugin(const ApplicationPaths& paths, Desktop& desktop, const std::string& stagingFolder,
                  const std::string& name);

}  // namespace velbooter
