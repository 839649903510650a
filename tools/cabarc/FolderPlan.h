#pragma once
// Which member goes into which folder of a new cabinet. One folder is best, because its members share one
// dictionary; another is begun only where a folder would pass its size limit.

#include "tools/cabarc/CabinetDirectory.h"

namespace tools::cabarc {

/// Sets Folder and Offset of every member from the sizes, in the order given, and makes the folder records
/// with `type` as their compression. Members of up to kMaxFolderBytes are expected. Throws ToolError when
/// there are more members or folders than a cabinet can count.
void PlanFolders(CabinetDirectory& directory, std::uint16_t type);

}  // namespace tools::cabarc
