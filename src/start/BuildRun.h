#pragma once
// The build run: turns the choices on the forms into the finished disk.

#include <string>

#include "src/run/Application.h"

namespace velbooter {

/// Runs the build steps in their order, shows each step's progress, and cleans up the application folder.
/// `pluginName` is "" for none; a plugin is added to images only. The first failed step calls CancelApp,
/// which sets RunEnded; otherwise the outcome "Operation completed successfully" is set. Raises RuntimeError
/// when a step does.
void FinishApp(Application& app, const std::string& pluginName);

}  // namespace velbooter
