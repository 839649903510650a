#pragma once
// How an error that no step handles is told to the user.

#include "src/common/RuntimeError.h"
#include "src/forms/Application.h"

namespace velbooter {

/// Shows one message with the error's number, its text, and the file it was about.
void ShowRuntimeError(Application& app, const RuntimeError& error);

}  // namespace velbooter
