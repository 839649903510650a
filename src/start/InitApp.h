#pragma once
// Prepares the application folder for a run, in both modes, before anything else is built.

#include "src/run/Application.h"

namespace velbooter {

/// Makes a fresh Drivers.ini that lists every driver cabinet with 1, sets the default target, rebuilds
/// files\dos and fills the tree cabs with the base files. When the user aborts a copy, CancelApp has run:
/// test RunEnded afterwards. Raises RuntimeError when Drivers.ini cannot be deleted or made.
void InitApp(Application& app);

}  // namespace velbooter
