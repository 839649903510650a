#pragma once
// What the main functions of the companions share: a failure becomes one line on standard error that starts
// with the program's name, and an exit code (ExitCode in ToolError.h).

#include <functional>
#include <string>

namespace tools {

/// Runs `work`, with libraries from the system's folder only, and returns the process's exit code: 0, or the
/// code of the ToolError that it threw; any other exception (no memory, for instance) gives 1. A failure is
/// printed as "<program>: <line>". Lets no std::exception out.
int RunTool(const std::string& program, const std::function<void()>& work);

}  // namespace tools
