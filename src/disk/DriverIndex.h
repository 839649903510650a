#pragma once
// Lists the driver cabinets of one driver group in the driver index file.

#include <string>

#include "src/forms/Application.h"

namespace velbooter {

/// Writes, for every "*.cab" of the folder drivers\<group>, the key <name in upper case> = `value` into the
/// section
/// [<group>] of `indexFile`, a file name relative to the application folder. A missing folder writes nothing.
void IndexDriverGroup(Application& app, const std::string& indexFile, const std::string& group, int value);

}  // namespace velbooter
