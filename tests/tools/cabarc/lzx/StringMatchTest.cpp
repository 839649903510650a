#include "tools/cabarc/lzx/StringMatch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/support/TestData.h"

namespace tools::cabarc::lzx::testing {
namespace {

using tools::testing::Bytes;
using tools::testing::RandomBytes;

TEST(StringMatch, ExtendsUpToTheFirstByteThatDiffersOrToTheLimit) {
    const Bytes a = RandomBytes(40, 1);
    for (std::uint32_t differs = 0; differs < 40; ++differs) {
        Bytes b = a;
        b[differs] = static_cast<std::uint8_t>(b[differs] ^ 0x80U);
        for (std::uint32_t limit = 0; limit <= 40; ++limit)
            for (std::uint32_t from = 0; from <= std::min(limit, differs); ++from)
                ASSERT_EQ(ExtendMatch(a.data(), b.data(), from, limit), std::min(limit, differs));
    }
}

TEST(StringMatch, ExtendsOverStringsThatOverlap) {
    const Bytes bytes(60, 'x');
    EXPECT_EQ(59U, ExtendMatch(bytes.data(), bytes.data() + 1, 0, 59));
}

TEST(StringMatch, SpreadsTheHashesOfTriples) {
    // A random function would fill 1 - 1/e^2 = 86 % of 32,768 places with 65,536 triples.
    const Bytes noise = RandomBytes(3 * 65'536, 2);
    std::vector<bool> used(32'768);
    for (std::size_t i = 0; i < noise.size(); i += 3)
        used[Hash(std::uint32_t{noise[i]} << 8 | std::uint32_t{noise[i + 1]} << 16 |
                      std::uint32_t{noise[i + 2]} << 24,
                  15)] = true;
    EXPECT_GT(std::count(used.begin(), used.end(), true), 27'500);
}

}  // namespace
}  // namespace tools::cabarc::lzx::testing
