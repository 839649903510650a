#pragma once
// What velbooter.com says at a command prompt: the end of a run in one line, in the user's words. A line ends
// with a line feed.

#include <cstdint>
#include <string>

namespace velbooter {

/// The exit code of velbooter.com itself when it cannot start velbooter.exe: the number that command shells
/// use for a program that is not there. Far from those of ExitCode, which stand for velbooter.exe's own end.
inline constexpr std::uint32_t kNotStarted = 127;

/// Returns the line about a run of velbooter.exe that has ended with `code`. A code that the program does not
/// give by itself means that something else has ended it.
std::string OutcomeLine(std::uint32_t code);

/// Returns the line about `program`, the full path of velbooter.exe, which is not there.
std::string MissingLine(const std::string& program);

/// Returns the line about `program`, which the system refuses to start or to watch with `systemError`, a
/// result of GetLastError.
std::string NotStartedLine(const std::string& program, std::uint32_t systemError);

}  // namespace velbooter
