#include "tools/cabarc/Fingerprint.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/TestData.h"

namespace tools::cabarc::testing {
namespace {

using tools::testing::Bytes;
using tools::testing::BytesOf;
using tools::testing::CodeLike;
using tools::testing::RandomBytes;
using tools::testing::TextLike;

std::uint32_t Compare(const Bytes& a, const Bytes& b) {
    return Fingerprint(a).Resemblance(Fingerprint(b));
}

Bytes Joined(Bytes bytes, const Bytes& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
    return bytes;
}

TEST(Fingerprint, EqualBytesResembleEachOtherMost) {
    for (const Bytes& bytes : {RandomBytes(100'000), TextLike(5'000), CodeLike(70'000, 1), Bytes(3'000, 7)}) {
        // Whole numbers lose a little, and a file of one string has a sample of one.
        const std::uint32_t strings = bytes[0] == bytes[1] ? 1 : Fingerprint::kStrings;
        const std::uint32_t same = Fingerprint::kSame / 2 + strings * (Fingerprint::kSame / 256);
        EXPECT_GT(Compare(bytes, bytes), same * 95 / 100);
        EXPECT_LE(Compare(bytes, bytes), Fingerprint::kSame);
    }
}

TEST(Fingerprint, FilesWithoutAStringResembleNothing) {
    for (const Bytes& small : {Bytes(), BytesOf("a"), BytesOf("abc")}) {
        EXPECT_EQ(0U, Compare(small, small));
        EXPECT_EQ(0U, Compare(small, TextLike(1'000)));
        EXPECT_EQ(0U, Compare(TextLike(1'000), small));
    }
    EXPECT_NE(0U, Compare(BytesOf("abcd"), BytesOf("abcd")));
}

TEST(Fingerprint, FilesWithoutACommonStringResembleNothing) {
    EXPECT_EQ(0U, Compare(RandomBytes(20'000, 1), RandomBytes(20'000, 2)));
    EXPECT_EQ(0U, Compare(BytesOf("abcdefgh"), BytesOf("hgfedcba")));
}

TEST(Fingerprint, TheMoreFilesShareTheMoreTheyResembleEachOther) {
    const Bytes base = RandomBytes(40'000, 1);
    std::uint32_t before = 0;
    for (const std::size_t shared : {10'000, 20'000, 30'000, 40'000}) {
        const Bytes part(base.begin(), base.begin() + static_cast<std::ptrdiff_t>(shared));
        const std::uint32_t now = Compare(base, Joined(part, RandomBytes(40'000 - shared, 2)));
        EXPECT_GT(now, before) << shared;
        before = now;
    }
}

TEST(Fingerprint, WhereAStringStandsDoesNotMatter) {
    const Bytes first = RandomBytes(20'000, 1);
    const Bytes second = RandomBytes(20'000, 2);
    EXPECT_GT(Compare(Joined(first, second), Joined(second, first)), Fingerprint::kSame * 95 / 100);
}

TEST(Fingerprint, FilesOfOneKindResembleEachOtherMoreThanOthers) {
    const Bytes text = TextLike(20'000, 1);
    const Bytes code = CodeLike(20'000, 1);
    EXPECT_GT(Compare(text, TextLike(20'000, 2)), Compare(text, code));
    EXPECT_GT(Compare(code, CodeLike(20'000, 2)), Compare(code, text));
}

TEST(Fingerprint, ResemblanceIsMutual) {
    const Bytes text = TextLike(20'000, 1);
    const Bytes both = Joined(TextLike(5'000, 2), CodeLike(5'000, 3));
    EXPECT_EQ(Compare(text, both), Compare(both, text));
}

}  // namespace
}  // namespace tools::cabarc::testing
