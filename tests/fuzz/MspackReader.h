#pragma once
// Reads a cabinet with libmspack, entirely in memory: a decoder that others wrote and that the targets
// trust.

#include <string>

#include "tests/fuzz/FuzzTarget.h"

namespace fuzz {

/// A member as libmspack sees it.
struct MspackMember {
    std::string Name;  ///< the stored bytes
    Bytes Contents;
    unsigned Attributes = 0;
    unsigned Date = 0;  ///< packed as DOS packs it
    unsigned Time = 0;
};

/// Returns the members in their order. Throws BrokenRule with libmspack's error number, or with any warning
/// of it.
std::vector<MspackMember> ReadWithMspack(const Bytes& cabinet);

}  // namespace fuzz
