#pragma once
// The checksum of a cabinet's data records.

#include <stdint.h>

#include "realmode/unpack/FarBytes.h"

namespace realmode::unpack {

/// Returns the exclusive-or of the 32-bit words of [at, at + count), and of the last 1 to 3 bytes as a number
/// whose first byte weighs most.
uint32_t ChecksumOf(FarBytes bytes, uint32_t at, uint32_t count);

}  // namespace realmode::unpack
