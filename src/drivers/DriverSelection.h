#pragma once
// The driver selection FrmDrivers: loads the drivers of a group with their descriptions and ticks, and writes
// the ticks back to Drivers.ini. The handlers are those of the dialog and of the two buttons that open it.

#include <cstdint>
#include <string>

#include "src/forms/Application.h"

namespace velbooter {

/// Loads the cabinets of drivers\`folder` into the list: name and description, ticked as Drivers.ini says
/// (all are, when there is no such file), sorted by description. `clearList` empties the list first;
/// otherwise the rows are added. `caption` becomes the title of the first column, `folder` the list's tag.
/// `pciFile` names the group's PCI list, which the selection does not look at. A driver that cannot be
/// described is listed with a text that says so.
void CreateIndex(Application& app, const std::string& descFile, const std::string& pciFile,
                 const std::string& folder, const std::string& caption, bool clearList);

/// Load the lists that the two buttons open: the SCSI drivers, and the network drivers of the network row's
/// mode (both ODI groups together).
void LoadScsiDrivers(Application& app);
void LoadNetworkDrivers(Application& app);

/// The clicks on the two buttons of the drivers page: show the selection and load it.
void CmdSelASPI_Click(Application& app);
void CmdSelNDIS_Click(Application& app);

/// OK: writes the tick of every row, in the order displayed, and hides the selection. Rows of the ODI groups
/// go to [ODI16] when that group has a driver of the name, else to [ODI32].
void CmdOK_Click(Application& app);

/// Cancel: hides the selection; nothing is written.
void CmdCancelDrivers_Click(Application& app);

/// Ticks every row, or unticks every row, as the button's caption says, and turns the caption round.
void CmdSelAll_Click(Application& app);

/// Sorts by the 0-based column `column`; the column that was sorted last changes between ascending and
/// descending.
void DriverColumn_Click(Application& app, std::int16_t column);

/// Lays the selection out for its Width and Height (twips), which are first raised to the least size.
void DriverSelection_Resize(FrmDrivers& form);

}  // namespace velbooter
