#include "tools/cabarc/lzx/OptimalParser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "tests/tools/cabarc/lzx/TestData.h"

namespace tests {
namespace {

using tools::cabarc::lzx::BlockType;
using tools::cabarc::lzx::Item;
using tools::cabarc::lzx::kLiterals;
using tools::cabarc::lzx::kOffsetBias;
using tools::cabarc::lzx::Match;
using tools::cabarc::lzx::MatchCache;
using tools::cabarc::lzx::OptimalParser;
using tools::cabarc::lzx::Prices;
using tools::cabarc::lzx::RecentOffsets;
using tools::cabarc::lzx::SymbolCounts;

constexpr std::uint32_t kHistory = 6000;

// A stretch after random history, with the matches that a test gives to its positions.
struct Stretch {
    explicit Stretch(std::uint32_t length) : Buffer(RandomBytes(kHistory + length, 8)), Matches(length) {}

    // Makes `length` bytes from `place` on equal to those `offset` before them.
    void Copy(std::uint32_t place, std::uint32_t length, std::uint32_t offset) {
        for (std::uint32_t i = kHistory + place; i < kHistory + place + length; ++i)
            Buffer[i] = Buffer[i - offset];
    }

    std::vector<Item> Parse(std::uint32_t takeAtOnceLength, const SymbolCounts& counts) const {
        MatchCache table;
        for (const std::vector<Match>& matches : Matches) {
            table.First.push_back(static_cast<std::uint32_t>(table.All.size()));
            table.All.insert(table.All.end(), matches.begin(), matches.end());
        }
        table.First.push_back(static_cast<std::uint32_t>(table.All.size()));
        Prices prices;
        prices.Learn(counts, BlockType::Verbatim);
        RecentOffsets recent;
        std::vector<Item> items;
        OptimalParser(takeAtOnceLength)
            .Parse(&Buffer[kHistory], static_cast<std::uint32_t>(Matches.size()), table, 0, kHistory, prices,
                   recent, items);
        return items;
    }

    Bytes Buffer;
    std::vector<std::vector<Match>> Matches;
};

// Literals are common, matches rare.
SymbolCounts MostlyLiterals() {
    SymbolCounts counts;
    counts.Main.fill(1);
    std::fill_n(counts.Main.begin(), kLiterals, 40U);
    counts.Length.fill(1);
    return counts;
}

using Shape =
    std::vector<std::pair<std::uint32_t, std::uint32_t>>;  // length and formatted offset; 1, 0 = literal

Shape ShapeOf(const std::vector<Item>& items) {
    Shape shape;
    for (const Item item : items) shape.emplace_back(item.Length(), item.IsLiteral() ? 0U : item.Formatted());
    return shape;
}

TEST(OptimalParser, KeepsAnOffsetThatIsUsedAgainAfterOneByte) {
    // The first four bytes are cheaper as a near match and a literal, but the far match's offset serves the
    // bytes behind the fifth as well.
    Stretch stretch(21);
    stretch.Copy(0, 4, 5000);
    stretch.Copy(5, 16, 5000);
    stretch.Buffer[kHistory + 4] = static_cast<std::uint8_t>(stretch.Buffer[kHistory - 4996] + 1);
    for (std::uint32_t i = 0; i < 3; ++i) stretch.Buffer[kHistory - 50 + i] = stretch.Buffer[kHistory + i];
    stretch.Matches[0] = {Match(3, 50), Match(4, 5000)};
    SymbolCounts counts = MostlyLiterals();
    counts.Main[stretch.Buffer[kHistory + 3]] = 2000;
    EXPECT_EQ(ShapeOf(stretch.Parse(257, counts)), (Shape{{4, 5000 + kOffsetBias}, {1, 0}, {16, 0}}));
}

TEST(OptimalParser, JumpsOverAMatchOfTheSureLength) {
    Stretch stretch(30);
    stretch.Copy(1, 29, 400);
    for (std::uint32_t i = 0; i < 10; ++i) stretch.Buffer[kHistory - 300 + i] = stretch.Buffer[kHistory + i];
    stretch.Matches[0] = {Match(10, 300)};
    stretch.Matches[1] = {Match(29, 400)};
    const Shape patient{{1, 0}, {29, 400 + kOffsetBias}};
    EXPECT_EQ(ShapeOf(stretch.Parse(257, MostlyLiterals())), patient);
    EXPECT_EQ(ShapeOf(stretch.Parse(11, MostlyLiterals())), patient);
    EXPECT_EQ(ShapeOf(stretch.Parse(10, MostlyLiterals())).front(), (Shape::value_type{10, 302}));
}

}  // namespace
}  // namespace tests
