#pragma once
// The start of the program: refuses a second instance, makes sure that the DOS files are there, and chooses
// the mode.

#include <string>

#include "src/common/SingleInstance.h"
#include "src/run/Application.h"

namespace velbooter {

/// Runs the program. `instance` must live as long as the program; `commandLine` is the text after the
/// program's name (ArgumentsOf). If it is empty, Main shows the wizard and returns; the program runs until
/// the wizard's window is closed. Any other text starts a batch run, which ends the program (ProgramEnd).
void Main(Application& app, const SingleInstance& instance, const std::string& commandLine);

}  // namespace velbooter
