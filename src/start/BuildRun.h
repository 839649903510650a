#pragma once
// The two ends of a build, in both modes: the application folder is prepared before anything else, and the
// choices on the forms are turned into the finished disk.

#include <string>

#include "src/run/Application.h"

namespace velbooter {

/// Creates a fresh Drivers.ini that lists every driver cabinet with 1, sets the default target, rebuilds
/// files\dos and fills the tree cabs with the base files. Check RunEnded afterwards: when the user aborts the
/// copy of the base files, InitApp calls CancelApp; an aborted copy to files\dos does not end the run. Raises
/// RuntimeError when Drivers.ini cannot be deleted or created, or when a driver folder cannot be read.
void InitApp(Application& app);

/// Runs the build steps in their order, shows each step's progress, and cleans up the application folder.
/// `pluginName` is "" for none; a plugin is added to images only. The first failed step calls CancelApp,
/// which sets RunEnded; otherwise the outcome "Operation completed successfully" is set. Raises RuntimeError
/// when a step does.
void FinishApp(Application& app, const std::string& pluginName);

}  // namespace velbooter
