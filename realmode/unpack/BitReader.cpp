#include "realmode/unpack/BitReader.h"

namespace realmode::unpack {

namespace {

// The 16 bits of a number in the opposite order.
uint32_t Turned16(uint32_t value) {
    value = (value & 0x5555) << 1 | (value >> 1 & 0x5555);
    value = (value & 0x3333) << 2 | (value >> 2 & 0x3333);
    value = (value & 0x0F0F) << 4 | (value >> 4 & 0x0F0F);
    return (value << 8 | value >> 8) & 0xFFFF;
}

}  // namespace

void BitReader::Fill() {
    uint32_t word = 0;
    if (next_ + 1 < end_)
        word = input_.Get16(next_);
    else if (next_ < end_)
        word = input_.Get8(next_);
    if (order_ == Order::TurnedBytes) word = Turned16(word);
    next_ += 2;
    bits_ |= word << (16 - left_);
    left_ += 16;
}

uint32_t BitReader::ReadTurned(uint32_t count) {
    const uint32_t value = Turned16(Peek16()) & ((1U << count) - 1);
    Skip(count);
    return value;
}

}  // namespace realmode::unpack
