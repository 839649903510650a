#pragma once
// The catalogue of disk configurations, files\disklist.ini.

#include "src/forms/Application.h"

namespace velbooter {

/// Rebuilds LV_Disk from the catalogue: the custom row first, then the disks in the catalogue's order, and
/// selects the first row. A missing catalogue gives the custom row alone. Raises RuntimeError 6 (overflow)
/// when Count is above 32766: the number of a row, the custom one included, has 16 bits.
void Fill_DiskList(Application& app);

}  // namespace velbooter
