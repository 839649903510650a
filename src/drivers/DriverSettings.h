#pragma once
// The drivers page: what the chosen disk offers, and which of its drivers are selected at first.

#include "src/forms/Application.h"

namespace velbooter {

/// Prepares the drivers page and the target for the disk at SelectedDiskIndex from its section of the
/// catalogue: ticks and enables the rows of the groups that it supports and whose folders are there, gives
/// the network row its mode, and applies the disk's default drivers. The target becomes the disk's own file,
/// or the application folder with a trailing "\" when it has none. Raises RuntimeError 53 when the disk has
/// no configuration file.
void GetDiskAndDriverSettings(Application& app);

/// The clicks on the two check boxes: each enables its selection button while it is ticked.
void ChkASPI_Click(FrmWizard& wizard);
void ChkNDIS_Click(FrmWizard& wizard);

}  // namespace velbooter
