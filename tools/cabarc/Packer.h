#pragma once
// The command "n": packs files into a new cabinet.

#include <cstdint>

#include "tools/cabarc/CommandLine.h"

namespace tools::cabarc {

struct PackReport {
    std::size_t Files = 0;
    std::uint64_t BytesIn = 0;
    std::uint64_t BytesOut = 0;  ///< size of the cabinet
};

/// Writes the cabinet that `call` asks for, in place of an old one of that name. Files named one by one are
/// stored in that order; those that a wildcard found are stored by extension first, which packs better.
/// Throws ToolError; the old cabinet is then untouched and no new file is left. Everything that can be
/// refused without reading the files' contents is refused before the cabinet is begun.
PackReport Pack(const CommandLine& call);

}  // namespace tools::cabarc
