#include "tools/shared/DosTime.h"

namespace tools {

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

}  // namespace tools
