#include "tools/cabarc/lzx/OptimalParser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include "tests/support/TestData.h"

namespace tools::cabarc::lzx::testing {
namespace {

using tools::testing::Bytes;
using tools::testing::RandomBytes;

constexpr std::uint32_t kHistory = 6000;

// A stretch after a random history, with the matches that a test gives its positions.
struct Stretch {
    explicit Stretch(std::uint32_t length) : Buffer(RandomBytes(kHistory + length, 8)), Matches(length) {}

    // Makes `length` bytes from `place` on equal to those `offset` bytes before them.
    void Copy(std::uint32_t place, std::uint32_t length, std::uint32_t offset) {
        for (std::uint32_t i = kHistory + place; i < kHistory + place + length; ++i)
            Buffer[i] = Buffer[i - offset];
    }

    // Gives each position the nearest offset of every length, up to `farthest`.
    void FindMatches(std::uint32_t farthest) {
        for (std::uint32_t at = 0; at < Matches.size(); ++at) {
            std::uint32_t best = kMinMatch - 1;
            for (std::uint32_t offset = 1; offset <= farthest; ++offset) {
                const std::uint32_t length = CommonLength(at, offset);
                if (length > best) Matches[at].emplace_back(best = length, offset);
            }
        }
    }

    // Returns how many bytes from `at` on are equal to those `offset` bytes before them.
    std::uint32_t CommonLength(std::uint32_t at, std::uint32_t offset) const {
        const std::uint8_t* const here = &Buffer[kHistory + at];
        const std::uint32_t most = std::min(static_cast<std::uint32_t>(Matches.size()) - at, kMaxMatch);
        std::uint32_t length = 0;
        while (length < most && here[length] == (here - offset)[length]) ++length;
        return length;
    }

    std::vector<Item> Parse(std::uint32_t takeAtOnceLength, const Prices& prices,
                            RecentOffsets recent = {}) const {
        MatchCache cache;
        for (const std::vector<Match>& matches : Matches) {
            cache.First.push_back(static_cast<std::uint32_t>(cache.All.size()));
            cache.All.insert(cache.All.end(), matches.begin(), matches.end());
        }
        cache.First.push_back(static_cast<std::uint32_t>(cache.All.size()));
        std::vector<Item> items;
        const RecentOffsets before = recent;
        OptimalParser(takeAtOnceLength)
            .Parse(&Buffer[kHistory], static_cast<std::uint32_t>(Matches.size()), cache, 0, kHistory, prices,
                   recent, items);
        RecentOffsets followed = before;
        for (const Item item : items) followed.Apply(item);
        EXPECT_EQ(recent, followed) << "the recent offsets are carried over the items";
        return items;
    }

    Bytes Buffer;
    std::vector<std::vector<Match>> Matches;
};

Prices PricesOf(const SymbolCounts& counts, BlockType type = BlockType::Verbatim) {
    Prices prices;
    prices.Learn(counts, type);
    return prices;
}

// Literals are common, matches rare.
SymbolCounts MostlyLiterals() {
    SymbolCounts counts;
    counts.Main.fill(1);
    std::fill_n(counts.Main.begin(), kLiterals, 40U);
    counts.Length.fill(1);
    return counts;
}

// Random counts, except that those of the recent offsets are `recentCount`.
SymbolCounts AnyCounts(std::uint32_t seed, std::uint32_t recentCount) {
    SymbolCounts counts;
    const Bytes noise = RandomBytes(counts.Main.size() + counts.Length.size() + counts.Aligned.size(), seed);
    auto next = noise.begin();
    for (std::uint32_t& count : counts.Main) count = 20U + *next++ % 50U;
    for (std::uint32_t& count : counts.Length) count = 20U + *next++ % 50U;
    for (std::uint32_t& count : counts.Aligned) count = 200U + *next++;
    std::fill_n(counts.Main.begin() + kLiterals, kRecentOffsets * kLengthHeaders, recentCount);
    return counts;
}

std::uint64_t MatchPrice(const Prices& prices, std::uint32_t length, std::uint32_t formatted) {
    const int slot = SlotOf(formatted);
    return prices.Matches(slot)[length - kMinMatch] +
           (slot >= kFirstAlignedSlot ? prices.LowBits(formatted) : 0);
}

std::uint64_t PriceOf(const std::vector<Item>& items, const Prices& prices) {
    std::uint64_t price = 0;
    for (const Item item : items)
        price += item.IsLiteral() ? prices.Literal(item.Byte())
                                  : MatchPrice(prices, item.Length(), item.Formatted());
    return price;
}

// The price of the cheapest parse of all: every possible step from each position is tried, with the recent
// offsets that it really has there.
std::uint64_t CheapestParse(const Stretch& stretch, const Prices& prices, std::uint32_t at,
                            const RecentOffsets& recent) {
    if (at == stretch.Matches.size()) return 0;
    std::uint64_t best =
        prices.Literal(stretch.Buffer[kHistory + at]) + CheapestParse(stretch, prices, at + 1, recent);
    const auto tryMatches = [&](std::uint32_t from, std::uint32_t to, std::uint32_t formatted) {
        RecentOffsets after = recent;
        after.Apply(formatted);
        for (std::uint32_t length = from; length <= to; ++length)
            best = std::min(best, MatchPrice(prices, length, formatted) +
                                      CheapestParse(stretch, prices, at + length, after));
    };
    for (std::uint32_t i = 0; i < kRecentOffsets; ++i)
        tryMatches(kMinMatch, stretch.CommonLength(at, recent.Offsets[i]), i);
    std::uint32_t shortest = kMinMatch;
    for (const Match match : stretch.Matches[at]) {
        tryMatches(shortest, match.Length(), match.Offset() + kOffsetBias);
        shortest = match.Length() + 1;
    }
    return best;
}

// A short stretch that consists mostly of repetitions.
Stretch RepetitiveStretch(std::uint32_t length, std::uint32_t seed) {
    Stretch stretch(length);
    const Bytes noise = RandomBytes(stretch.Buffer.size(), seed);
    for (std::size_t i = 0; i < noise.size(); ++i)
        stretch.Buffer[i] = static_cast<std::uint8_t>('a' + noise[i] % 3);
    stretch.FindMatches(60);
    return stretch;
}

using Shape =
    std::vector<std::pair<std::uint32_t, std::uint32_t>>;  // length and formatted offset; 1, 0 = literal

Shape ShapeOf(const std::vector<Item>& items) {
    Shape shape;
    for (const Item item : items) shape.emplace_back(item.Length(), item.IsLiteral() ? 0U : item.Formatted());
    return shape;
}

TEST(OptimalParser, GivesItemsThatStandForTheBytes) {
    for (std::uint32_t seed = 0; seed < 20; ++seed) {
        const Stretch stretch = RepetitiveStretch(500, seed);
        RecentOffsets recent{{3, 9, 1}};
        Bytes decoded(stretch.Buffer.begin(), stretch.Buffer.begin() + kHistory);
        for (const Item item : stretch.Parse(kMaxMatch, PricesOf(AnyCounts(seed, 100)), recent)) {
            if (item.IsLiteral()) {
                decoded.push_back(item.Byte());
                continue;
            }
            const std::uint32_t offset = recent.Apply(item.Formatted());
            for (std::uint32_t i = 0; i < item.Length(); ++i)
                decoded.push_back(decoded[decoded.size() - offset]);
        }
        EXPECT_TRUE(decoded == stretch.Buffer) << seed;
    }
}

TEST(OptimalParser, FindsTheCheapestParseWhereRecentOffsetsAreNoUse) {
    // A recent offset costs as much as the rarest symbol, more than any other match of that length: so the
    // past of a path does not change what is cheapest after it, and the parse is really optimal.
    for (std::uint32_t seed = 0; seed < 60; ++seed) {
        const Stretch stretch = RepetitiveStretch(11, seed);
        for (const BlockType type : {BlockType::Verbatim, BlockType::Aligned}) {
            const Prices prices = PricesOf(AnyCounts(seed, 0), type);
            for (std::uint32_t offset = 2; offset <= 60; ++offset)
                ASSERT_LT(MatchPrice(prices, 2, offset + kOffsetBias), MatchPrice(prices, 2, 0));
            EXPECT_EQ(PriceOf(stretch.Parse(kMaxMatch, prices), prices),
                      CheapestParse(stretch, prices, 0, {}))
                << seed;
        }
    }
}

TEST(OptimalParser, ComesNearTheCheapestParseWhereRecentOffsetsAreCheap) {
    std::uint64_t given = 0;
    std::uint64_t cheapest = 0;
    for (std::uint32_t seed = 0; seed < 60; ++seed) {
        const Stretch stretch = RepetitiveStretch(11, seed);
        const Prices prices = PricesOf(AnyCounts(seed, 400));
        const std::uint64_t price = PriceOf(stretch.Parse(kMaxMatch, prices), prices);
        const std::uint64_t best = CheapestParse(stretch, prices, 0, {});
        EXPECT_GE(price, best) << seed;
        given += price;
        cheapest += best;
    }
    EXPECT_LE(given, cheapest + cheapest / 100);
}

TEST(OptimalParser, TakesARecentOffsetThatTheCacheDoesNotName) {
    Stretch stretch(8);
    stretch.Copy(0, 8, 700);
    for (std::uint32_t i = 0; i < kRecentOffsets; ++i) {
        RecentOffsets recent{{50, 60, 70}};
        recent.Offsets[i] = 700;
        EXPECT_EQ((Shape{{8, i}}), ShapeOf(stretch.Parse(kMaxMatch, PricesOf(MostlyLiterals()), recent)));
    }
}

TEST(OptimalParser, KeepsAnOffsetThatIsUsedAgainAfterOneByte) {
    // The first four bytes are cheaper as a near match and a literal, but the offset of the far match also
    // fits the bytes after the fifth.
    Stretch stretch(21);
    stretch.Copy(0, 4, 5000);
    stretch.Copy(5, 16, 5000);
    stretch.Buffer[kHistory + 4] = static_cast<std::uint8_t>(stretch.Buffer[kHistory - 4996] + 1);
    for (std::uint32_t i = 0; i < 3; ++i) stretch.Buffer[kHistory - 50 + i] = stretch.Buffer[kHistory + i];
    stretch.Matches[0] = {Match(3, 50), Match(4, 5000)};
    SymbolCounts counts = MostlyLiterals();
    counts.Main[stretch.Buffer[kHistory + 3]] = 2000;
    EXPECT_EQ((Shape{{4, 5000 + kOffsetBias}, {1, 0}, {16, 0}}),
              ShapeOf(stretch.Parse(257, PricesOf(counts))));
}

TEST(OptimalParser, JumpsOverAMatchOfTheTakeAtOnceLength) {
    Stretch stretch(30);
    stretch.Copy(1, 29, 400);
    for (std::uint32_t i = 0; i < 10; ++i) stretch.Buffer[kHistory - 300 + i] = stretch.Buffer[kHistory + i];
    stretch.Matches[0] = {Match(10, 300)};
    stretch.Matches[1] = {Match(29, 400)};
    const Prices prices = PricesOf(MostlyLiterals());
    const Shape patient{{1, 0}, {29, 400 + kOffsetBias}};
    EXPECT_EQ(patient, ShapeOf(stretch.Parse(257, prices)));
    EXPECT_EQ(patient, ShapeOf(stretch.Parse(11, prices)));
    EXPECT_EQ((Shape::value_type{10, 302}), ShapeOf(stretch.Parse(10, prices)).front());
}

TEST(OptimalParser, CutsMatchesAtTheEndOfTheStretch) {
    Stretch stretch(5);
    stretch.Copy(0, 5, 90);
    stretch.Matches[0] = {Match(200, 90)};
    EXPECT_EQ((Shape{{5, 90 + kOffsetBias}}), ShapeOf(stretch.Parse(257, PricesOf(MostlyLiterals()))));
}

}  // namespace
}  // namespace tools::cabarc::lzx::testing
