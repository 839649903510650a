#pragma once
// Lists the driver cabinets of one driver group in the driver index file.

#include <optional>
#include <string>

#include "src/forms/Application.h"

namespace velbooter {

/// Returns the name of the driver that a file of a driver folder holds: the file's name in upper case without
/// ".cab"; nothing for any other file. The system's own "*.cab" also finds "x.cab_old", by its short name.
std::optional<std::string> DriverNameOf(const std::string& file);

/// Writes, for every driver of the folder drivers\<group>, the key <its name> = `value` into the section
/// [<group>] of `indexFile`, a file name relative to the application folder. A missing folder writes nothing.
void IndexDriverGroup(Application& app, const std::string& indexFile, const std::string& group, int value);

}  // namespace velbooter
