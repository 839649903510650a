#pragma once
// Turns the staged files into a floppy image with the image tool in the application folder, and has the real
// floppy in drive A: formatted.

#include <string>

#include "src/forms/Forms.h"
#include "src/run/ApplicationPaths.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// Runs the image tool on `stagingFolder` for the image path in TxtDest, 1.44 MB when OptImage14 is chosen,
/// else 2.88 MB. Leaves the application folder as the current folder. Returns whether a new image exists
/// afterwards. Raises RuntimeError when the application folder cannot be made current.
bool CreateImageFromDir(const ApplicationPaths& paths, Desktop& desktop, const FrmWizard& wizard,
                        const std::string& stagingFolder);

/// Shows the system's format dialog for drive A: and waits for it to close. Returns whether the floppy was
/// formatted; if not, a message has said why.
bool FormatFloppy(Desktop& desktop);

}  // namespace velbooter
