#include "tools/shared/DosTime.h"

#include <gtest/gtest.h>

namespace tools {
namespace {

TEST(DosTime, PacksDateAndTimeIntoTheirFields) {
    const DosTime packed = PackDosTime(1998, 5, 11, 20, 1, 30);
    EXPECT_EQ(packed.Date, (18 << 9) | (5 << 5) | 11);
    EXPECT_EQ(packed.Time, (20 << 11) | (1 << 5) | 15);
}

TEST(DosTime, HasTwoSecondsResolution) {
    EXPECT_EQ(PackDosTime(2000, 1, 1, 0, 0, 31), PackDosTime(2000, 1, 1, 0, 0, 30));
    EXPECT_NE(PackDosTime(2000, 1, 1, 0, 0, 32), PackDosTime(2000, 1, 1, 0, 0, 30));
}

TEST(DosTime, ALeapSecondStaysInItsMinute) {
    EXPECT_EQ(PackDosTime(2016, 12, 31, 23, 59, 60), PackDosTime(2016, 12, 31, 23, 59, 58));
}

TEST(DosTime, IsHeldWithinTheRangeOfTheFields) {
    const DosTime first = PackDosTime(1980, 1, 1, 0, 0, 0);
    EXPECT_EQ(PackDosTime(1979, 12, 31, 23, 59, 59), first);
    EXPECT_EQ(DosTime{}, first);
    EXPECT_EQ(first.Date, 0x21);
    EXPECT_EQ(PackDosTime(2108, 1, 1, 0, 0, 0), PackDosTime(2107, 12, 31, 23, 59, 58));
    EXPECT_EQ(PackDosTime(2107, 12, 31, 23, 59, 58).Date, 0xFF9F);
}

}  // namespace
}  // namespace tools
