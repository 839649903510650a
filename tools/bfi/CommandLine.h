#pragma once
// The command line of bfi.

#include <string>
#include <vector>

#include "tools/bfi/ImageBuilder.h"

namespace tools::bfi {

/// Returns the request that the arguments (UTF-8, without the program's name) make. Throws ToolError with
/// ExitCode::WrongCall and a text that ends with the usage when an argument is unknown, given twice, empty or
/// missing.
ImageRequest ParseCommandLine(const std::vector<std::string>& arguments);

}  // namespace tools::bfi
