#pragma once
// What steps of a run do with the wait window.

#include <string>

#include "src/forms/Application.h"

namespace velbooter {

/// Shows or hides the wait window at once.
void ShowWaitWindow(Application& app, bool visible);

/// Puts `status` into the wait window's status line and paints it at once, so that it shows while the step
/// runs.
void SetWaitStatus(Application& app, const std::string& status);

}  // namespace velbooter
