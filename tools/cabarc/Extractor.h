#pragma once
// The command "x": extracts members of a cabinet.

#include <cstddef>

#include "tools/cabarc/CommandLine.h"

namespace tools::cabarc {

/// Extracts what `call` asks for, with folders, times and attributes, and returns the number of files. Each
/// file appears only when it is complete. Throws ToolError; files that were complete by then stay. Extraction
/// needs Windows.
std::size_t Extract(const CommandLine& call);

}  // namespace tools::cabarc
