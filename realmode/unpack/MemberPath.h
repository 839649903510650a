#pragma once
// The rule for names of members: each is a path of names as DOS has them, 8 characters and an extension of 3,
// that stays below the target folder.

#include <stdint.h>

#include "realmode/unpack/Fault.h"

namespace realmode::unpack {

/// Checks a name and turns its slashes into backslashes. It is LeavesTarget for a path that names a drive,
/// begins at a root or goes up, NotADosName for any other that DOS cannot have.
Fault CheckPath(char* path);

/// Returns the place of the last backslash of a path, in bytes from its start; 0 when it has none.
uint32_t FolderLength(const char* path);

}  // namespace realmode::unpack
