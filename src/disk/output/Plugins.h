#pragma once
// Adds a plugin's files to the staging folder.

#include <string>

#include "src/run/ApplicationPaths.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// Runs the program plugins\<name>.exe, .com or .bat (the first that exists, in this order), its window
/// shown, in the application folder, waits for its end, and then copies the tree of the folder plugins\<name>
/// over `stagingFolder`. Nothing is reported: a missing program or folder adds nothing. Raises RuntimeError
/// when the application folder cannot be made current.
void InjectPlugin(const ApplicationPaths& paths, Desktop& desktop, const std::string& stagingFolder,
                  const std::string& name);

}  // namespace velbooter
