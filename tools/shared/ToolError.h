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
/// wrong, without the program's name and without a line end; main prints it to standard error. Only a wrong
/// call may have more lines, those of the usage.
class ToolError : public std::runtime_error {
 public:
    /// Control characters in `line`, which the names of files may hold on some systems, are shown as "?":
    /// they could make two lines of one and steer a terminal.
    explicit ToolError(const std::string& line, ExitCode code = ExitCode::Failed)
        : std::runtime_error(Shown(line, code)), Code(code) {}

    ExitCode Code;

 private:
    static std::string Shown(std::string line, ExitCode code) {
        for (char& c : line) {
            const bool isControl = static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
            if (isControl && !(c == '\n' && code == ExitCode::WrongCall)) c = '?';
        }
        return line;
    }
};

}  // namespace tools
