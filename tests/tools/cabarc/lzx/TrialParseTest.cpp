#include "tools/cabarc/lzx/TrialParse.h"

#include <gtest/gtest.h>

#include "tests/support/TestData.h"
#include "tests/tools/cabarc/lzx/LzxDecoder.h"
#include "tools/cabarc/lzx/E8Translation.h"
#include "tools/cabarc/lzx/LzxEncoder.h"

namespace tools::cabarc::lzx::testing {
namespace {

using tools::testing::Bytes;
using tools::testing::Mixed;
using tools::testing::RandomBytes;
using tools::testing::TextLike;

TEST(TrialParse, TakesNothingForNothing) {
    EXPECT_EQ(0, EstimatedBits({}));
}

TEST(TrialParse, ComesNearToWhatTheEncoderMakes) {
    for (const auto& make : {TextLike, Mixed, RandomBytes}) {
        const Bytes input = make(600'000, 5);
        FrameCollector folder;
        LzxEncoder encoder(21, {}, folder);
        encoder.Write(input);
        encoder.Finish();
        const auto packedBits = static_cast<double>(8 * folder.PackedSize());
        EXPECT_GT(EstimatedBits(input), 0.9 * packedBits);
        EXPECT_LT(EstimatedBits(input), 1.5 * packedBits);
    }
}

TEST(TrialParse, SeesCopiesFromAfar) {
    const Bytes part = RandomBytes(50'000, 6);
    Bytes apart = part;
    apart.resize(1'500'000);
    Bytes twice = apart;
    twice.insert(twice.end(), part.begin(), part.end());
    EXPECT_LT(EstimatedBits(twice), 1.1 * EstimatedBits(apart));
}

TEST(TrialParse, ExpectsNoGainFromRareAccidents) {
    // In random bytes three bytes are repeated now and then; as matches they would cost more than as
    // literals.
    EXPECT_LT(EstimatedBits(RandomBytes(400'000, 9)), 8.1 * 400'000);
}

TEST(TrialParse, PricesEachStretchByItsOwnSymbols) {
    // Half of the stretches use one half of the byte values, the others the other half: 7 bits for each
    // byte, not 8.
    Bytes bytes = RandomBytes(512 * 1024, 10);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<std::uint8_t>((bytes[i] & 0x7FU) | ((i / 32768) % 2 << 7));
    EXPECT_LT(EstimatedBits(bytes), 7.2 * static_cast<double>(bytes.size()));
}

}  // namespace
}  // namespace tools::cabarc::lzx::testing
