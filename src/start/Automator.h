#pragma once
// Batch mode: builds one disk image from the command line and shows the progress in the wait window.

#include "src/run/Application.h"
#include "src/start/CommandLine.h"

namespace velbooter {

/// Builds the disk that `values` names and ends the program (ProgramEnd) on every path.
[[noreturn]] void RunBatch(Application& app, const CommandLineValues& values);

}  // namespace velbooter
