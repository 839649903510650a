#pragma once
// Runs an external program for a build step: waits for its end without a limit while the windows keep
// painting.

#include <string>

#include "src/forms/Application.h"

namespace velbooter {

enum class ToolWindow { Hidden, Shown };

/// Runs `commandLine` and returns when the program has ended, or at once when it could not be started. What
/// it achieved is told by the files it left.
void RunTool(Application& app, const std::string& commandLine, ToolWindow window);

}  // namespace velbooter
