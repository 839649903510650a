// Learning takes one logarithm for each symbol that occurs. After that the rows are filled: for each of the
// 50 position slots and each of the 256 lengths the sum of the main symbol, the length symbol and the plain
// offset bits. That is 12,800 additions for a block, in return for which the parser, which looks up prices
// far more often, needs a single load for all but the low offset bits.
//
// Invariant: every price has 16 bits, and none is 0 (Limits.cpp has the largest, kShortestBits the smallest),
// so each step of a parse makes its path dearer. Prices like these do not suit a coder that adapts after each
// symbol: they would have to be learnt again as often.

#include "tools/cabarc/lzx/Prices.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>

namespace tools::cabarc::lzx {

namespace {

// A symbol that did not occur is priced as if it had occurred this often: it may be used after all, but it
// would also need a code length in the block's header.
constexpr double kUnseenCount = 0.4;

// The ideal length is not rounded to whole bits, because it says more about how prices will move than the
// length of a code does, which is a whole number and at least 1. Half a bit is the limit: below it, a symbol
// that fills a block would become free, and the parse that follows would use nothing else.
constexpr double kShortestBits = 0.5;

// The denominator counts one occurrence more than there are, so that an empty table has a price, too.
template <std::size_t Size>
void IdealLengths(const std::array<std::uint32_t, Size>& counts, int longest,
                  std::array<std::uint16_t, Size>& prices) {
    const double total = std::accumulate(counts.begin(), counts.end(), 1.0);
    const double totalBits = std::log2(total);
    const auto price = [&](double count) {
        const double bits =
            std::clamp(totalBits - std::log2(count), kShortestBits, static_cast<double>(longest));
        return static_cast<std::uint16_t>(std::lround(bits * Prices::kBit));
    };
    const std::uint16_t unseen = price(kUnseenCount);
    for (std::size_t i = 0; i < Size; ++i) prices[i] = counts[i] != 0 ? price(counts[i]) : unseen;
}

}  // namespace

void Prices::Learn(const SymbolCounts& counts, BlockType type) {
    std::array<std::uint16_t, kMaxMainSymbols> main;
    std::array<std::uint16_t, kLengthSymbols> length;
    IdealLengths(counts.Main, kMaxCodeLength, main);
    IdealLengths(counts.Length, kMaxCodeLength, length);
    std::copy_n(main.begin(), kLiterals, literals_.begin());
    std::size_t symbol = kLiterals;
    for (int slot = 0; slot < kMaxSlots; ++slot) {
        // The low bits are priced apart, by LowBits.
        const int plainBits = ExtraBits(slot) - (slot >= kFirstAlignedSlot ? kAlignedBits : 0);
        const auto plain = static_cast<std::uint32_t>(plainBits) * kBit;
        Row& row = matches_[static_cast<std::size_t>(slot)];
        for (std::size_t header = 0; header < kLengthHeaders; ++header, ++symbol) {
            const std::uint32_t upToLength = main[symbol] + plain;
            if (header + 1 < kLengthHeaders) {
                row[header] = static_cast<std::uint16_t>(upToLength);
            } else {
                for (std::size_t i = 0; i < kLengthSymbols; ++i)
                    row[header + i] = static_cast<std::uint16_t>(upToLength + length[i]);
            }
        }
    }
    if (type == BlockType::Aligned) {
        IdealLengths(counts.Aligned, kMaxAlignedLength, aligned_);
    } else {
        aligned_.fill(kAlignedBits * kBit);
    }
}

}  // namespace tools::cabarc::lzx
