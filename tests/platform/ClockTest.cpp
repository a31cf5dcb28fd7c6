// Tests of the clock readings: the 1601 epoch, agreement between the system
// time and the local time, and the plausible range of the zone offset.
#include "platform/Clock.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <ctime>

namespace {

TEST(Clock, EpochOffsetIs369Years) {
  // 134,774 days (369 years with 89 leap days) of 86,400 seconds.
  EXPECT_EQ(vkt::platform::kUnitsFrom1601To1970, 116444736000000000ULL);
}

TEST(Clock, SystemTimeCountsFrom1601) {
  const std::uint64_t units = vkt::platform::SystemTimeSince1601();
  const std::uint64_t ms = units / 10000;
  EXPECT_GT(ms, 13222310400000ULL);  // 1 January 2020 UTC
  EXPECT_LT(ms, 16000000000000ULL);  // before the year 2108
  // Matches the C library's clock to within a few seconds.
  const std::uint64_t fromTime =
      (static_cast<std::uint64_t>(std::time(nullptr)) * 10000000ULL +
       vkt::platform::kUnitsFrom1601To1970) / 10000;
  EXPECT_LT(ms > fromTime ? ms - fromTime : fromTime - ms, 5000u);
  EXPECT_GE(vkt::platform::SystemTimeSince1601(), units);  // does not run backwards here
}

TEST(Clock, LocalTimeFieldsInRange) {
  const vkt::platform::LocalTime t = vkt::platform::LocalTimeNow();
  EXPECT_GE(t.year, 2020);
  EXPECT_TRUE(t.month >= 1 && t.month <= 12);
  EXPECT_TRUE(t.day >= 1 && t.day <= 31);
  EXPECT_TRUE(t.dayOfWeek >= 0 && t.dayOfWeek <= 6);
  EXPECT_TRUE(t.hour >= 0 && t.hour <= 23);
  EXPECT_TRUE(t.minute >= 0 && t.minute <= 59);
  EXPECT_TRUE(t.second >= 0 && t.second <= 59);
  EXPECT_TRUE(t.millisecond >= 0 && t.millisecond <= 999);
}

TEST(Clock, UtcOffsetWithinAllZones) {
  const int offset = vkt::platform::LocalToUtcSeconds();
  EXPECT_GE(offset, -14 * 3600);  // UTC+14 is the farthest east
  EXPECT_LE(offset, 12 * 3600);   // UTC-12 the farthest west
}

}  // namespace
