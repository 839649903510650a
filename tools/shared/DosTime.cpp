#include "tools/shared/DosTime.h"

#include <algorithm>
#include <array>

namespace tools {
namespace {

int DaysOf(int month, int year) {
    constexpr std::array<int, 12> kDays{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool isLeap = year % 4 == 0 && year != 2100;  // the only exception from 1980 to 2107
    return kDays[static_cast<std::size_t>(month - 1)] + (month == 2 && isLeap ? 1 : 0);
}

}  // namespace

DosTime PackDosTime(int year, int month, int day, int hour, int minute, int second) {
    if (year < 1980) return DosTime{};
    if (year > 2107) return PackDosTime(2107, 12, 31, 23, 59, 58);
    DosTime packed;
    packed.Date = static_cast<std::uint16_t>(((year - 1980) << 9) | (month << 5) | day);
    // A leap second (60) would not fit into the five bits for pairs of seconds as a valid time.
    const int pairOfSeconds = second > 59 ? 29 : second / 2;
    packed.Time = static_cast<std::uint16_t>((hour << 11) | (minute << 5) | pairOfSeconds);
    return packed;
}

CalendarTime UnpackDosTime(DosTime packed) {
    return {1980 + (packed.Date >> 9), (packed.Date >> 5) & 15, packed.Date & 31,
            packed.Time >> 11,         (packed.Time >> 5) & 63, (packed.Time & 31) * 2};
}

DosTime NearestMoment(DosTime stored) {
    const CalendarTime given = UnpackDosTime(stored);
    const int month = std::clamp(given.Month, 1, 12);
    return PackDosTime(given.Year, month, std::clamp(given.Day, 1, DaysOf(month, given.Year)),
                       std::min(given.Hour, 23), std::min(given.Minute, 59), std::min(given.Second, 58));
}

}  // namespace tools
