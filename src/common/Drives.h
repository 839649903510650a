#pragma once
// The free space of a drive, in the arithmetic that messages about full floppies rest on.

#include <string>

namespace velbooter {

/// Returns the free space of the drive that `path` begins with, in bytes; -1 when it cannot be read. The
/// product is taken in signed 32-bit arithmetic: above 2,147,483,647 it raises RuntimeError 6 (overflow).
double GetDriveFreeSpace(const std::string& path);

}  // namespace velbooter
