#include "tools/shared/DosTime.h"

#include <gtest/gtest.h>

namespace tools::testing {
namespace {

TEST(DosTime, PacksDateAndTimeIntoTheirFields) {
    const DosTime packed = PackDosTime(1998, 5, 11, 20, 1, 30);
    EXPECT_EQ((18 << 9) | (5 << 5) | 11, packed.Date);
    EXPECT_EQ((20 << 11) | (1 << 5) | 15, packed.Time);
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
    EXPECT_EQ(first, PackDosTime(1979, 12, 31, 23, 59, 59));
    EXPECT_EQ(DosTime{}, first);
    EXPECT_EQ(0x21, first.Date);
    EXPECT_EQ(PackDosTime(2108, 1, 1, 0, 0, 0), PackDosTime(2107, 12, 31, 23, 59, 58));
    EXPECT_EQ(0xFF9F, PackDosTime(2107, 12, 31, 23, 59, 58).Date);
}

TEST(DosTime, TheFirstYearHasAllItsMoments) {
    const DosTime packed = PackDosTime(1980, 12, 31, 23, 59, 58);
    EXPECT_EQ((12 << 5) | 31, packed.Date);
    EXPECT_EQ((23 << 11) | (59 << 5) | 29, packed.Time);
}

TEST(NearestMoment, LeavesWhatThereIs) {
    for (const DosTime moment : {DosTime{}, PackDosTime(2000, 2, 29, 0, 0, 0),
                                 PackDosTime(2107, 12, 31, 23, 59, 58), PackDosTime(1999, 4, 30, 12, 30, 30)})
        EXPECT_EQ(moment, NearestMoment(moment));
}

TEST(NearestMoment, BringsEachFieldIntoItsRange) {
    const auto stored = [](int year, int month, int day, int hour, int minute, int pair) {
        return DosTime{static_cast<std::uint16_t>(((year - 1980) << 9) | (month << 5) | day),
                       static_cast<std::uint16_t>((hour << 11) | (minute << 5) | pair)};
    };
    EXPECT_EQ(PackDosTime(1980, 1, 1, 0, 0, 0), NearestMoment({0, 0}));
    EXPECT_EQ(PackDosTime(2107, 12, 31, 23, 59, 58), NearestMoment({0xFFFF, 0xFFFF}));
    EXPECT_EQ(PackDosTime(1998, 1, 7, 1, 2, 6), NearestMoment(stored(1998, 0, 7, 1, 2, 3)));
    EXPECT_EQ(PackDosTime(1998, 12, 1, 23, 59, 58), NearestMoment(stored(1998, 13, 0, 24, 60, 30)));
    EXPECT_EQ(PackDosTime(1999, 2, 28, 1, 2, 58), NearestMoment(stored(1999, 2, 31, 1, 2, 31)));
    EXPECT_EQ(PackDosTime(2000, 2, 29, 1, 2, 6), NearestMoment(stored(2000, 2, 30, 1, 2, 3)));
    EXPECT_EQ(PackDosTime(2100, 2, 28, 1, 2, 6), NearestMoment(stored(2100, 2, 29, 1, 2, 3)));
    EXPECT_EQ(PackDosTime(1999, 4, 30, 1, 2, 6), NearestMoment(stored(1999, 4, 31, 1, 2, 3)));
}

}  // namespace
}  // namespace tools::testing
