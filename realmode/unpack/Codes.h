#pragma once
// The memory for the codes of either method: a folder has one method, so they share it.

#include "realmode/unpack/HuffmanCode.h"

namespace realmode::unpack {

struct Codes {
    HuffmanCode Main;     ///< literals and matches
    HuffmanCode Second;   ///< LZX: lengths; deflate: distances
    HuffmanCode Aligned;  ///< LZX only
    HuffmanCode Lengths;  ///< of the codes of the others
};

}  // namespace realmode::unpack
