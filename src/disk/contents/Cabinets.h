#pragma once
// Packs module folders into cabinets with the archiver in the application folder.

#include <string>

#include "src/run/ApplicationPaths.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// Packs the folder `sourceFolder` into the cabinet `name` + ".cab" in `cabFolder`; both folders are relative
/// to the application folder, and a trailing "\" is added to `cabFolder` itself. Leaves the application
/// folder as the current folder. Returns whether the cabinet exists afterwards; if not, a message has
/// reported it. Raises RuntimeError when the application folder cannot be made current.
bool PackCabinet(const ApplicationPaths& paths, Desktop& desktop, const std::string& name,
                 const std::string& sourceFolder, std::string& cabFolder);

}  // namespace velbooter
