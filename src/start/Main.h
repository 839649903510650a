#pragma once
// The start of the program: refuses a second instance, makes sure of the DOS files, and chooses the mode.

#include <string>

#include "src/common/SingleInstance.h"
#include "src/run/Application.h"

namespace velbooter {

/// Runs the program. `instance` must live as long as the program; `commandLine` is the text after the
/// program's name (ArgumentsOf). An empty one means the wizard: it is shown, and Main returns; the
/// program lives as long as its window. Any other means a batch run, which ends the program (ProgramEnd).
void Main(Application& app, const SingleInstance& instance, const std::string& commandLine);

}  // namespace velbooter
