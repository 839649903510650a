#pragma once
// The process of a companion: its arguments as the user typed them, and messages that a console shows as they
// are. All texts are UTF-8; HostProcess_win.cpp and HostProcess_posix.cpp implement it.

#include <string>
#include <vector>

namespace tools {

/// Returns the arguments of the program, its own name excluded, as UTF-8. Throws ToolError when one of them
/// cannot be expressed in Unicode. On Windows they are taken from the process's wide command line (the C
/// library would expand wildcards and lose characters); on POSIX from argv.
std::vector<std::string> Arguments(int argc, char** argv);

/// Has Windows look for libraries in its own folder only from now on, and not beside the program, where
/// anyone may have put a file with the name of a system library. Without effect on a Windows 7 without
/// updates, and on POSIX, which never looks there. To be called before anything that loads a library.
void UseSystemLibrariesOnly();

/// The standard streams that Print writes to.
enum class Stream { Output, Error };

/// Writes UTF-8 text to a standard stream; a Windows console gets it as Unicode, a file or pipe as it is.
/// Failure to write (a closed pipe) is ignored.
void Print(Stream stream, const std::string& text);

}  // namespace tools
