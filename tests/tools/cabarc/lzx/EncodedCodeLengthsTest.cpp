#include "tools/cabarc/lzx/EncodedCodeLengths.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/tools/cabarc/lzx/TestData.h"
#include "tools/cabarc/lzx/HuffmanCode.h"

namespace tests {
namespace {

using tools::cabarc::lzx::BitWriter;
using tools::cabarc::lzx::BuildCodeLengths;
using tools::cabarc::lzx::EncodedCodeLengths;
using Lengths = std::vector<std::uint8_t>;

Lengths LengthsOf(std::size_t size, std::uint32_t seed) {
    std::vector<std::uint32_t> counts(size);
    const Bytes noise = RandomBytes(size, seed);
    for (std::size_t i = 0; i < size; ++i)
        counts[i] = noise[i] % 5 < 2 ? 0U : noise[i] * std::uint32_t{noise[i]};
    Lengths lengths(size);
    BuildCodeLengths(counts, 16, lengths);
    return lengths;
}

TEST(EncodedCodeLengths, TakesAsManyBitsAsItSays) {
    for (std::uint32_t seed = 0; seed < 20; ++seed) {
        const EncodedCodeLengths header(LengthsOf(400, seed), LengthsOf(400, seed + 1));
        BitWriter writer;
        header.Write(writer);
        writer.PadToWord();
        EXPECT_EQ(writer.Bytes().size(), (header.Bits() + 15) / 16 * 2);
    }
}

TEST(EncodedCodeLengths, SaysUnchangedLengthsInOneBitEach) {
    const Lengths lengths = LengthsOf(256, 1);
    EXPECT_LE(EncodedCodeLengths(lengths, lengths).Bits(), 80U + 256U);
}

TEST(EncodedCodeLengths, SaysAnEmptyTreeInAFewRuns) {
    EXPECT_LE(EncodedCodeLengths(LengthsOf(249, 2), Lengths(249, 0)).Bits(), 80U + 6U * 6U);
}

TEST(EncodedCodeLengths, PrefersRunsOfEqualLengthsToDifferences) {
    // Every length is 8, and the list before was noise: each run of five costs a run symbol and one
    // difference.
    EXPECT_LT(EncodedCodeLengths(LengthsOf(256, 3), Lengths(256, 8)).Bits(), 80U + 256U / 5U * 6U);
}

}  // namespace
}  // namespace tests
