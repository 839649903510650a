#pragma once
// The command line of bfi. Options stand in any order and carry their value after "="; the one other
// argument is the folder.

#include <string>
#include <vector>

#include "tools/bfi/ImageBuilder.h"

namespace tools::bfi {

/// Returns the request in the arguments (UTF-8, without the program's name). Throws ToolError with
/// ExitCode::WrongCall and a text that ends with the usage when an argument is unknown, given twice, empty
/// or missing. Whether the files and the label are usable is for BuildImage to find out.
ImageRequest ParseCommandLine(const std::vector<std::string>& arguments);

}  // namespace tools::bfi
