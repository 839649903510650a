#pragma once
// How both companions fail: one clear line for the user and one of two exit codes.

#include <stdexcept>
#include <string>

#include "tools/shared/Utf8.h"

namespace tools {

/// Exit codes of the companions.
enum class ExitCode {
    Done = 0,       ///< everything asked for was done
    Failed = 1,     ///< the work could not be done; no partial file is left
    WrongCall = 2,  ///< the command line was not understood; the usage was printed
};

/// A failure that the user has to read about. `what()` is one line that names the file or the option and
/// says what is wrong, without the program's name and without a line end; main prints it to standard error.
/// Only a wrong call may have more lines, those of the usage.
class ToolError : public std::runtime_error {
 public:
    /// `line` becomes what Shown() (Utf8.h) makes of it: the names of files may hold characters that make two
    /// lines of one or steer a terminal. A wrong call keeps its line ends.
    explicit ToolError(const std::string& line, ExitCode code = ExitCode::Failed)
        : std::runtime_error(code == ExitCode::WrongCall ? ShownLines(line) : Shown(line)), Code(code) {}

    ExitCode Code;

 private:
    static std::string ShownLines(const std::string& lines) {
        std::string shown;
        for (std::size_t start = 0;;) {
            const std::size_t end = lines.find('\n', start);
            shown += Shown(lines.substr(start, end - start));
            if (end == std::string::npos) return shown;
            shown += '\n';
            start = end + 1;
        }
    }
};

}  // namespace tools
