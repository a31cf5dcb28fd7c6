// platform/Clock.h: the system clock and the local time zone. Internal:
// nothing under include/ includes it.
//
// Three readings, each taken afresh at the call: the system time as a count
// of 100-nanosecond units since 1 January 1601 UTC (the tick unit of the
// library's GetTickTime), the local time broken down into fields, and the
// span that turns local time into UTC.
#pragma once

#include <cstdint>

namespace vkt::platform {

// 100-nanosecond units between 1 January 1601 and 1 January 1970, both UTC.
extern const std::uint64_t kUnitsFrom1601To1970;

// The system time in 100-nanosecond units since 1 January 1601 UTC. A clock
// set before 1601 (it cannot be in practice) reads as 0.
std::uint64_t SystemTimeSince1601();

// The local time, all fields as people write them.
struct LocalTime {
  int year;         // e.g. 2024
  int month;        // 1..12
  int day;          // 1..31
  int dayOfWeek;    // 0 for Sunday .. 6 for Saturday
  int hour;         // 0..23
  int minute;       // 0..59
  int second;       // 0..59; a leap second reads as 59
  int millisecond;  // 0..999
};

// The present local time by the process's time zone (TZ). Should the C
// library fail to convert, the fields hold UTC instead.
LocalTime LocalTimeNow();

// Seconds to add to the present local time to get UTC: -28800 for UTC+8,
// 18000 for UTC-5. Daylight saving time, when in force, is included.
int LocalToUtcSeconds();

}  // namespace vkt::platform
