#include "tools/cabarc/lzx/BlockCodes.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numeric>
#include <random>
#include <vector>

namespace tools::cabarc::lzx::testing {
namespace {

// Returns literals and matches of all lengths; formatted offsets are below `farthest` and multiples of
// `step`.
std::vector<Item> SomeItems(std::size_t count, std::uint32_t farthest, std::uint32_t step,
                            std::uint32_t seed) {
    std::mt19937 random(seed);
    const auto below = [&](std::uint32_t limit) { return static_cast<std::uint32_t>(random()) % limit; };
    std::vector<Item> items;
    while (items.size() < count) {
        if (below(3) == 0) {
            items.push_back(Item::Literal(static_cast<std::uint8_t>(below(below(255) + 1))));
        } else {
            items.push_back(Item::Match(2 + below(1 + below(256)), below(farthest) / step * step));
        }
    }
    return items;
}

// The bits of one item, computed from the description of the format: its codes, and the plain bits of its
// offset. The position slot is searched for one by one.
std::uint64_t BitsOf(Item item, const CodeLengths& codes, bool aligned) {
    if (item.IsLiteral()) return codes.Main[item.Byte()];
    std::size_t slot = 0;
    std::uint32_t base = 0;
    const auto extraBits = [&] {
        return slot < 4 ? 0U : static_cast<std::uint32_t>(std::min<std::size_t>(17, slot / 2 - 1));
    };
    for (; item.Formatted() - base >= 1U << extraBits(); ++slot) base += 1U << extraBits();
    std::uint64_t bits = 0;
    if (item.Length() < 9) {
        bits += codes.Main[256 + 8 * slot + item.Length() - 2];
    } else {
        bits += codes.Main[256 + 8 * slot + 7] + codes.Length[item.Length() - 9];
    }
    if (aligned && extraBits() >= 3) return bits + extraBits() - 3 + codes.Aligned[item.Formatted() % 8];
    return bits + extraBits();
}

SymbolCounts CountsOf(const std::vector<Item>& items) {
    SymbolCounts counts;
    counts.Add(items);
    return counts;
}

TEST(BlockCodes, SendALiteralAsItsByte) {
    const ItemSymbols symbols(Item::Literal(200));
    EXPECT_EQ(200, symbols.Main);
    EXPECT_EQ(-1, symbols.Length);
    EXPECT_EQ(-1, symbols.Slot);
    EXPECT_EQ(-1, symbols.Aligned);
}

TEST(BlockCodes, SendAMatchAsSlotAndLengthAndRest) {
    // The offset 20 is the formatted offset 22, in slot 8, which begins at 16.
    const ItemSymbols shortOne(Item::Match(8, 22));
    EXPECT_EQ(256 + 8 * 8 + 6, shortOne.Main);
    EXPECT_EQ(-1, shortOne.Length);
    EXPECT_EQ(8, shortOne.Slot);
    EXPECT_EQ(6, shortOne.Aligned);
    const ItemSymbols longOne(Item::Match(257, 2));
    EXPECT_EQ(256 + 8 * 2 + 7, longOne.Main);
    EXPECT_EQ(248, longOne.Length);
    EXPECT_EQ(2, longOne.Slot);
    EXPECT_EQ(-1, longOne.Aligned);
}

TEST(BlockCodes, CostWhatTheirItemsCostOneByOne) {
    for (std::uint32_t seed = 0; seed < 10; ++seed) {
        const std::vector<Item> items = SomeItems(2'000, 1U << (3 + 2 * seed), 1, seed);
        const SymbolCounts counts = CountsOf(items);
        const CodeLengths codes = BuildCodes(counts);
        std::uint64_t verbatim = 0;
        std::uint64_t aligned = 0;
        for (const Item item : items) {
            verbatim += BitsOf(item, codes, false);
            aligned += BitsOf(item, codes, true);
        }
        EXPECT_EQ(verbatim, BodyBits(counts, codes, BlockType::Verbatim));
        EXPECT_EQ(aligned, BodyBits(counts, codes, BlockType::Aligned));
    }
}

TEST(BlockCodes, ArePlannedForTheCheaperOfTheTwoTypes) {
    std::array<int, 4> chosen{};
    for (std::uint32_t seed = 0; seed < 60; ++seed) {
        const std::vector<Item> items = SomeItems(10 + seed, 4'000, seed % 3 == 0 ? 8 : 1, seed);
        const SymbolCounts counts = CountsOf(items);
        const CodeLengths codes = BuildCodes(counts);
        const std::uint64_t verbatim = BodyBits(counts, codes, BlockType::Verbatim);
        const std::uint64_t aligned = BodyBits(counts, codes, BlockType::Aligned) + 8 * 3;
        const BodyPlan plan = PlanBody(counts);
        EXPECT_EQ(plan.Bits, std::min(verbatim, aligned));
        EXPECT_EQ(plan.Type, aligned < verbatim ? BlockType::Aligned : BlockType::Verbatim);
        EXPECT_EQ(plan.Codes, codes);
        ++chosen[static_cast<std::size_t>(plan.Type)];
    }
    EXPECT_GT(chosen[1], 0);
    EXPECT_GT(chosen[2], 0);
}

TEST(BlockCodes, AreNotMuchLongerThanTheEntropy) {
    const EntropyTerms entropy;
    for (std::uint32_t seed = 0; seed < 10; ++seed) {
        const SymbolCounts counts = CountsOf(SomeItems(5'000, 1'000, 1, seed));
        const CodeLengths codes = BuildCodes(counts);
        const auto coded = static_cast<float>(
            std::inner_product(counts.Main.begin(), counts.Main.end(), codes.Main.begin(), std::uint64_t{0}));
        const float least = entropy.EntropyBits(counts.Main);
        EXPECT_GE(coded, least - 1);
        EXPECT_LE(coded, least * 1.02F);
    }
}

TEST(EntropyTerms, AddUpToTheEntropy) {
    const EntropyTerms entropy;
    EXPECT_EQ(0, entropy.EntropyBits(std::vector<std::uint32_t>{}));
    EXPECT_EQ(0, entropy.EntropyBits(std::vector<std::uint32_t>{9, 0}));
    EXPECT_FLOAT_EQ(entropy.EntropyBits(std::vector<std::uint32_t>{8, 8, 0, 8, 8}), 64);
    EXPECT_NEAR(entropy.EntropyBits(std::vector<std::uint32_t>{1, 3}), 4 * 2 - 3 * std::log2(3), 0.001);
}

TEST(EntropyTerms, AreTheSameInTheTableAndBeyondIt) {
    const EntropyTerms entropy;
    for (const std::uint32_t n : {1U, 2U, 100U, 4'095U, 4'096U, 4'097U, 1'000'000U})
        EXPECT_FLOAT_EQ(entropy(n), static_cast<float>(n * std::log2(static_cast<double>(n)))) << n;
    EXPECT_EQ(0, entropy(0));
}

TEST(UncompressedBlock, CostsItsBytesThreeOffsetsAndPadding) {
    EXPECT_EQ(1'000U * 8 + 3 * 32 + 9, UncompressedBits(1'000));
}

}  // namespace
}  // namespace tools::cabarc::lzx::testing
