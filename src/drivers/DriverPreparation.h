#pragma once
// Puts the selected drivers onto the disk.

#include <string>

#include "src/forms/Forms.h"
#include "src/run/ApplicationPaths.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// Copies every selected driver cabinet of the ticked groups into cabs\Lib\<group>, adds each to LstFiles and
/// marks all driver entries there as selected. WorkProgress advances one step for each line of Drivers.ini.
/// After a failed copy the user is asked (Abort, Retry, Ignore). Returns false after Abort; the caller then
/// cancels the run. Raises RuntimeError when Drivers.ini cannot be read.
[[nodiscard]] bool PrepareDrivers(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard);

/// Returns whether PrepareDrivers marks the entry as selected: one that begins with lib\aspi, lib\ndis,
/// lib\odi1 or lib\odi3 in lower case. Only these eight characters are compared, so entries of earlier steps
/// are marked, too.
bool IsDriverEntry(const std::string& entry);

}  // namespace velbooter
