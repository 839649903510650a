#pragma once
// The module setupnt: an unattended setup of Windows 2000 from the boot disk. Its data come from the key file
// alone.

#include <string>

#include "src/run/ApplicationPaths.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// Creates the answer file files\setupnt\bin\unattend.txt and packs files\setupnt into cabs\lib\setupnt.cab;
/// a message reports a failed packing. Raises RuntimeError when the answer file cannot be created.
void CreateSetupNT(const ApplicationPaths& paths, Desktop& desktop);

/// Writes the answer file `unattend` from [Win2KInfo] of `keyFile`: a copy of the template that it names, or
/// of our own when that does not exist, with the user's data set. Both are full paths. Without the key file
/// nothing is written, and an older answer file stays. Raises RuntimeError when our template is missing or
/// the answer file cannot be written.
void FillSetupDataFromKeyFileToUnattend(const ApplicationPaths& paths, const std::string& keyFile,
                                        const std::string& unattend);

}  // namespace velbooter
