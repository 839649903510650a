#include "tools/cabarc/lzx/BlockPlanner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

#include "tests/support/TestData.h"

namespace tools::cabarc::lzx::testing {
namespace {

using tools::testing::Bytes;
using tools::testing::RandomBytes;

constexpr int kPlannerWindow = 17;
constexpr std::size_t kMains = 528;  // main symbols of such a window

// The items of a segment, added block by block.
struct Blocks {
    std::vector<Item> Items;
    std::vector<BlockSpan> Spans;

    void Add(const std::vector<Item>& items) {
        BlockSpan span;
        if (!Spans.empty()) span = {Spans.back().EndItem, 0, Spans.back().End, 0};
        Items.insert(Items.end(), items.begin(), items.end());
        span.EndItem = Items.size();
        span.End = span.Begin;
        for (const Item item : items) span.End += item.Length();
        Spans.push_back(span);
    }

    std::vector<BlockPlan> Plan() const { return BlockPlanner(kPlannerWindow).Plan(Items, Spans); }
};

std::vector<Item> Literals(std::size_t count, std::uint32_t letters, std::uint32_t seed) {
    std::vector<Item> items;
    for (const std::uint8_t byte : RandomBytes(count, seed))
        items.push_back(Item::Literal(static_cast<std::uint8_t>(byte % letters)));
    return items;
}

// Returns matches whose formatted offsets are multiples of `step`.
std::vector<Item> Matches(std::size_t count, std::uint32_t step, std::uint32_t seed) {
    const Bytes noise = RandomBytes(2 * count, seed);
    std::vector<Item> items;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t place = 100U + noise[2 * i] * 40U;
        items.push_back(Item::Match(2 + noise[2 * i + 1] % 20, place / step * step));
    }
    return items;
}

SymbolCounts CountsOf(const Blocks& blocks, const BlockSpan& span) {
    SymbolCounts counts;
    counts.Add(span.ItemsIn(blocks.Items));
    return counts;
}

// Requires that plans follow each other without a gap and that each coded one has the codes of its items,
// encoded for a decoder that has read the blocks before it.
void ExpectComplete(const Blocks& blocks, const std::vector<BlockPlan>& plans) {
    CodeLengths before;
    BlockSpan last;
    for (const BlockPlan& plan : plans) {
        EXPECT_EQ(plan.Span.FirstItem, last.EndItem);
        EXPECT_EQ(plan.Span.Begin, last.End);
        EXPECT_GT(plan.Span.Bytes(), 0U);
        std::uint32_t bytes = 0;
        for (const Item item : plan.Span.ItemsIn(blocks.Items)) bytes += item.Length();
        EXPECT_EQ(bytes, plan.Span.Bytes());
        last = plan.Span;
        EXPECT_EQ(plan.Trees.has_value(), plan.IsCoded());
        if (!plan.Trees) continue;
        EXPECT_EQ(BuildCodes(CountsOf(blocks, plan.Span)), plan.Codes);
        tools::cabarc::lzx::BitWriter written;
        plan.Trees->Write(written);
        tools::cabarc::lzx::BitWriter expected;
        EncodedTrees(before, plan.Codes, kMains).Write(expected);
        EXPECT_EQ(written.Bytes(), expected.Bytes());
        before = plan.Codes;
    }
    EXPECT_EQ(last.EndItem, blocks.Items.size());
}

TEST(BlockPlanner, ChoosesTheCheapestOfTheThreeTypes) {
    ASSERT_EQ(kMains, static_cast<std::size_t>(MainSymbols(kPlannerWindow)));
    std::array<int, 4> chosen{};
    for (std::uint32_t seed = 0; seed < 200; ++seed) {
        Blocks blocks;
        // Sizes and contents for which the types cost about the same.
        std::vector<Item> items = Matches(seed % 40, seed % 3 == 0 ? 8 : 1, seed);
        const std::vector<Item> literals = Literals(2 * (seed % 61), 1 + seed, seed);
        items.insert(items.end(), literals.begin(), literals.end());
        if (items.empty()) continue;
        blocks.Add(items);
        const SymbolCounts counts = CountsOf(blocks, blocks.Spans[0]);
        const CodeLengths codes = BuildCodes(counts);
        const std::uint64_t trees = EncodedTrees({}, codes, kMains).Bits();
        const std::uint64_t verbatim = trees + BodyBits(counts, codes, BlockType::Verbatim);
        const std::uint64_t aligned = trees + 24 + BodyBits(counts, codes, BlockType::Aligned);
        const std::uint64_t uncompressed = UncompressedBits(blocks.Spans[0].Bytes());
        const std::vector<BlockPlan> plans = blocks.Plan();
        ASSERT_EQ(1U, plans.size());
        const std::array<std::uint64_t, 4> bits{0, verbatim, aligned, uncompressed};
        EXPECT_EQ(bits[static_cast<std::size_t>(plans[0].Type)], std::min({verbatim, aligned, uncompressed}));
        ++chosen[static_cast<std::size_t>(plans[0].Type)];
        ExpectComplete(blocks, plans);
    }
    for (const std::size_t type : {1U, 2U, 3U}) EXPECT_GT(chosen[type], 10) << type;
}

TEST(BlockPlanner, EncodesCodeLengthsAgainstTheLastCodedBlock) {
    Blocks blocks;
    blocks.Add(Literals(3'000, 20, 1));
    blocks.Add(Literals(3'000, 256, 2));
    blocks.Add(Literals(3'000, 21, 3));
    const std::vector<BlockPlan> plans = blocks.Plan();
    ASSERT_EQ(3U, plans.size());
    EXPECT_EQ(BlockType::Uncompressed, plans[1].Type);
    ExpectComplete(blocks, plans);
}

TEST(BlockPlanner, EncodesCodeLengthsAgainstTheSegmentBefore) {
    Blocks blocks;
    blocks.Add(Literals(3'000, 20, 1));
    BlockPlanner planner(kPlannerWindow);
    const std::vector<BlockPlan> first = planner.Plan(blocks.Items, blocks.Spans);
    planner.Commit(first);
    const std::vector<BlockPlan> again = planner.Plan(blocks.Items, blocks.Spans);
    EXPECT_EQ(EncodedTrees(first[0].Codes, first[0].Codes, kMains).Bits(), again[0].Trees->Bits());
    EXPECT_LT(again[0].Trees->Bits(), first[0].Trees->Bits());
}

TEST(BlockPlanner, JoinsNeighboursThatAreUncompressed) {
    Blocks blocks;
    blocks.Add(Literals(4'000, 20, 1));
    for (std::uint32_t seed = 2; seed < 5; ++seed) blocks.Add(Literals(2'000, 256, seed));
    blocks.Add(Literals(4'000, 20, 6));
    const std::vector<BlockPlan> plans = blocks.Plan();
    ASSERT_EQ(3U, plans.size());
    EXPECT_EQ(BlockType::Uncompressed, plans[1].Type);
    EXPECT_EQ((BlockSpan{4'000, 10'000, 4'000, 10'000}), plans[1].Span);
    ExpectComplete(blocks, plans);
}

TEST(BlockPlanner, MovesUncompressedBlocksToEvenPlaces) {
    for (const std::size_t before : {3'000, 3'001}) {
        for (const std::size_t noise : {2'000, 2'001}) {
            for (const std::size_t after : {0, 3'000, 3'001}) {
                Blocks blocks;
                blocks.Add(Literals(before, 20, 1));
                blocks.Add(Literals(noise, 256, 2));
                if (after != 0) blocks.Add(Literals(after, 20, 3));
                const std::vector<BlockPlan> plans = blocks.Plan();
                ASSERT_GE(plans.size(), 2U);
                EXPECT_EQ(BlockType::Uncompressed, plans[1].Type);
                EXPECT_EQ(0U, plans[1].Span.Begin % 2);
                if (after != 0) {
                    EXPECT_EQ(0U, plans[1].Span.End % 2);
                }
                EXPECT_NEAR(plans[1].Span.Bytes(), static_cast<double>(noise), 2);
                ExpectComplete(blocks, plans);
            }
        }
    }
}

TEST(BlockPlanner, MovesBordersOverMatchesAsAWhole) {
    // The noise begins at an odd place, and its first item is a match of two bytes, after which the place is
    // still odd; so the literal after it moves to the other block, too.
    Blocks blocks;
    blocks.Add(Literals(3'001, 20, 1));
    std::vector<Item> noise{Item::Match(2, 900)};
    const std::vector<Item> literals = Literals(2'000, 256, 2);
    noise.insert(noise.end(), literals.begin(), literals.end());
    blocks.Add(noise);
    const std::vector<BlockPlan> plans = blocks.Plan();
    ASSERT_EQ(2U, plans.size());
    EXPECT_EQ((BlockSpan{3'003, 5'002, 3'004, 5'003}), plans[1].Span);
    ExpectComplete(blocks, plans);
}

TEST(BlockPlanner, DropsAnUncompressedBlockThatHasNoEvenPlace) {
    Blocks blocks;
    blocks.Add(Literals(3'001, 20, 1));
    blocks.Add(Literals(1, 20, 2));
    blocks.Add(Literals(3'000, 20, 3));
    std::vector<BlockPlan> plans = blocks.Plan();
    EXPECT_EQ(2U, plans.size());
    ExpectComplete(blocks, plans);
}

TEST(BlockPlanner, CutsAFrameOutOfTheBlocksThatItLiesIn) {
    // Four frames of items in three blocks; the second frame holds the end of the first block, all of the
    // second and the start of the third.
    Blocks blocks;
    blocks.Add(Literals(40'000, 20, 1));
    blocks.Add(Literals(10'000, 90, 2));
    blocks.Add(Literals(81'072, 20, 3));
    const BlockPlanner planner(kPlannerWindow);
    const std::vector<BlockPlan> plans = planner.Plan(blocks.Items, blocks.Spans);
    ASSERT_EQ(3U, plans.size());
    const std::vector<BlockPlan> cut = planner.StoreFrame(blocks.Items, plans, 32'768, 65'536);
    ASSERT_EQ(3U, cut.size());
    EXPECT_EQ((BlockSpan{0, 32'768, 0, 32'768}), cut[0].Span);
    EXPECT_EQ((BlockSpan{32'768, 65'536, 32'768, 65'536}), cut[1].Span);
    EXPECT_EQ((BlockSpan{65'536, 131'072, 65'536, 131'072}), cut[2].Span);
    EXPECT_TRUE(cut[0].IsCoded());
    EXPECT_EQ(BlockType::Uncompressed, cut[1].Type);
    EXPECT_TRUE(cut[2].IsCoded());
    ExpectComplete(blocks, cut);
}

TEST(BlockPlanner, PlansTheBlockAfterACutFrameForTheDecoderThatItMeets) {
    // The frame is exactly the second block: the third one's code lengths were differences from it.
    Blocks blocks;
    blocks.Add(Literals(32'768, 20, 1));
    blocks.Add(Literals(32'768, 90, 2));
    blocks.Add(Literals(32'768, 20, 3));
    const BlockPlanner planner(kPlannerWindow);
    const std::vector<BlockPlan> cut =
        planner.StoreFrame(blocks.Items, planner.Plan(blocks.Items, blocks.Spans), 32'768, 65'536);
    ASSERT_EQ(3U, cut.size());
    EXPECT_EQ(BlockType::Uncompressed, cut[1].Type);
    ExpectComplete(blocks, cut);
}

TEST(BlockPlanner, CutsAFrameOutOfOneBlock) {
    Blocks blocks;
    blocks.Add(Literals(100'000, 20, 1));
    const BlockPlanner planner(kPlannerWindow);
    const std::vector<BlockPlan> plans = planner.Plan(blocks.Items, blocks.Spans);
    const std::vector<BlockPlan> middle = planner.StoreFrame(blocks.Items, plans, 32'768, 65'536);
    ASSERT_EQ(3U, middle.size());
    EXPECT_EQ(BlockType::Uncompressed, middle[1].Type);
    ExpectComplete(blocks, middle);
    const std::vector<BlockPlan> end = planner.StoreFrame(blocks.Items, plans, 98'304, 100'000);
    ASSERT_EQ(2U, end.size());
    EXPECT_EQ((BlockSpan{98'304, 100'000, 98'304, 100'000}), end[1].Span);
    ExpectComplete(blocks, end);
}

}  // namespace
}  // namespace tools::cabarc::lzx::testing
