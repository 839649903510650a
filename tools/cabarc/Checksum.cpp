#include "tools/cabarc/Checksum.h"

#include "tools/shared/ByteOrder.h"

namespace tools::cabarc {

std::uint32_t BlockChecksum(std::span<const std::uint8_t> payload, std::uint16_t uncompressedSize) {
    std::uint32_t sum =
        static_cast<std::uint32_t>(payload.size()) | (static_cast<std::uint32_t>(uncompressedSize) << 16);
    std::size_t at = 0;
    for (; at + 4 <= payload.size(); at += 4) sum ^= GetU32(payload.data() + at);
    // The one big-endian corner of the format: of a tail of 1 to 3 bytes the first one weighs most.
    std::uint32_t tail = 0;
    for (; at < payload.size(); ++at) tail = (tail << 8) | payload[at];
    return sum ^ tail;
}

}  // namespace tools::cabarc
