#include "tools/cabarc/lzx/Prices.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

#include "tests/support/TestData.h"

namespace tools::cabarc::lzx::testing {
namespace {

using tools::testing::Bytes;
using tools::testing::RandomBytes;

constexpr double kBit = Prices::kBit;

SymbolCounts NoisyCounts(std::uint32_t seed) {
    SymbolCounts counts;
    const Bytes noise = RandomBytes(counts.Main.size() + counts.Length.size() + counts.Aligned.size(), seed);
    auto next = noise.begin();
    for (std::uint32_t& count : counts.Main) count = 20U + *next++ * 4U;
    for (std::uint32_t& count : counts.Length) count = 20U + *next++ * 4U;
    for (std::uint32_t& count : counts.Aligned) count = 20U + *next++ * 4U;
    return counts;
}

Prices Learnt(const SymbolCounts& counts, BlockType type) {
    Prices prices;
    prices.Learn(counts, type);
    return prices;
}

// -log2 of a symbol's share, as a price.
template <typename Counts>
double IdealPrice(const Counts& counts, std::size_t symbol) {
    const double total = std::accumulate(counts.begin(), counts.end(), 0.0);
    return -std::log2(counts[symbol] / total) * kBit;
}

// Plain offset bits of the first twelve position slots, from the table of the format.
constexpr int kExtraBits[] = {0, 0, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4};

TEST(Prices, AreTheLogarithmOfTheShare) {
    const SymbolCounts counts = NoisyCounts(1);
    const Prices prices = Learnt(counts, BlockType::Verbatim);
    for (std::size_t literal = 0; literal < 256; ++literal)
        EXPECT_NEAR(prices.Literal(static_cast<std::uint8_t>(literal)), IdealPrice(counts.Main, literal), 1);
}

TEST(Prices, OfAMatchAreThoseOfItsSymbolsAndItsPlainBits) {
    const SymbolCounts counts = NoisyCounts(2);
    const Prices prices = Learnt(counts, BlockType::Verbatim);
    for (int slot = 0; slot < 12; ++slot) {
        // The low three bits of slots from 8 on are priced separately.
        const double plainBits = kExtraBits[slot] - (slot >= 8 ? 3 : 0);
        for (std::size_t length = 2; length <= 257; ++length) {
            const std::size_t header = std::min<std::size_t>(length - 2, 7);
            double ideal = IdealPrice(counts.Main, 256 + 8 * static_cast<std::size_t>(slot) + header);
            if (length >= 9) ideal += IdealPrice(counts.Length, length - 9);
            EXPECT_NEAR(prices.Matches(slot)[length - 2], ideal + plainBits * kBit, 2)
                << slot << " " << length;
        }
    }
}

TEST(Prices, OfLowOffsetBitsAreTheirShareInAnAlignedBlockAndThreeBitsInAVerbatimOne) {
    const SymbolCounts counts = NoisyCounts(3);
    const Prices aligned = Learnt(counts, BlockType::Aligned);
    const Prices verbatim = Learnt(counts, BlockType::Verbatim);
    for (std::uint32_t low = 0; low < 8; ++low) {
        EXPECT_NEAR(aligned.LowBits(8 * 5 + low), IdealPrice(counts.Aligned, low), 1);
        EXPECT_EQ(verbatim.LowBits(8 * 5 + low), 3 * Prices::kBit);
    }
}

TEST(Prices, AreNearTheLengthsOfTheCodes) {
    const SymbolCounts counts = NoisyCounts(4);
    const Prices prices = Learnt(counts, BlockType::Verbatim);
    const CodeLengths codes = BuildCodes(counts);
    for (std::size_t literal = 0; literal < 256; ++literal)
        EXPECT_NEAR(prices.Literal(static_cast<std::uint8_t>(literal)) / kBit, codes.Main[literal], 1.01);
}

TEST(Prices, OfARareSymbolAreNotAboveTheLongestCode) {
    SymbolCounts counts;
    counts.Main['a'] = 2'000'000;
    counts.Main['b'] = 1;
    counts.Aligned[0] = 2'000'000;
    const Prices prices = Learnt(counts, BlockType::Aligned);
    EXPECT_EQ(prices.Literal('b'), 16 * Prices::kBit);
    EXPECT_EQ(prices.Literal('c'), 16 * Prices::kBit);
    EXPECT_EQ(prices.LowBits(1), 7 * Prices::kBit);
}

TEST(Prices, OfTheOnlySymbolAreHalfABit) {
    SymbolCounts counts;
    counts.Main['a'] = 1'000;
    EXPECT_EQ(Learnt(counts, BlockType::Verbatim).Literal('a'), Prices::kBit / 2);
}

TEST(Prices, OfAnUnseenSymbolAreAboveThoseOfOneThatOccursOnce) {
    SymbolCounts counts;
    counts.Main['a'] = 30;
    counts.Main['b'] = 1;
    const Prices prices = Learnt(counts, BlockType::Verbatim);
    EXPECT_GT(prices.Literal('c'), prices.Literal('b') + Prices::kBit);
    EXPECT_LT(prices.Literal('c'), prices.Literal('b') + 2 * Prices::kBit);
}

}  // namespace
}  // namespace tools::cabarc::lzx::testing
