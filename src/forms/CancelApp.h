#pragma once
// The single way out after a failure or a user's cancel, and the clean-up that every run ends with.

#include <functional>

#include "src/common/ProgramEnd.h"
#include "src/forms/Application.h"

namespace velbooter {

/// Deletes the run's working files, each if it exists: Drivers.ini, the tree cabs and the tree Temp of the
/// application folder. A deletion that fails is ignored.
void DeleteWorkingFiles(Application& app);

/// Ends the run: sets RunEnded and the outcome "Operation canceled", deletes the working files, and leaves
/// the wizard on its final page with Finish as its only way on. It changes state only; whoever called the
/// step that cancels tests RunEnded and returns.
void CancelApp(Application& app);

/// Runs `step`. An error that no step handles, of whatever kind, is shown in one message and cancels the run.
/// Returns whether there was none. ProgramEnd passes through.
bool RunGuarded(Application& app, const std::function<void()>& step);

/// Returns the exit code that tells how the last run ended; without one nothing went wrong.
ExitCode CodeOfLastRun(const Application& app);

}  // namespace velbooter
