#include "tools/bfi/Fingerprint.h"

#include <gtest/gtest.h>

#include "tests/support/TestData.h"

#include <set>
#include <vector>

namespace tools::bfi::testing {
namespace {

using tools::testing::Bytes;

std::uint32_t Of(const Bytes& bytes) {
    Fingerprint print;
    print.Add(bytes);
    return print.Value();
}

TEST(Fingerprint, TheSameBytesGiveTheSameNumber) {
    const Bytes bytes(1000, 7);
    EXPECT_EQ(Of(bytes), Of(bytes));
}

TEST(Fingerprint, EveryByteAndEveryBitCounts) {
    std::set<std::uint32_t> seen;
    Bytes bytes(100);
    seen.insert(Of(bytes));
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        for (unsigned bit = 0; bit < 8; ++bit) {
            bytes[i] = static_cast<std::uint8_t>(1U << bit);
            EXPECT_TRUE(seen.insert(Of(bytes)).second) << "byte " << i << " bit " << bit;
            bytes[i] = 0;
        }
    }
}

TEST(Fingerprint, ZerosAtTheEndCount) {
    std::set<std::uint32_t> seen;
    for (std::size_t length = 0; length <= 100; ++length)
        EXPECT_TRUE(seen.insert(Of(Bytes(length))).second) << length;
}

TEST(Fingerprint, TheOrderOfTwoPiecesCounts) {
    Fingerprint forth;
    forth.Add(Bytes{1, 2, 3});
    forth.Add(Bytes{4, 5});
    Fingerprint back;
    back.Add(Bytes{4, 5});
    back.Add(Bytes{1, 2, 3});
    EXPECT_NE(forth.Value(), back.Value());
}

// Machines of any byte order and word size must agree, and so must later versions.
TEST(Fingerprint, TheNumberIsFixed) {
    Bytes bytes;
    for (int i = 0; i < 1000; ++i) bytes.push_back(static_cast<std::uint8_t>(i * 7));
    EXPECT_EQ(1799922327U, Of(bytes));
}

}  // namespace
}  // namespace tools::bfi::testing
