#pragma once
// The free space of a drive. The messages about a full floppy depend on its 32-bit arithmetic, which is far
// more than a floppy needs.

#include <string>

namespace velbooter {

/// Returns the free space of the drive whose letter `path` begins with, in bytes; -1 when it cannot be read,
/// as without a disk. Raises RuntimeError 6 (overflow) above 2,147,483,647, because the product is computed
/// in signed 32-bit arithmetic.
double GetDriveFreeSpace(const std::string& path);

}  // namespace velbooter
