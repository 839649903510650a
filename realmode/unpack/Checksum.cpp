#include "realmode/unpack/Checksum.h"

namespace realmode::unpack {

uint32_t ChecksumOf(FarBytes bytes, uint32_t at, uint32_t count) {
    uint32_t sum = 0;
    for (; count >= 4; count -= 4, at += 4) sum ^= bytes.Get32(at);
    uint32_t tail = 0;
    for (; count > 0; --count) tail = tail << 8 | bytes.Get8(at++);
    return sum ^ tail;
}

}  // namespace realmode::unpack
