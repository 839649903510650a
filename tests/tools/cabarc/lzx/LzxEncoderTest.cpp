#include "tools/cabarc/lzx/LzxEncoder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "tests/support/TestData.h"
#include "tests/tools/cabarc/lzx/LzxDecoder.h"
#include "tools/cabarc/lzx/LzxFormat.h"

namespace tools::cabarc::lzx::testing {
namespace {

using tools::testing::Bytes;
using tools::testing::CodeLike;
using tools::testing::DataKind;
using tools::testing::DataKinds;
using tools::testing::FarCopies;
using tools::testing::Mixed;
using tools::testing::RandomBytes;
using tools::testing::TextLike;

FrameCollector Pack(const Bytes& input, int windowBits, const LzxOptions& options = {}) {
    FrameCollector folder;
    LzxEncoder encoder(windowBits, options, folder);
    encoder.Write(input);
    encoder.Finish();
    return folder;
}

// Packs, unpacks and compares; returns which blocks the folder consists of.
LzxContents RoundTrip(const Bytes& input, int windowBits, const LzxOptions& options = {}) {
    LzxContents contents;
    const FrameCollector folder = Pack(input, windowBits, options);
    EXPECT_EQ(folder.Frames.size(), (input.size() + 32767) / 32768);
    EXPECT_NO_THROW(EXPECT_TRUE(DecodeLzx(folder.Frames, windowBits, &contents) == input));
    return contents;
}

// Options that save time, for tests that need many bytes but no good compression.
LzxOptions Hasty() {
    LzxOptions options;
    options.Search = {4, 32};
    options.Passes = 1;
    return options;
}

TEST(LzxEncoder, RefusesWindowsThatTheFormatLacks) {
    FrameCollector folder;
    EXPECT_THROW(LzxEncoder(14, {}, folder), std::invalid_argument);
    EXPECT_THROW(LzxEncoder(22, {}, folder), std::invalid_argument);
}

TEST(LzxEncoder, RefusesOptionsOutsideTheirBounds) {
    FrameCollector folder;
    const auto refuses = [&](const LzxOptions& options) {
        EXPECT_THROW(LzxEncoder(21, options, folder), std::invalid_argument);
    };
    refuses({{0, 128}, 257, 2});
    refuses({{48, 2}, 257, 2});
    refuses({{48, 258}, 257, 2});
    refuses({{48, 128}, 1, 2});
    refuses({{48, 128}, 258, 2});
    refuses({{48, 128}, 257, 0});
    EXPECT_NO_THROW(LzxEncoder(21, {{1, 3}, 2, 1}, folder));
    EXPECT_NO_THROW(LzxEncoder(21, {{1, 257}, 257, 1}, folder));
}

TEST(LzxEncoder, GivesNoFrameForAnEmptyFolder) {
    EXPECT_TRUE(Pack({}, 21).Frames.empty());
}

TEST(LzxEncoder, RoundTripsEveryKindAtEveryEdgeSize) {
    for (const DataKind& kind : DataKinds()) {
        for (const std::size_t size :
             {1,     2,     3,     4,     5,     9,     10,    11,    12,    255,   258,    4096,
              32757, 32758, 32766, 32767, 32768, 32769, 32770, 65535, 65536, 65537, 100'001}) {
            SCOPED_TRACE(kind.Name + " " + std::to_string(size));
            RoundTrip(kind.Make(size, static_cast<std::uint32_t>(size)), 15 + static_cast<int>(size % 7));
        }
    }
}

TEST(LzxEncoder, RoundTripsAroundTheSizeOfEveryWindow) {
    for (int windowBits = 15; windowBits <= 21; ++windowBits) {
        for (const int delta : {-1, 0, 1}) {
            SCOPED_TRACE(std::to_string(windowBits) + " " + std::to_string(delta));
            const auto size = static_cast<std::size_t>((1 << windowBits) + delta);
            RoundTrip(Mixed(size, static_cast<std::uint32_t>(windowBits)), windowBits, Hasty());
        }
    }
}

TEST(LzxEncoder, ReachesTheWholeWindowAndNeverBeyond) {
    for (int windowBits = 15; windowBits <= 21; ++windowBits) {
        SCOPED_TRACE(windowBits);
        const std::size_t window = std::size_t{1} << windowBits;
        const Bytes input = FarCopies(3 * window + 12'345, window - 3, 7);
        RoundTrip(input, windowBits, Hasty());
    }
    // A repetition at the largest offset in use is found; one that is a byte farther away is not.
    for (const std::size_t distance : {32764, 32765}) {
        Bytes input = RandomBytes(distance, 3);
        for (std::size_t i = 0; i < 32768; ++i) input.push_back(input[i]);
        const std::size_t packed = Pack(input, 15).PackedSize();
        if (distance == 32764) {
            EXPECT_LT(packed, 34'000U);
        } else {
            EXPECT_GT(packed, 60'000U);
        }
    }
}

TEST(LzxEncoder, SlidesOverFoldersLongerThanItsBuffer) {
    for (const DataKind& kind : DataKinds()) {
        SCOPED_TRACE(kind.Name);
        RoundTrip(kind.Make(4'400'001, 11), 21, Hasty());
        RoundTrip(kind.Make(2'300'000, 12), 15, Hasty());
    }
    RoundTrip(Mixed(4'400'001, 11), 21);
}

TEST(LzxEncoder, GivesTheSameFramesHoweverTheBytesArrive) {
    const Bytes input = Mixed(4'300'000, 5);
    const FrameCollector whole = Pack(input, 20);
    FrameCollector pieces;
    LzxEncoder encoder(20, {}, pieces);
    std::size_t step = 0;
    for (std::size_t at = 0; at < input.size();) {
        const std::size_t part = std::min(input.size() - at, step);
        encoder.Write(std::span(input).subspan(at, part));
        at += part;
        step = (step * 7 + 1) % 150'001;  // zero-length calls included
    }
    encoder.Finish();
    ASSERT_EQ(pieces.Frames.size(), whole.Frames.size());
    for (std::size_t i = 0; i < whole.Frames.size(); ++i)
        EXPECT_TRUE(pieces.Frames[i].Payload == whole.Frames[i].Payload);
}

TEST(LzxEncoder, StoresWhatCannotBePacked) {
    for (const std::size_t size : {1'000, 32'768, 50'001, 300'000}) {
        SCOPED_TRACE(size);
        const Bytes input = RandomBytes(size, 1);
        const FrameCollector folder = Pack(input, 21);
        EXPECT_LE(folder.PackedSize(), size + 40);
        EXPECT_GT(RoundTrip(input, 21).Uncompressed, 0U);
    }
}

TEST(LzxEncoder, StoresStretchesAtOddPlacesBetweenOthers) {
    std::size_t stored = 0;
    for (std::uint32_t seed = 0; seed < 12; ++seed) {
        SCOPED_TRACE(seed);
        Bytes input = TextLike(20'000 + seed * 3'001, seed);
        for (std::uint32_t part = 0; part < 3; ++part) {
            const Bytes noise = RandomBytes(80'001 + seed * 977 + part, seed + part);
            input.insert(input.end(), noise.begin(), noise.end());
            const Bytes text = TextLike(10'000 + seed * 501, seed + part);
            input.insert(input.end(), text.begin(), text.end());
        }
        stored += RoundTrip(input, 18).Uncompressed;
    }
    EXPECT_GE(stored, 3U);
}

TEST(LzxEncoder, UsesAlignedBlocksWhereOffsetsAreAligned) {
    // Random records of eight bytes, repeated in random order: all offsets are multiples of eight.
    const Bytes pool = RandomBytes(8'000, 4);
    const Bytes order = RandomBytes(60'000, 5);
    Bytes input = pool;
    for (std::size_t i = 0; i + 1 < order.size(); i += 2) {
        const auto record = static_cast<std::ptrdiff_t>((order[i] * 256U + order[i + 1]) % 1'000 * 8);
        input.insert(input.end(), pool.begin() + record, pool.begin() + record + 8);
    }
    EXPECT_GT(RoundTrip(input, 21).Aligned, 0U);
    EXPECT_EQ(0U, RoundTrip(TextLike(200'000, 1), 21).Uncompressed);
}

TEST(LzxEncoder, TranslatesCallsOnlyWhereThatPays) {
    const LzxContents code = RoundTrip(CodeLike(300'000, 2), 21);
    EXPECT_TRUE(code.Translated);
    // Calls of routines at a fixed distance from their callers: equal operands, which translation would make
    // different.
    Bytes relocatable;
    for (std::uint32_t i = 0; i < 20'000; ++i) {
        const Bytes between = RandomBytes(1 + i % 9, i);
        relocatable.insert(relocatable.end(), between.begin(), between.end());
        relocatable.insert(relocatable.end(), {0xE8, 0xFC, 0xFF, 0xFF, 0xFF});
    }
    EXPECT_FALSE(RoundTrip(relocatable, 21).Translated);
    EXPECT_FALSE(RoundTrip(TextLike(100'000, 1), 21).Translated);
}

TEST(LzxEncoder, WorksWithTheLeastAndTheMostEffort) {
    const Bytes input = Mixed(400'000, 9);
    LzxOptions least;
    least.Search = {1, 3};
    least.Passes = 1;
    RoundTrip(input, 17, least);
    LzxOptions most;
    most.Search = {300, 257};
    most.Passes = 6;
    RoundTrip(input, 21, most);
    EXPECT_LT(Pack(input, 21, most).PackedSize(), Pack(input, 21, least).PackedSize());
}

}  // namespace
}  // namespace tools::cabarc::lzx::testing
