#pragma once
// The drivers page: what the chosen disk offers, and which of its drivers are selected initially.

#include "src/disk/contents/DiskConfiguration.h"
#include "src/forms/Forms.h"
#include "src/run/ApplicationPaths.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// Prepares the drivers page and the target for `disk`: ticks and enables the rows of the groups that it
/// supports and whose folders exist, sets the mode of the network row, and applies the disk's default
/// drivers. The target becomes the disk's own file, or the application folder with a trailing "\" when it has
/// none. Raises RuntimeError 53 when the disk offers drivers and has no configuration file.
void GetDiskAndDriverSettings(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard,
                              const DiskEntry& disk);

}  // namespace velbooter
