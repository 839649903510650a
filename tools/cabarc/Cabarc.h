#pragma once
// The program without its main: one call is one run.

#include <span>
#include <string>

namespace tools::cabarc {

/// Does what the arguments after the program's name ask for and prints its result to standard output. Throws
/// ToolError.
void Run(std::span<const std::string> arguments);

}  // namespace tools::cabarc
