#include "tools/cabarc/lzx/E8Translation.h"

#include <gtest/gtest.h>

#include "tests/support/TestData.h"
#include "tools/shared/ByteOrder.h"

namespace tools::cabarc::lzx::testing {
namespace {

using tools::testing::Bytes;
using tools::testing::CodeLike;
using tools::testing::TextLike;

// Translates a frame with one call at `place`; returns the operand afterwards.
std::uint32_t Translated(std::uint32_t operand, std::size_t place, std::uint32_t folderOffset,
                         std::size_t frameSize = 32768) {
    Bytes frame(frameSize, 0x90);
    frame[place] = 0xE8;
    PutU32(&frame[place + 1], operand);
    TranslateFrame(frame, folderOffset);
    return GetU32(&frame[place + 1]);
}

TEST(E8Translation, AddsThePlaceOfTheCall) {
    EXPECT_EQ(1000U + 50U + 65536U, Translated(1000, 50, 65536));
    EXPECT_EQ(0U, Translated(0U - 65536U - 50U, 50, 65536));
}

TEST(E8Translation, LeavesTargetsBeforeTheFolderAlone) {
    EXPECT_EQ(0U - 65536U - 51U, Translated(0U - 65536U - 51U, 50, 65536));
}

TEST(E8Translation, WrapsTargetsAfterTheTranslationSize) {
    EXPECT_EQ(kTranslationSize - 1, Translated(kTranslationSize - 51, 50, 0));
    EXPECT_EQ(0U - 50U, Translated(kTranslationSize - 50, 50, 0));
    EXPECT_EQ(kTranslationSize, Translated(kTranslationSize, 50, 0));
}

TEST(E8Translation, SparesTheLastTenBytesOfAFrame) {
    EXPECT_EQ(7U + 89U, Translated(7, 89, 0, 100));
    EXPECT_EQ(7U, Translated(7, 90, 0, 100));
    EXPECT_EQ(7U, Translated(7, 0, 0, 10));
}

TEST(E8Translation, StopsAtOneGibibyte) {
    EXPECT_NE(Translated(0xFFFFFFFF, 5, 32767U * 32768U), 0xFFFFFFFFU);
    EXPECT_EQ(0xFFFFFFFFU, Translated(0xFFFFFFFF, 5, 32768U * 32768U));
}

TEST(E8Translation, StepsOverTheOperandOfEveryCall) {
    Bytes frame(64, 0);
    frame[0] = 0xE8;
    PutU32(&frame[1], 0x00E80000U);  // an E8 inside an operand is no call
    frame[5] = 0xE8;
    PutU32(&frame[6], 1);
    TranslateFrame(frame, 32768);
    EXPECT_EQ(1U + 32768U + 5U, GetU32(&frame[6]));
}

TEST(E8Translation, DoesNotPayForNothing) {
    EXPECT_FALSE(TranslationPays({}));
    EXPECT_FALSE(TranslationPays(TextLike(50'000, 1)));
    EXPECT_TRUE(TranslationPays(CodeLike(200'000, 1)));
}

TEST(E8Translation, DoesNotPayForModulesThatAreNotLinkedYet) {
    // Each call has the same operand, which a linker would replace; the code between the calls is as in any
    // program.
    Bytes modules = CodeLike(200'000, 4);
    for (std::size_t i = 0; i + 5 <= modules.size(); ++i)
        if (modules[i] == 0xE8) {
            PutU32(&modules[i + 1], 0xFFFFFFFCU);
            i += 4;
        }
    EXPECT_FALSE(TranslationPays(modules));
}

}  // namespace
}  // namespace tools::cabarc::lzx::testing
