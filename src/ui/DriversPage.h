#pragma once
// The drivers page of the wizard, and the driver selection that its two buttons open.

#include <cstdint>

#include "src/run/Application.h"

namespace velbooter {

/// The clicks on the two check boxes: each enables its selection button while it is ticked.
void ChkASPI_Click(Application& app);
void ChkNDIS_Click(Application& app);

/// The clicks on the two buttons: show the selection and load it. Raise RuntimeError when that fails.
void CmdSelASPI_Click(Application& app);
void CmdSelNDIS_Click(Application& app);

/// OK of the selection: writes the tick of every row to Drivers.ini and hides the selection.
void CmdOK_Click(Application& app);

/// Cancel of the selection: hides it; nothing is written.
void CmdCancelDrivers_Click(Application& app);

/// Ticks every row, or unticks every row, as the button's caption says, and reverses the caption.
void CmdSelAll_Click(Application& app);

/// The click on the header of the 0-based column `column`: sorts by it.
void DriverColumn_Click(Application& app, std::int16_t column);

/// Lays out the selection for its Width and Height (twips), which are first raised to their minimums.
void DriverSelection_Resize(FrmDrivers& form);

}  // namespace velbooter
