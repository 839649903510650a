#pragma once
// How a run ends: the single way out after a failure or a user's cancel, the boundary at which an error that
// no step handles becomes one message, and the clean-up.

#include <exception>
#include <functional>

#include "src/common/RuntimeError.h"
#include "src/run/Application.h"
#include "src/run/ProgramEnd.h"

namespace velbooter {

/// Deletes the run's working files, each if it exists: Drivers.ini, the tree cabs and the tree Temp of the
/// application folder. A deletion that fails is ignored.
void DeleteWorkingFiles(const ApplicationPaths& paths);

/// Ends the run: sets RunEnded and the outcome "Operation canceled", deletes the working files, and leaves
/// the wizard on its final page, where only Finish continues. It only changes state: the caller of the failed
/// step must return.
void CancelApp(Application& app);

/// Returns the exit code that describes how the last run ended; Built when there was none.
ExitCode CodeOfLastRun(const Application& app);

/// Shows one message with the error's number, its text, and the file it was about.
void ShowRuntimeError(Desktop& desktop, const RuntimeError& error);

/// Shows one message about any error: a RuntimeError as above, lack of memory as RuntimeError 7, anything
/// else as an internal error.
void ShowError(Desktop& desktop, const std::exception& error);

/// Runs `step`. An error that no step handles, of whatever kind, is shown in one message and cancels the run.
/// Returns whether there was none. ProgramEnd passes through.
bool RunGuarded(Application& app, const std::function<void()>& step);

}  // namespace velbooter
