#pragma once
// Puts the selected drivers onto the disk.

#include <string>

#include "src/forms/Application.h"

namespace velbooter {

/// Copies every selected driver cabinet of the groups that are ticked into cabs\Lib\<group>, adds each to
/// LstFiles and marks all driver entries there as selected. WorkProgress moves one step for each line of
/// Drivers.ini. A failed copy is asked about (Abort, Retry, Ignore); after Abort CancelApp has run: test
/// RunEnded afterwards. Raises RuntimeError when Drivers.ini cannot be read.
void PrepareDrivers(Application& app);

/// Returns whether PrepareDrivers marks the entry as selected. The first eight characters tell, so entries of
/// earlier steps are marked too.
bool IsDriverEntry(const std::string& entry);

}  // namespace velbooter
