#include "tools/cabarc/lzx/BlockSplitter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <utility>
#include <vector>

#include "tests/support/TestData.h"
#include "tools/cabarc/lzx/BlockCodes.h"
#include "tools/cabarc/lzx/BlockPlanner.h"

namespace tools::cabarc::lzx::testing {
namespace {

using tools::testing::Bytes;
using tools::testing::RandomBytes;

// Literals in cells, each cell with an alphabet of its own: `letters` letters from `first` on.
struct Alphabet {
    std::uint32_t First;
    std::uint32_t Letters;
};
std::vector<Item> CellsOf(const std::vector<Alphabet>& cells, std::uint32_t seed) {
    const Bytes noise = RandomBytes(cells.size() * kCellBytes, seed);
    std::vector<Item> items;
    for (std::size_t i = 0; i < noise.size(); ++i) {
        const Alphabet& cell = cells[i / kCellBytes];
        items.push_back(Item::Literal(static_cast<std::uint8_t>(cell.First + noise[i] % cell.Letters)));
    }
    return items;
}

BlockSpan SpanOfCells(std::size_t from, std::size_t to) {
    return {from * kCellBytes, to * kCellBytes, static_cast<std::uint32_t>(from * kCellBytes),
            static_cast<std::uint32_t>(to * kCellBytes)};
}

// The exact size of a block by itself, in bits: with its real codes and its real header, or uncompressed.
std::uint64_t RealBits(const std::vector<Item>& items, const BlockSpan& block) {
    SymbolCounts counts;
    counts.Add(block.ItemsIn(items));
    const auto body = PlanBody(counts);
    const EncodedTrees trees(CodeLengths{}, body.Codes, kMaxMainSymbols);
    return 27 + std::min(body.Bits + trees.Bits(), UncompressedBits(block.Bytes()));
}

// The size in bits of the best of all divisions of eight cells into blocks, found by trying all of them.
std::uint64_t BestOfAllDivisions(const std::vector<Item>& items) {
    constexpr std::size_t kCells = 8;
    std::map<std::pair<std::size_t, std::size_t>, std::uint64_t> bitsOf;
    for (std::size_t from = 0; from < kCells; ++from)
        for (std::size_t to = from + 1; to <= kCells; ++to)
            bitsOf[{from, to}] = RealBits(items, SpanOfCells(from, to));
    std::uint64_t best = std::numeric_limits<std::uint64_t>::max();
    for (std::uint32_t cuts = 0; cuts < 1U << (kCells - 1); ++cuts) {
        std::uint64_t bits = 0;
        std::size_t from = 0;
        for (std::size_t to = 1; to <= kCells; ++to) {
            if (to < kCells && (cuts >> (to - 1) & 1U) == 0) continue;
            bits += bitsOf[{from, to}];
            from = to;
        }
        best = std::min(best, bits);
    }
    return best;
}

// Divides eight cells and compares the result with the best of all divisions.
void ExpectNearTheBestDivision(const std::vector<Item>& items, double factor) {
    std::uint64_t bits = 0;
    for (const BlockSpan& block : SplitIntoBlocks(items)) bits += RealBits(items, block);
    const std::uint64_t best = BestOfAllDivisions(items);
    EXPECT_GE(bits, best);
    EXPECT_LE(static_cast<double>(bits), factor * static_cast<double>(best));
}

TEST(BlockSplitter, ComesNearTheBestOfAllDivisionsOfEightCells) {
    for (std::uint32_t seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(seed);
        const Bytes noise = RandomBytes(16, seed);
        std::vector<Alphabet> distinct;
        std::vector<Alphabet> alike;
        for (std::size_t i = 0; i < 8; ++i) {
            const bool isAsBefore = i > 0 && noise[i] % 3 == 0;
            const std::uint32_t first = noise[i] % 4U * 50;
            distinct.push_back(isAsBefore ? distinct.back()
                                          : Alphabet{first, std::min(4U << (noise[i] % 5), 256 - first)});
            // Alphabets that overlap, so that a cut saves about as much as its header costs.
            alike.push_back(isAsBefore ? alike.back() : Alphabet{noise[i] % 40U, 40U + noise[i + 8] % 40U});
        }
        ExpectNearTheBestDivision(CellsOf(distinct, seed), 1.02);
        ExpectNearTheBestDivision(CellsOf(alike, seed), 1.02);
    }
}

TEST(BlockSplitter, CutsWhereTheAlphabetChanges) {
    const std::vector<Item> items =
        CellsOf({{0, 16}, {0, 16}, {0, 16}, {100, 16}, {100, 16}, {200, 16}, {200, 16}, {200, 16}}, 1);
    EXPECT_EQ((std::vector{SpanOfCells(0, 3), SpanOfCells(3, 5), SpanOfCells(5, 8)}), SplitIntoBlocks(items));
}

TEST(BlockSplitter, CutsNothingWhereNothingChanges) {
    const std::vector<Item> items = CellsOf(std::vector<Alphabet>(8, {30, 40}), 2);
    EXPECT_EQ(SplitIntoBlocks(items), std::vector{SpanOfCells(0, 8)});
}

TEST(BlockSplitter, PartsNoiseFromWhatCanBePacked) {
    // Noise is cheapest uncompressed, so it must not share a block with text.
    const std::vector<Item> items =
        CellsOf({{0, 16}, {0, 16}, {0, 256}, {0, 256}, {0, 256}, {0, 256}, {0, 16}, {0, 16}}, 3);
    EXPECT_EQ((std::vector{SpanOfCells(0, 2), SpanOfCells(2, 6), SpanOfCells(6, 8)}), SplitIntoBlocks(items));
}

TEST(BlockSplitter, MakesNoBlockLongerThanTheLongest) {
    const std::vector<Item> items = CellsOf(std::vector<Alphabet>(2 * kMaxCells + 3, {0, 8}), 4);
    const std::vector<BlockSpan> blocks = SplitIntoBlocks(items);
    EXPECT_EQ(3U, blocks.size());
    for (const BlockSpan& block : blocks) EXPECT_LE(block.Bytes(), kMaxCells * kCellBytes);
}

TEST(BlockSplitter, LeavesNoGapsAndNoBlockEmpty) {
    for (std::uint32_t seed = 0; seed < 20; ++seed) {
        // Matches of all lengths, so that cells end at any place.
        const Bytes noise = RandomBytes(6'000, seed);
        std::vector<Item> items;
        for (std::size_t i = 0; i + 3 < noise.size(); i += 3) {
            if (noise[i] < 100) {
                items.push_back(Item::Literal(noise[i + 1]));
            } else {
                items.push_back(Item::Match(2 + noise[i + 1] % (kMaxMatch - 1),
                                            noise[i + 2] * static_cast<std::uint32_t>(i / 1'000 + 1)));
            }
        }
        BlockSpan last;
        for (const BlockSpan& block : SplitIntoBlocks(items)) {
            EXPECT_EQ(block.FirstItem, last.EndItem);
            EXPECT_EQ(block.Begin, last.End);
            EXPECT_GT(block.EndItem, block.FirstItem);
            std::uint32_t bytes = 0;
            for (const Item item : block.ItemsIn(items)) bytes += item.Length();
            EXPECT_EQ(bytes, block.Bytes());
            last = block;
        }
        EXPECT_EQ(last.EndItem, items.size());
    }
}

TEST(BlockSplitter, GivesNoBlockForNoItems) {
    EXPECT_TRUE(SplitIntoBlocks({}).empty());
}

}  // namespace
}  // namespace tools::cabarc::lzx::testing
