// platform/Clock.cpp: the system clock and local time, from std::chrono and
// the C library's time zone conversion. The only unit that reads the clock;
// callers turn the readings into ticks, dates or zone offsets.
#include "platform/Clock.h"

#include <chrono>
#include <ctime>

namespace vkt::platform {
namespace {

using Units100ns = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;

constexpr std::chrono::sys_days kEpoch1601{std::chrono::year{1601} / 1 / 1};
constexpr std::chrono::sys_days kEpoch1970{std::chrono::year{1970} / 1 / 1};

// The present moment split into whole seconds since 1970 and milliseconds,
// the millisecond part always 0..999 (floor, also before 1970).
struct Now {
  std::time_t seconds;
  int millisecond;
};

Now ReadNow() {
  using namespace std::chrono;
  const auto now = time_point_cast<milliseconds>(system_clock::now());
  const auto secs = floor<seconds>(now);
  return {static_cast<std::time_t>(secs.time_since_epoch().count()),
          static_cast<int>((now - secs).count())};
}

// localtime_r, or gmtime_r when the zone conversion fails.
std::tm BrokenDown(std::time_t t) {
  std::tm fields{};
  if (localtime_r(&t, &fields) == nullptr) gmtime_r(&t, &fields);
  return fields;
}

}  // namespace

const std::uint64_t kUnitsFrom1601To1970 = static_cast<std::uint64_t>(
    std::chrono::duration_cast<Units100ns>(kEpoch1970 - kEpoch1601).count());

std::uint64_t SystemTimeSince1601() {
  using namespace std::chrono;
  const auto sinceUnixEpoch =
      floor<Units100ns>(system_clock::now().time_since_epoch()).count();
  const std::int64_t offset = static_cast<std::int64_t>(kUnitsFrom1601To1970);
  if (sinceUnixEpoch < -offset) return 0;
  return static_cast<std::uint64_t>(sinceUnixEpoch + offset);
}

LocalTime LocalTimeNow() {
  const Now now = ReadNow();
  const std::tm f = BrokenDown(now.seconds);
  return {f.tm_year + 1900, f.tm_mon + 1,  f.tm_mday,
          f.tm_wday,        f.tm_hour,     f.tm_min,
          f.tm_sec > 59 ? 59 : f.tm_sec, now.millisecond};
}

int LocalToUtcSeconds() {
  const std::time_t t = ReadNow().seconds;
  std::tm fields{};
  if (localtime_r(&t, &fields) == nullptr) return 0;
  return static_cast<int>(-fields.tm_gmtoff);
}

}  // namespace vkt::platform
