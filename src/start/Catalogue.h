#pragma once
// The catalogue of disk configurations, files\disklist.ini: one section for each disk, numbered from 1, and
// section 0 for the custom row that the list begins with. Nothing else in the program reads it.

#include <cstdint>
#include <string>

#include "src/disk/contents/DiskConfiguration.h"
#include "src/run/Application.h"

namespace velbooter {

/// Rebuilds LV_Disk from the catalogue: the custom row first, then the disks in the catalogue's order, and
/// selects the first row. A missing catalogue gives the custom row alone. Raises RuntimeError 6 (overflow)
/// when Count is above 32766, because row numbers, the custom row included, have 16 bits.
void Fill_DiskList(Application& app);

/// Returns the 1-based row of LV_Disk whose disk has this name, the last one of several; 0 when there is
/// none.
std::int16_t FindDisk(const FrmWizard& wizard, const std::string& name);

/// Returns the disk at SelectedDiskIndex, which must be a row of LV_Disk: its name as listed, everything else
/// as the catalogue has it now.
DiskEntry ChosenDisk(const Application& app);

}  // namespace velbooter
