#include "tools/cabarc/lzx/Prices.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>

namespace tools::cabarc::lzx {

namespace {

// A symbol that did not occur is priced as if it had occurred this often: it may be used after all, but it
// would also need a place in the tree header.
constexpr double kUnseenCount = 0.4;

// No code is shorter than one bit and none longer than the format allows; between, the ideal length is kept
// unrounded, because it says more about how prices will move than the rounded one does.
constexpr double kShortestBits = 0.5;

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

void Prices::Learn(const SymbolCounts& counts, bool aligned) {
    std::array<std::uint16_t, kMaxMainSymbols> main;
    std::array<std::uint16_t, kLengthSymbols> length;
    IdealLengths(counts.Main, kMaxCodeLength, main);
    IdealLengths(counts.Length, kMaxCodeLength, length);
    std::copy_n(main.begin(), kLiterals, literals_.begin());
    std::size_t symbol = kLiterals;
    for (int slot = 0; slot < kMaxSlots; ++slot) {
        const int rawBits = ExtraBits(slot) - (slot >= kFirstAlignedSlot ? 3 : 0);
        const auto raw = static_cast<std::uint32_t>(rawBits) * kBit;
        Row& row = matches_[static_cast<std::size_t>(slot)];
        for (std::size_t header = 0; header < kLengthHeaders; ++header, ++symbol) {
            const std::uint32_t upToLength = main[symbol] + raw;
            if (header + 1 < kLengthHeaders) {
                row[header] = static_cast<std::uint16_t>(upToLength);
            } else {
                for (std::size_t i = 0; i < kLengthSymbols; ++i)
                    row[header + i] = static_cast<std::uint16_t>(upToLength + length[i]);
            }
        }
    }
    if (aligned) {
        IdealLengths(counts.Aligned, kMaxAlignedLength, aligned_);
    } else {
        aligned_.fill(3 * kBit);
    }
}

}  // namespace tools::cabarc::lzx
