#pragma once
// What the user asks for: the options, the command, the cabinet and the names after it.

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tools/cabarc/Method.h"

namespace tools::cabarc {

enum class Command { New, Extract, List, Help };

struct CommandLine {
    Command Action = Command::Help;
    Method Compression;                 ///< -m
    bool KeepFolders = false;           ///< -p
    bool Recurse = false;               ///< -r
    bool Overwrite = false;             ///< -o
    std::vector<std::string> Prefixes;  ///< -P, each
    std::string Cabinet;
    std::vector<std::string> Names;  ///< after the cabinet: files to pack, patterns of members
    std::string TargetFolder;        ///< x: a last name that ends in a separator; "" is the working folder
};

/// Reads the arguments after the program's name. Options stand before the cabinet's name, before or after the
/// command; what follows it are names, also when one looks like an option. With `slashOptions` an argument
/// before the command may begin with "/" in place of "-". Throws ToolError with ExitCode::WrongCall that says
/// what is wrong; the text has no usage.
CommandLine ParseCommandLine(std::span<const std::string> arguments, bool slashOptions);

/// Returns the usage, several lines with an end each.
std::string_view UsageText();

}  // namespace tools::cabarc
