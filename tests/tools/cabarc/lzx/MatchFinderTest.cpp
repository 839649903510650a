#include "tools/cabarc/lzx/MatchFinder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/tools/cabarc/lzx/TestData.h"

namespace tests {
namespace {

using tools::cabarc::lzx::Match;
using tools::cabarc::lzx::MatchFinder;

std::uint32_t CommonPrefix(const Bytes& bytes, std::size_t a, std::size_t b, std::uint32_t limit) {
    std::uint32_t n = 0;
    while (n < limit && b + n < bytes.size() && bytes[a + n] == bytes[b + n]) ++n;
    return n;
}

TEST(MatchFinder, GivesTheNearestPlaceOfEachLength) {
    constexpr int kWindowBits = 15;
    for (const DataKind& kind : DataKinds()) {
        SCOPED_TRACE(kind.Name);
        const Bytes bytes = kind.Make(70'000, 3);
        MatchFinder finder(kWindowBits, {1'000, 64});
        std::vector<Match> found;
        for (std::uint32_t at = 0; at < bytes.size(); ++at) {
            const std::uint32_t longest = std::min<std::uint32_t>(257, 32768 - at % 32768);
            found.clear();
            const std::uint32_t given =
                finder.Find(at, &bytes[at], static_cast<std::uint32_t>(bytes.size()) - at, longest, found);
            ASSERT_EQ(given, found.empty() ? 0 : found.back().Length()) << at;
            std::uint32_t last = 1;
            for (const Match match : found) {
                ASSERT_GT(match.Length(), last) << at;
                ASSERT_LE(match.Length(), longest) << at;
                ASSERT_LE(match.Offset(), std::min<std::uint32_t>(at, (1U << kWindowBits) - 4)) << at;
                ASSERT_GE(CommonPrefix(bytes, at - match.Offset(), at, longest), match.Length()) << at;
                last = match.Length();
            }
            if (at % 997 != 0) continue;
            // Against the plain search of every place, nearest first (for strings that the trees hold).
            std::uint32_t best = 3;
            std::vector<std::pair<std::uint32_t, std::uint32_t>> expected;
            for (std::uint32_t offset = 1; offset <= std::min<std::uint32_t>(at, 32764) && best < 64;
                 ++offset) {
                const std::uint32_t length = CommonPrefix(bytes, at - offset, at, longest);
                if (length > best) expected.emplace_back(best = length, offset);
            }
            std::vector<std::pair<std::uint32_t, std::uint32_t>> got;
            for (const Match match : found)
                if (match.Length() > 3) got.emplace_back(match.Length(), match.Offset());
            EXPECT_EQ(got, expected) << at;
        }
    }
}

}  // namespace
}  // namespace tests
