#pragma once
// The command "n": packs files into a new cabinet.

#include <cstdint>

#include "tools/cabarc/CommandLine.h"

namespace tools::cabarc {

/// What a run has packed.
struct PackReport {
    std::size_t Files = 0;       ///< members of the cabinet
    std::uint64_t BytesIn = 0;   ///< sum of their sizes
    std::uint64_t BytesOut = 0;  ///< size of the cabinet, its directory included
};

/// Writes the cabinet that `call` asks for, in place of an old one of that name. Files named one by one are
/// stored in that order; those that a wildcard found are put into an order that packs better
/// (MemberOrder.h), for which the start of each is read once more, unless they are stored uncompressed: then
/// they are sorted by extension. Throws ToolError; the old cabinet is then untouched and no new file is left.
/// Everything that can be rejected without reading the files' contents is rejected before the cabinet is
/// begun; a file whose size has changed by the time it is read is rejected then.
PackReport Pack(const CommandLine& call);

}  // namespace tools::cabarc
