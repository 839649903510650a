#pragma once
// What the user asks for: the options, the command, the cabinet and the names after it.

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tools/cabarc/Method.h"

namespace tools::cabarc {

/// The commands "n", "x" and "l", and the request for the usage.
enum class Command { New, Extract, List, Help };

/// One call of the program. All texts are UTF-8.
struct CommandLine {
    Command Action = Command::Help;
    Method Compression;                 ///< -m
    bool KeepFolders = false;           ///< -p
    bool Recurse = false;               ///< -r
    bool Overwrite = false;             ///< -o
    std::vector<std::string> Prefixes;  ///< -P, each
    std::string Cabinet;                ///< path
    std::vector<std::string> Names;     ///< after the cabinet: patterns of files to pack, or of members
    std::string TargetFolder;           ///< x: a last name that ends in a separator; "" is the working folder
};

/// Reads the arguments after the program's name. Options stand before the cabinet's name, before or after
/// the command; everything after it is a name, even if it looks like an option. A request for help is
/// returned at once, whatever follows it. With `slashOptions` an argument before the command may begin with
/// "/" in place of "-". Throws ToolError with ExitCode::WrongCall when a command, a cabinet, a value or a
/// file is missing or unknown; its text does not contain the usage.
CommandLine ParseCommandLine(std::span<const std::string> arguments, bool slashOptions);

/// Returns the usage: several lines, each ending with a line feed.
std::string_view UsageText();

}  // namespace tools::cabarc
