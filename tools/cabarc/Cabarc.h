#pragma once
// The program without its main function: one call is one run, so that tests can run it within their own
// process.

#include <span>
#include <string>

namespace tools::cabarc {

/// Does what `arguments` (UTF-8, without the program's name) ask for and prints the result to standard
/// output. Throws ToolError: WrongCall for arguments that make no sense, whose usage the caller prints,
/// Failed for everything else.
void Run(std::span<const std::string> arguments);

}  // namespace tools::cabarc
