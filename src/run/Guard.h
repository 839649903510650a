#pragma once
// The boundary of a run: an error that no step handles becomes one message and the end of the run.

#include <exception>
#include <functional>

#include "src/common/RuntimeError.h"
#include "src/run/Application.h"

namespace velbooter {

/// Shows one message with the error's number, its text, and the file it was about.
void ShowRuntimeError(Desktop& desktop, const RuntimeError& error);

/// Shows one message about any error: a RuntimeError as above, lack of memory as RuntimeError 7, anything
/// else as an internal error.
void ShowError(Desktop& desktop, const std::exception& error);

/// Runs `step`. An error that no step handles, of whatever kind, is shown in one message and cancels the run.
/// Returns whether there was none. ProgramEnd passes through.
bool RunGuarded(Application& app, const std::function<void()>& step);

}  // namespace velbooter
