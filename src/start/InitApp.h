#pragma once
// Prepares the application folder for a run, in both modes, before anything else is built.

#include "src/run/Application.h"

namespace velbooter {

/// Creates a fresh Drivers.ini that lists every driver cabinet with 1, sets the default target, rebuilds
/// files\dos and fills the tree cabs with the base files. Check RunEnded afterwards: when the user aborts a
/// copy, InitApp calls CancelApp. Raises RuntimeError when Drivers.ini cannot be deleted or created.
void InitApp(Application& app);

}  // namespace velbooter
