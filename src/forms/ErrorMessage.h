#pragma once
// How an error that no step handles is told to the user.

#include <exception>

#include "src/common/RuntimeError.h"
#include "src/forms/Application.h"

namespace velbooter {

/// Shows one message with the error's number, its text, and the file it was about.
void ShowRuntimeError(Application& app, const RuntimeError& error);

/// Shows one message about any error: a RuntimeError as above, want of memory as error 7, anything else as a
/// fault of the program itself.
void ShowError(Application& app, const std::exception& error);

}  // namespace velbooter
