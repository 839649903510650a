#pragma once
// The prices by which the optimal parser decides: what each symbol costs, in fractions of a bit, laid out so
// that it can look up a whole row of match lengths at once.
//
// Prices are learnt from counts: a symbol that made up the share p of a parse costs -log2 p bits in the next
// one. That is circular, since prices steer the parse that is counted; SegmentParser.cpp goes round the
// circle a few times.

#include <array>
#include <cstdint>

#include "tools/cabarc/lzx/BlockCodes.h"
#include "tools/cabarc/lzx/LzxFormat.h"

namespace tools::cabarc::lzx {

class Prices {
 public:
    /// One bit. Fine enough for the parser to add up fractions, small enough for 16 bits for each price.
    static constexpr std::uint32_t kBit = 64;
    /// The prices of all lengths of a match, by length - 2.
    using Row = std::array<std::uint16_t, kMaxMatch - kMinMatch + 1>;

    /// Learns the prices that an ideal code for `counts` would have: -log2 of the share, kept between half a
    /// bit and the longest code of its tree. A symbol that does not occur costs as much as one that almost
    /// occurs. With `type` Aligned the low offset bits are priced by their counts, else as plain bits.
    void Learn(const SymbolCounts& counts, BlockType type);

    std::uint32_t Literal(std::uint8_t byte) const { return literals_[byte]; }

    /// Prices of matches in this slot, with their extra bits, but for slots from kFirstAlignedSlot on without
    /// the low offset bits.
    const Row& Matches(int slot) const { return matches_[static_cast<std::size_t>(slot)]; }

    /// Price of the low offset bits of a match, for slots from kFirstAlignedSlot on.
    std::uint32_t LowBits(std::uint32_t formatted) const { return aligned_[formatted % kAlignedSymbols]; }

 private:
    std::array<std::uint16_t, kLiterals> literals_{};
    std::array<Row, kMaxSlots> matches_{};
    std::array<std::uint16_t, kAlignedSymbols> aligned_{};
};

}  // namespace tools::cabarc::lzx
