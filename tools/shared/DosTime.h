#pragma once
// Dates and times as FAT directory entries and cabinets store them: local time in steps of two seconds. Both
// formats are described in docs/formats.

#include <cstdint>

namespace tools {

/// A packed local date and time, at first the start of the range. `Date` = (year-1980)<<9 | month<<5 | day;
/// `Time` = hour<<11 | minute<<5 | second/2. The range is 1980-01-01 00:00:00 to 2107-12-31 23:59:58.
struct DosTime {
    std::uint16_t Date = (1 << 5) | 1;
    std::uint16_t Time = 0;

    friend bool operator==(const DosTime&, const DosTime&) = default;
};

/// The calendar units of a packed time, as stored, even where no calendar has them: month and day are
/// 1-based, the second is even and at most 62.
struct CalendarTime {
    int Year, Month, Day, Hour, Minute, Second;
};
/// Returns the fields of a packed time. Nothing is corrected: NearestMoment does that.
CalendarTime UnpackDosTime(DosTime packed);

/// Packs a local date and time, given in calendar units (month and day 1-based), which must exist; an odd
/// second becomes the even one before it, and a leap second the last even one of its minute. Years before
/// 1980 give the first and years after 2107 the last moment of the range.
DosTime PackDosTime(int year, int month, int day, int hour, int minute, int second);

/// Returns the nearest moment that exists: the fields of a stored time may hold a month 0 or 15, a 31st of
/// February, an hour 31 or a minute 63. A field that is wrong becomes the nearest right one; the others
/// stay.
DosTime NearestMoment(DosTime stored);

}  // namespace tools
