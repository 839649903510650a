#pragma once
// The prices by which the optimal parser decides: what each symbol costs, in fractions of a bit, laid out so
// that it can look up a whole row of match lengths at once.
//
// Prices are learnt from counts: a symbol that made up the share p of a parse costs -log2 p bits in the next
// one. That is circular, since prices steer the parse that is counted; SegmentParser.cpp goes round the
// circle a few times. Prices are for choosing only: what a block really costs is worked out from its codes
// (BlockCodes.h).

#include <array>
#include <cstdint>

#include "tools/cabarc/lzx/BlockCodes.h"
#include "tools/cabarc/lzx/LzxFormat.h"

namespace tools::cabarc::lzx {

/// All prices are in units of 1/kBit bit. Before the first Learn every price is 0.
class Prices {
 public:
    /// The price of one bit. Fine enough for the parser to add up fractions, small enough for every price to
    /// have 16 bits.
    static constexpr std::uint32_t kBit = 64;
    /// The prices of all lengths of a match, by length - 2.
    using Row = std::array<std::uint16_t, kMaxMatch - kMinMatch + 1>;

    /// Learns the prices that an ideal code for `counts` would have: -log2 of the share, kept between half a
    /// bit and the longest code of its tree. A symbol that does not occur costs as much as one that occurs
    /// less than once. With `type` Aligned the low offset bits are priced by their counts, else as plain
    /// bits.
    void Learn(const SymbolCounts& counts, BlockType type);

    /// Price of a literal.
    std::uint32_t Literal(std::uint8_t byte) const { return literals_[byte]; }

    /// Prices of the matches in this position slot (below kMaxSlots), extra bits included; for slots from
    /// kFirstAlignedSlot on LowBits has to be added.
    const Row& Matches(int slot) const { return matches_[static_cast<std::size_t>(slot)]; }

    /// Price of the low bits of a formatted offset, for slots from kFirstAlignedSlot on.
    std::uint32_t LowBits(std::uint32_t formatted) const { return aligned_[formatted % kAlignedSymbols]; }

 private:
    std::array<std::uint16_t, kLiterals> literals_{};
    std::array<Row, kMaxSlots> matches_{};
    std::array<std::uint16_t, kAlignedSymbols> aligned_{};
};

}  // namespace tools::cabarc::lzx
