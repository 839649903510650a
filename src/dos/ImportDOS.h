#pragma once
// The three ways of filling the folder dos. Each shows the wait window with its progress while it works; what
// could not be had is left to the check that follows. All raise RuntimeError when a file operation of their
// own fails.

#include <string>

#include "src/forms/Application.h"

namespace velbooter {

/// Deletes what an import that was cut off has left: half files, and the marks beside them that tell of
/// these. Raises RuntimeError when one cannot be deleted.
void DeleteUnfinishedDosFiles(Application& app);

/// Imports from the cabinets of a setup CD's folder with the CD's own extract.exe.
void ImportDOSFilesWithExtract(Application& app, const std::string& sourceFolder);

/// Imports from the cabinets of a setup CD's folder with the system's expand.exe.
void ImportDOSFilesWithExpand(Application& app, const std::string& sourceFolder);

/// Copies from a Windows installation's folder (its drive's root, the folder, its folder command; the last
/// one that has the file wins). A file found nowhere is passed over.
void CopyDOSFiles(Application& app, const std::string& sourceFolder);

}  // namespace velbooter
