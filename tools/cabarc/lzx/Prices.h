#pragma once
// What the parser believes each item costs, in fractions of a bit, laid out so that it can look up a whole
// row of match lengths at once.

#include <array>
#include <cstdint>

#include "tools/cabarc/lzx/BlockCodes.h"
#include "tools/cabarc/lzx/LzxFormat.h"

namespace tools::cabarc::lzx {

class Prices {
 public:
    /// One bit. Fine enough for the parser to add up fractions, small enough for 16 bits per price.
    static constexpr std::uint32_t kBit = 64;
    using Row = std::array<std::uint16_t, kMaxMatch - kMinMatch + 1>;

    /// Learns the prices that an ideal code for `counts` would have. With `aligned` the low offset bits are
    /// priced by their counts, otherwise as three plain bits.
    void Learn(const SymbolCounts& counts, bool aligned);

    std::uint32_t Literal(std::uint8_t byte) const { return literals_[byte]; }

    /// Prices of matches in this slot by length - 2, without the low offset bits of slots from
    /// kFirstAlignedSlot.
    const Row& Matches(int slot) const { return matches_[static_cast<std::size_t>(slot)]; }

    /// Price of the low offset bits of a match, for slots from kFirstAlignedSlot.
    std::uint32_t LowBits(std::uint32_t formatted) const { return aligned_[formatted % kAlignedSymbols]; }

 private:
    std::array<std::uint16_t, kLiterals> literals_{};
    std::array<Row, kMaxSlots> matches_{};
    std::array<std::uint16_t, kAlignedSymbols> aligned_{};
};

}  // namespace tools::cabarc::lzx
