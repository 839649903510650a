#pragma once
// How both companions fail: one clear line for the user and one of two exit codes.

#include <stdexcept>
#include <string>

namespace tools {

/// Exit codes of the companions.
enum class ExitCode {
    Done = 0,       ///< everything asked for was done
    Failed = 1,     ///< the work could not be done; nothing was left behind
    WrongCall = 2,  ///< the command line was not understood; the usage was printed
};

/// A failure that the user must read. `what()` is one line that names the file or the option and says what is
/// wrong, without the program's name and without a line end; main prints it to standard error.
class ToolError : public std::runtime_error {
 public:
    explicit ToolError(const std::string& line, ExitCode code = ExitCode::Failed)
        : std::runtime_error(line), Code(code) {}

    ExitCode Code;
};

}  // namespace tools
