#pragma once
// The single way out after a failure or a user's cancel, and the clean-up at the end of every run.

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

}  // namespace velbooter
