#include "tools/cabarc/lzx/MatchFinder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/TestData.h"
#include "tools/cabarc/lzx/StringMatch.h"

namespace tools::cabarc::lzx::testing {
namespace {

using tools::testing::Bytes;
using tools::testing::DataKind;
using tools::testing::DataKinds;
using tools::testing::Mixed;
using tools::testing::RandomBytes;
using tools::testing::Runs;
using tools::testing::TextLike;

constexpr int kFinderWindow = 15;
constexpr std::uint32_t kMaxOffset = 32764;
// Practically no limit.
constexpr int kEndless = 100'000;

using Found = std::vector<std::pair<std::uint32_t, std::uint32_t>>;  // length and offset

std::uint32_t CommonPrefix(const Bytes& bytes, std::size_t a, std::size_t b, std::uint32_t limit) {
    std::uint32_t n = 0;
    while (n < limit && b + n < bytes.size() && bytes[a + n] == bytes[b + n]) ++n;
    return n;
}

// Runs a match finder over bytes from their start on.
class Search {
 public:
    Search(const Bytes& bytes, SearchLimits limits) : bytes_(bytes), finder_(kFinderWindow, limits) {}

    // Returns the matches at the next position, without those that a longer one at the same offset includes.
    Found Next(std::uint32_t longest) {
        std::vector<Match> matches;
        const std::uint32_t given = finder_.Find(at_, &bytes_[at_], Available(), longest, matches);
        EXPECT_EQ(given, matches.empty() ? 0U : matches.back().Length()) << at_;
        Found found;
        for (const Match match : matches) {
            if (!found.empty() && found.back().second == match.Offset()) found.pop_back();
            found.emplace_back(match.Length(), match.Offset());
        }
        ++at_;
        return found;
    }
    void Skip() {
        finder_.Skip(at_, &bytes_[at_], Available());
        ++at_;
    }
    void SkipTo(std::uint32_t place) {
        while (at_ < place) Skip();
    }
    std::uint32_t At() const { return at_; }
    bool AtEnd() const { return at_ == bytes_.size(); }

 private:
    std::uint32_t Available() const { return static_cast<std::uint32_t>(bytes_.size()) - at_; }

    const Bytes& bytes_;
    MatchFinder finder_;
    std::uint32_t at_ = 0;
};

// Returns the nearest offset of each length, found by trying every place; lengths with the same offset as a
// longer one are left out. Like the finder, it stops at the first match of `nice` bytes.
Found NearestOfEachLength(const Bytes& bytes, std::uint32_t at, std::uint32_t longest, std::uint32_t nice) {
    Found found;
    std::uint32_t best = 1;
    for (std::uint32_t offset = 1; offset <= std::min(at, kMaxOffset) && best < nice; ++offset) {
        const std::uint32_t length = CommonPrefix(bytes, at - offset, at, longest);
        if (length > best) found.emplace_back(best = length, offset);
    }
    return found;
}

// Bytes of few values: repetitions of all lengths, all close together.
Bytes FewLetters(std::size_t size, std::uint32_t letters, std::uint32_t seed) {
    Bytes bytes = RandomBytes(size, seed);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>('a' + byte % letters);
    return bytes;
}

// Whether two different triples of the bytes share a hash, so that one hides the other.
bool TriplesCollide(const Bytes& bytes) {
    std::set<std::uint32_t> triples;
    std::set<std::uint32_t> hashes;
    for (std::size_t i = 0; i + 3 <= bytes.size(); ++i) {
        const std::uint32_t triple =
            bytes[i] | (std::uint32_t{bytes[i + 1]} << 8) | (std::uint32_t{bytes[i + 2]} << 16);
        triples.insert(triple);
        hashes.insert(Hash(triple << 8, kTripleHashBits));
    }
    return hashes.size() != triples.size();
}

TEST(MatchFinder, ReportsTheNearestOffsetOfEachLength) {
    for (const std::uint32_t letters : {1U, 2U, 3U, 5U}) {
        for (const std::uint32_t nice : {20U, 257U}) {
            const Bytes bytes = FewLetters(3'000, letters, letters);
            ASSERT_FALSE(TriplesCollide(bytes));
            Search search(bytes, {kEndless, nice});
            while (!search.AtEnd()) {
                const std::uint32_t at = search.At();
                const Found expected = NearestOfEachLength(bytes, at, 257, nice);
                ASSERT_EQ(expected, search.Next(257)) << letters << " letters at " << at;
            }
        }
    }
}

TEST(MatchFinder, FindsTheSameInEveryKindOfData) {
    for (const DataKind& kind : DataKinds()) {
        SCOPED_TRACE(kind.Name);
        const Bytes bytes = kind.Make(70'000, 3);
        Search search(bytes, {1'000, 64});
        while (!search.AtEnd()) {
            const std::uint32_t at = search.At();
            const std::uint32_t longest = std::min<std::uint32_t>(257, 32768 - at % 32768);
            Found found = search.Next(longest);
            if (at % 997 != 0) continue;
            // Triples hide each other here, so that only the matches in the trees can be predicted.
            std::erase_if(found, [](const auto& match) { return match.first < 4; });
            Found expected = NearestOfEachLength(bytes, at, longest, 64);
            std::erase_if(expected, [](const auto& match) { return match.first < 4; });
            EXPECT_EQ(expected, found) << at;
        }
    }
}

TEST(MatchFinder, ReportsNoMatchThatIsNotReal) {
    for (const DataKind& kind : DataKinds()) {
        SCOPED_TRACE(kind.Name);
        const Bytes bytes = kind.Make(70'000, 3);
        Search search(bytes, {7, 30});
        while (!search.AtEnd()) {
            const std::uint32_t at = search.At();
            const std::uint32_t longest = std::min<std::uint32_t>(257, 32768 - at % 32768);
            std::uint32_t last = 1;
            for (const auto& [length, offset] : search.Next(longest)) {
                ASSERT_GT(length, last) << at;
                ASSERT_LE(length, longest) << at;
                ASSERT_LE(offset, std::min(at, kMaxOffset)) << at;
                ASSERT_EQ(length, CommonPrefix(bytes, at - offset, at, length)) << at;
                last = length;
            }
        }
    }
}

TEST(MatchFinder, ReportsTheNewestPlaceAtADepthOfOne) {
    // Three places of the same four bytes; the newest agrees in the fewest bytes, the oldest in the most.
    const std::string text = "abcdEFGH.abcdEF..abcdE...abcdEFGH";
    const Bytes bytes(text.begin(), text.end());
    const auto foundAtLast = [&](int depth) {
        Search search(bytes, {depth, 257});
        search.SkipTo(25);
        return search.Next(257);
    };
    EXPECT_EQ((Found{{5, 8}}), foundAtLast(1));
    EXPECT_EQ((Found{{5, 8}, {6, 16}}), foundAtLast(2));
    EXPECT_EQ((Found{{5, 8}, {6, 16}, {8, 25}}), foundAtLast(3));
}

TEST(MatchFinder, ReportsAMatchOverTheNiceLengthInFull) {
    Bytes bytes = RandomBytes(500, 1);
    bytes.insert(bytes.end(), bytes.begin() + 100, bytes.begin() + 300);
    bytes.push_back(static_cast<std::uint8_t>(bytes[300] + 1));
    Search search(bytes, {kEndless, 8});
    search.SkipTo(500);
    EXPECT_EQ((Found::value_type{200, 400}), search.Next(257).back());
}

TEST(MatchFinder, KeepsToTheLongestLengthThatIsAskedFor) {
    const Bytes bytes(600, 'z');
    Search search(bytes, {kEndless, 257});
    search.SkipTo(300);
    EXPECT_EQ((Found{{257, 1}}), search.Next(257));
    EXPECT_EQ((Found{{100, 1}}), search.Next(100));
    EXPECT_EQ((Found{{3, 1}}), search.Next(3));
    EXPECT_EQ((Found{{2, 1}}), search.Next(2));
    EXPECT_EQ(Found{}, search.Next(1));
    EXPECT_EQ((Found{{257, 1}}), search.Next(257));
}

TEST(MatchFinder, ReachesTheLargestOffsetAndNoFarther) {
    for (const std::uint32_t length : {2U, 3U, 40U}) {
        for (const std::uint32_t distance : {kMaxOffset, kMaxOffset + 1}) {
            // The repeated string has bytes that occur nowhere else.
            Bytes bytes = FewLetters(distance + 100, 4, 2);
            for (std::uint32_t i = 0; i < length; ++i)
                bytes[50 + i] = bytes[50 + distance + i] = static_cast<std::uint8_t>(200 + i);
            Search search(bytes, {kEndless, 257});
            search.SkipTo(50 + distance);
            EXPECT_EQ(search.Next(length), distance == kMaxOffset ? (Found{{length, distance}}) : Found{});
        }
    }
}

TEST(MatchFinder, SkipEntersAPositionAsFindDoes) {
    for (const auto& make : {TextLike, Mixed, Runs}) {
        const Bytes bytes = make(50'000, 4);
        Search all(bytes, {16, 40});
        Search some(bytes, {16, 40});
        while (!all.AtEnd()) {
            const Found found = all.Next(257);
            if (all.At() % 7 < 4) {
                some.Skip();
            } else {
                ASSERT_EQ(found, some.Next(257)) << some.At();
            }
        }
    }
}

TEST(MatchFinder, FindsWhatEndsWithTheFolder) {
    // The last four, three and two bytes are repetitions, and nothing can be read after them.
    const std::string text = "wxyz--wxyz";
    const Bytes bytes(text.begin(), text.end());
    Search search(bytes, {kEndless, 257});
    search.SkipTo(6);
    for (const std::uint32_t length : {4U, 3U, 2U}) EXPECT_EQ((Found{{length, 6}}), search.Next(257));
    EXPECT_EQ(Found{}, search.Next(257));
}

}  // namespace
}  // namespace tools::cabarc::lzx::testing
