#include "tools/cabarc/lzx/EncodedCodeLengths.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "tests/support/TestData.h"
#include "tests/tools/cabarc/lzx/LzxDecoder.h"
#include "tools/cabarc/lzx/HuffmanCode.h"

namespace tools::cabarc::lzx::testing {
namespace {

using tools::testing::Bytes;
using tools::testing::RandomBytes;

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

// Runs of equal code lengths and of zeros, from 1 to 60 elements, between single code lengths.
Lengths RunsOfLengths(std::size_t size, std::uint32_t seed) {
    std::mt19937 random(seed);
    Lengths lengths;
    while (lengths.size() < size)
        lengths.insert(lengths.end(), 1 + random() % (1 + random() % 60),
                       static_cast<std::uint8_t>(random() % 3 == 0 ? 0 : random() % 17));
    lengths.resize(size);
    return lengths;
}

// What a decoder that holds `previous` reads from the encoding of `lengths`; checks the encoding's size.
Lengths Decoded(const Lengths& previous, const Lengths& lengths) {
    const EncodedCodeLengths encoded(previous, lengths);
    BitWriter writer;
    encoded.Write(writer);
    writer.PadToWord();
    Lengths decoded = previous;
    EXPECT_EQ(DecodeCodeLengths(writer.Bytes(), decoded), encoded.Bits());
    return decoded;
}

TEST(EncodedCodeLengths, AreReadBackInAsManyBitsAsTheySay) {
    for (std::uint32_t seed = 0; seed < 100; ++seed) {
        const Lengths built = LengthsOf(400, seed);
        const Lengths runs = RunsOfLengths(400, seed);
        EXPECT_EQ(built, Decoded(LengthsOf(400, seed + 1), built));
        EXPECT_EQ(runs, Decoded(built, runs));
        EXPECT_EQ(Decoded(runs, RunsOfLengths(400, seed + 1)), RunsOfLengths(400, seed + 1));
        EXPECT_EQ(built, Decoded(runs, built));
    }
}

TEST(EncodedCodeLengths, AreReadBackForRunsOfEverySize) {
    for (std::size_t run = 1; run <= 249; ++run) {
        for (const int value : {0, 1, 16}) {
            Lengths lengths(249, 7);
            for (std::size_t i = 0; i < run; ++i) lengths[i] = static_cast<std::uint8_t>(value);
            EXPECT_EQ(lengths, Decoded(RunsOfLengths(249, 5), lengths));
        }
    }
}

TEST(EncodedCodeLengths, TakeOneBitForEachUnchangedLength) {
    const Lengths lengths = LengthsOf(256, 1);
    EXPECT_LE(EncodedCodeLengths(lengths, lengths).Bits(), 80U + 256U);
}

TEST(EncodedCodeLengths, TakeAFewRunsForAnEmptyTree) {
    EXPECT_LE(EncodedCodeLengths(LengthsOf(249, 2), Lengths(249, 0)).Bits(), 80U + 6U * 6U);
}

TEST(EncodedCodeLengths, PreferRunsOfEqualLengthsToDifferences) {
    // Every length is 8, and the list before was random: each run of five costs a run symbol and one
    // difference.
    EXPECT_LT(EncodedCodeLengths(LengthsOf(256, 3), Lengths(256, 8)).Bits(), 80U + 256U / 5U * 6U);
}

TEST(EncodedCodeLengths, PreferDifferencesToRunsWhereNothingChanged) {
    // Runs of five equal lengths, all as before: a run would take at least three bits and is no better than
    // five differences of zero, each of which takes one bit under a pretree without runs.
    Lengths lengths;
    for (std::uint8_t i = 0; i < 80; ++i)
        lengths.insert(lengths.end(), 5, static_cast<std::uint8_t>(4 + i % 7));
    EXPECT_LE(EncodedCodeLengths(lengths, lengths).Bits(), 80U + 3U * 80U);
}

}  // namespace
}  // namespace tools::cabarc::lzx::testing
