#pragma once
// The free space of a drive. The messages about a full floppy depend on its 32-bit arithmetic.

#include <string>

namespace velbooter {

/// Returns the free space of the drive that `path` begins with, in bytes; -1 when it cannot be read. Raises
/// RuntimeError 6 (overflow) above 2,147,483,647, because the product is computed in signed 32-bit
/// arithmetic.
double GetDriveFreeSpace(const std::string& path);

}  // namespace velbooter
