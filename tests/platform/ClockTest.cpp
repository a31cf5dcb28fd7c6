// Tests of the clock readings: the 1601 epoch, the system time against the C library's, local fields.
#include "platform/Clock.h"
#include <gtest/gtest.h>
#include <cstdint>
#include <ctime>
namespace pf = vkt::platform;
TEST(Clock, ReadingsAgreeAndStayInRange) {
  EXPECT_EQ(pf::kUnitsFrom1601To1970, 134774ULL * 86400 * 10000000);  // 369 years with 89 leap days
  const std::uint64_t ms = pf::SystemTimeSince1601() / 10000;
  const std::uint64_t byTime = (std::time(nullptr) * 10000000ULL + pf::kUnitsFrom1601To1970) / 10000;
  EXPECT_LT(ms > byTime ? ms - byTime : byTime - ms, 5000u);  // the C library's clock, within a few seconds
  const pf::LocalTime t = pf::LocalTimeNow();
  const int offset = pf::LocalToUtcSeconds();  // from UTC+14 to UTC-12
  auto in = [](int v, int low, int high) { return v >= low && v <= high; };
  EXPECT_TRUE(t.year >= 2020 && in(t.month, 1, 12) && in(t.day, 1, 31) && in(offset, -50400, 43200));
  EXPECT_TRUE(in(t.dayOfWeek, 0, 6) && in(t.hour, 0, 23) && in(t.minute, 0, 59) && in(t.second, 0, 59));
  EXPECT_TRUE(in(t.millisecond, 0, 999));
}
