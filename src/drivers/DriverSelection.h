#pragma once
// The driver selection FrmDrivers: the drivers of a group with their descriptions and ticks, loaded from
// Drivers.ini and stored there again.

#include <cstdint>
#include <string>

#include "src/forms/Forms.h"
#include "src/run/ApplicationPaths.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// Loads the cabinets of drivers\`folder` into the list: name and description, ticked as Drivers.ini
/// says (all are ticked when there is no such file), sorted by description. `clearList` empties the list
/// first; otherwise the rows are appended. `caption` becomes the title of the first column, `folder` the
/// list's tag. `pciFile`, the name of the group's PCI list, is ignored. A driver without a description is
/// listed with a text that says so. Raises RuntimeError when the folder cannot be read, and as
/// DriverDescription does.
void CreateIndex(const ApplicationPaths& paths, Desktop& desktop, FrmDrivers& form,
                 const std::string& descFile, const std::string& pciFile, const std::string& folder,
                 const std::string& caption, bool clearList);

/// Load the lists that the two buttons of the drivers page open: the SCSI drivers, and the network drivers of
/// a mode (both ODI groups together). Raise RuntimeError as CreateIndex does.
void LoadScsiDrivers(const ApplicationPaths& paths, Desktop& desktop, FrmDrivers& form);
void LoadNetworkDrivers(const ApplicationPaths& paths, Desktop& desktop, FrmDrivers& form, NetworkMode mode);

/// Writes the tick of every row to Drivers.ini, in the order displayed. Rows of the ODI groups go to [ODI16]
/// when that group has a driver of that name, else to [ODI32]. A failure to write is not reported.
void StoreTicks(const ApplicationPaths& paths, const ListView& list);

/// Ticks every row, or unticks every row when all were ticked last.
void TickOrUntickAll(FrmDrivers& form);

/// Sorts by the 0-based column `column`; sorting by the same column again toggles between ascending and
/// descending order.
void SortByColumn(FrmDrivers& form, std::int16_t column);

}  // namespace velbooter
