#pragma once
// What velbooter.com prints at a command prompt: one line about how a run ended, or why none could start.
// Each line ends with a line feed.

#include <cstdint>
#include <string>

#include "console/BuiltImage.h"

namespace velbooter {

/// The exit code of velbooter.com itself when it cannot start velbooter.exe: the number that command shells
/// use for a missing program. It is none of ExitCode, which velbooter.exe itself returns.
inline constexpr std::uint32_t kNotStarted = 127;

/// Returns the line about a run of velbooter.exe that ended with `code`, a process's exit code. A code that
/// is not in ExitCode means that something else terminated the program.
std::string OutcomeLine(std::uint32_t code);

/// Returns the line about a run that has built `image`, given by its full path.
std::string BuiltLine(const std::string& image, const DiskUse& use);

/// Returns the line about `program`, the full path of velbooter.exe, which is missing.
std::string MissingLine(const std::string& program);

/// Returns the line about `program`, which could not be started or waited for. `systemError` is a result of
/// GetLastError.
std::string NotStartedLine(const std::string& program, std::uint32_t systemError);

}  // namespace velbooter
