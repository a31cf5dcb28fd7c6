// Tests of COleDateTime and its spans against an independent calendar: fields, days, arithmetic, format.
#include "platform/DateTime.h"
#include <gtest/gtest.h>
#include <climits>
#include <cmath>
#include <cstdio>
#include <string>
#include "tests/support/Text.h"
using vkt::test::U;
// "status y-m-d h:m:s w<weekday, 1 for Sunday> d<day of the year>", all from the getters.
std::string Fields(const COleDateTime& t) {
  char text[160];
  std::snprintf(text, sizeof text, "%d %d-%d-%d %d:%d:%d w%d d%d", t.GetStatus(), t.GetYear(), t.GetMonth(),
                t.GetDay(), t.GetHour(), t.GetMinute(), t.GetSecond(), t.GetDayOfWeek(), t.GetDayOfYear());
  return text;
}
constexpr const char* kInvalid = "1 -1--1--1 -1:-1:-1 w-1 d-1";
COleDateTime Marked(COleDateTime t, COleDateTime::DateTimeStatus status) { return t.SetStatus(status), t; }
const COleDateTime kNull = Marked(COleDateTime(), COleDateTime::null);
const COleDateTimeSpan kBad = [] { COleDateTimeSpan s(1.0); s.SetStatus(s.invalid); return s; }();
// SetDateTime with the fields of `text` gives `serial`, and the serial reads back as `text`; a NaN serial
// marks fields that are refused, leaving the value as it was.
struct DateCase { const char* text; double serial; };
constexpr DateCase kDates[] = {
    {"0 1899-12-30 0:0:0 w7 d364", 0.0},  // the epoch
    {"0 1899-12-30 12:0:0 w7 d364", 0.5},
    {"0 1899-12-29 6:0:0 w6 d363", -1.25},  // before 0 the fraction counts forward
    {"0 1900-3-1 0:0:0 w5 d60", 61.0},  // 1900 has no 29 February
    {"0 2024-2-29 23:59:59 w5 d60", 45351.0 + 86399.0 / 86400},  // but 2024 has
    {"0 100-1-1 12:0:0 w6 d1", -657434.5},  // the first valid day
    {"0 9999-12-31 0:0:0 w6 d365", 2958465.0},  // the last
    {"1 99-12-31 0:0:0", NAN},
    {"1 10000-1-1 0:0:0", NAN},
    {"1 2024-4-31 0:0:0", NAN},
    {"1 2023-2-29 0:0:0", NAN},
    {"1 1900-2-29 0:0:0", NAN},
    {"1 2024-1-15 24:0:0", NAN},
    {"1 2024-1-15 0:60:0", NAN},
    {"1 2024-1-15 0:0:60", NAN},
};
TEST(COleDateTime, FieldsAndSerialsBothWays) {
  for (const DateCase& c : kDates) {
    int y = 0, mo = 0, d = 0, h = 0, mi = 0, s = 0;
    ASSERT_EQ(std::sscanf(c.text + 2, "%d-%d-%d %d:%d:%d", &y, &mo, &d, &h, &mi, &s), 6) << c.text;
    COleDateTime t(2001, 2, 3, 4, 5, 6);
    const double before = t.m_dt;
    const bool refused = std::isnan(c.serial);
    EXPECT_EQ(t.SetDateTime(y, mo, d, h, mi, s), c.text[0] - '0') << c.text;
    EXPECT_EQ(t.m_dt, refused ? before : c.serial) << c.text;
    EXPECT_EQ(Fields(refused ? t : COleDateTime(c.serial)), refused ? kInvalid : c.text);
  }
  COleDateTime t;
  EXPECT_TRUE(t.SetDate(2024, 2, 29) == 0 && t.m_dt == 45351.0 && t.SetTime(6, 0, 0) == 0 && t.m_dt == 0.25);
  EXPECT_TRUE(t.SetTime(24, 0, 0) == 1 && t.m_dt == 0.25 && COleDateTime(2958465.99999).GetSecond() == 59);
  for (double serial : {-657435.0, 2958466.0, std::nan(""), HUGE_VAL, -1e300})  // 31-12-99, 1-1-10000
    EXPECT_EQ((t = serial).GetStatus(), COleDateTime::invalid) << serial;
  std::tm tm{};
  tm.tm_year = 77;
  EXPECT_TRUE(!kNull.GetAsTm(tm) && tm.tm_year == 77 && Fields(kNull) == "2" + std::string(kInvalid + 1));
  ASSERT_TRUE(COleDateTime(2024, 3, 3, 14, 5, 6).GetAsTm(tm));
  EXPECT_TRUE(tm.tm_year == 124 && tm.tm_mon == 2 && tm.tm_min == 5 && tm.tm_sec == 6 && tm.tm_isdst == -1);
  EXPECT_EQ(Fields(COleDateTime(tm)), "0 2024-3-3 14:5:6 w1 d63");
  tm.tm_year = INT_MAX;  // + 1900 must not overflow
  EXPECT_EQ(COleDateTime(tm).GetStatus(), COleDateTime::invalid);
  EXPECT_GT(COleDateTime::GetCurrentTime().GetYear(), 2020);
}
// Every day from 1 January 100 (a Friday) to 31 December 9999 against month lengths and the leap rule.
TEST(COleDateTime, EveryDayOfTheCalendar) {
  static const int kMonthDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  int y = 100, m = 1, d = 1, yday = 0, wday = 5;
  for (long serial = -657434; serial <= 2958465 && !HasFailure(); ++serial) {
    std::tm tm{};
    if (!COleDateTime(static_cast<double>(serial)).GetAsTm(tm) || tm.tm_year + 1900 != y ||
        tm.tm_mon + 1 != m || tm.tm_mday != d || tm.tm_yday != yday || tm.tm_wday != wday || tm.tm_hour != 0)
      ADD_FAILURE() << "serial " << serial << " should be " << y << "-" << m << "-" << d;
    wday = (wday + 1) % 7;
    ++yday;
    if (++d > (m == 2 && ((y % 4 == 0 && y % 100 != 0) || y % 400 == 0) ? 29 : kMonthDays[m - 1])) {
      d = 1;
      if (++m > 12) m = 1, ++y, yday = 0;
    }
  }
  EXPECT_EQ(y, 10000);  // the walk ended exactly at the calendar's end
}
TEST(COleDateTime, ArithmeticAndOrder) {
  const COleDateTime last(9999, 12, 31, 23, 59, 59);
  const struct { COleDateTime date; COleDateTimeSpan span; const char* fields; } kSums[] = {
      {COleDateTime(2024, 2, 28, 0, 0, 0), COleDateTimeSpan(1.0), "0 2024-2-29 0:0:0 w5 d60"},
      {COleDateTime(-1.25), COleDateTimeSpan(0, 1, 0, 0), "0 1899-12-29 7:0:0 w6 d363"},
      {COleDateTime(-1.25), COleDateTimeSpan(1.0), "0 1899-12-30 6:0:0 w7 d364"},  // across the epoch
      {COleDateTime(100, 1, 1, 0, 0, 0), COleDateTimeSpan(0, 0, 0, -1), kInvalid},
      {last, COleDateTimeSpan(0, 0, 0, 1), kInvalid},
      {last - COleDateTimeSpan(1.0), kBad, kInvalid},
      {kNull, COleDateTimeSpan(1.0), "2 -1--1--1 -1:-1:-1 w-1 d-1"},
  };
  for (const auto& c : kSums) EXPECT_EQ(Fields(c.date + c.span), c.fields) << Fields(c.date);
  EXPECT_EQ((last + COleDateTimeSpan(0, 0, 0, 1)).m_dt, last.m_dt);  // the value stays, the status says no
  COleDateTime t(-1.25);                                               // 29 December 06:00
  EXPECT_EQ((t -= COleDateTimeSpan(0, 6, 0, 0)).m_dt, -1.0);  // exactly midnight: no fraction left
  EXPECT_EQ((t += COleDateTimeSpan(1.25)).m_dt, 0.25);
  const COleDateTime midnight(-1.0), six(-1.25), evening(-0.9);  // -0.9 is 30 December 21:36
  EXPECT_TRUE(midnight < six && six < evening && six <= six && evening > six && evening >= six);
  EXPECT_TRUE(COleDateTime(-0.5) == COleDateTime(0.5) && kNull != COleDateTime());  // the same moment
}
TEST(COleDateTimeSpan, PartsAndStatus) {
  const COleDateTime late(2024, 3, 3, 14, 5, 6);
  const COleDateTimeSpan eight(0, 8, 0, 0);
  const struct { COleDateTimeSpan span; const char* parts; } kParts[] = {  // status days h:m:s
      {COleDateTimeSpan(1, 2, 3, 4), "0 1 2:3:4"},
      {COleDateTimeSpan(0, -1, -30, 0), "0 0 -1:-30:0"},  // every part carries the sign
      {COleDateTimeSpan(0, 1, -30, 0), "0 0 0:30:0"},     // fields are summed, then split
      {COleDateTimeSpan(-2, 0, 0, 1), "0 -1 -23:-59:-59"},
      {COleDateTimeSpan(0.1), "0 0 2:24:0"},    // 8640.000000000002 seconds in doubles
      {-COleDateTimeSpan(0.7), "0 0 -16:-48:0"},  // 60479.99999999999 seconds: not 16:47:59
      {COleDateTime(9999, 12, 31, 23, 59, 59) - COleDateTime(100, 1, 1, 0, 0, 0), "0 3615899 23:59:59"},
      {COleDateTimeSpan(NAN), "1 0 0:0:0"},
      {COleDateTimeSpan(3615900.0), "0 3615900 0:0:0"},  // as long as the whole calendar
      {COleDateTimeSpan(-3615900.5), "1 0 0:0:0"},       // longer
      {eight + kBad, "1 0 0:0:0"},
      {-kBad, "1 0 0:0:0"},
      {kNull - late, "1 0 0:0:0"},
  };
  for (const auto& c : kParts) {
    char text[96];
    std::snprintf(text, sizeof text, "%d %ld %d:%d:%d", c.span.GetStatus(), c.span.GetDays(),
                  c.span.GetHours(), c.span.GetMinutes(), c.span.GetSeconds());
    EXPECT_EQ(std::string(text), c.parts) << c.span.m_span;
  }
  COleDateTimeSpan c = eight;
  EXPECT_EQ(((c += eight) -= COleDateTimeSpan(0, 0, 0, 1)).GetHours(), 15);
  EXPECT_TRUE(c > eight && eight < c && eight <= c && c >= eight && c != eight && eight != -kBad);
}
TEST(COleDateTime, Format) {
  const COleDateTime march(2024, 3, 3, 14, 5, 6);  // a Sunday, day 63 of a leap year
  const char16_t* all = u"%a|%b|%d|%H|%I|%j|%m|%M|%p|%S|%U|%w|%W|%y|%Y";
  const struct { COleDateTime date; const char16_t* format; const char16_t* expected; } kFormats[] = {
      {march, u"%Y.%m.%d %H:%M:%S|%#d|%#m|%#j|%#H|%#M|%#S|%#I", u"2024.03.03 14:05:06|3|3|63|14|5|6|2"},
      {march, u"%A|%B|%a|%b|%I|%j|%p|%U|%w|%W|%y", u"Sunday|March|Sun|Mar|02|063|PM|09|0|09|24"},
      {march, u"%c|%#c", u"03/03/24 14:05:06|Sunday, March 3, 2024 14:05:06"},
      {march, u"%x|%#x|%X", u"03/03/24|Sunday, March 3, 2024|14:05:06"},
      {march, u"100%%|a%nb%tc", u"100%|a\nb\tc"},
      {march, u"%Q%Z%z|%#Q", u"%Q%Z%z|%#Q"},  // unknown codes stay as they are
      {march, u"end%", u"end%"},
      {march, u"end%#", u"end%#"},
      {march, nullptr, u""},
      {Marked(march, COleDateTime::invalid), u"%Y", u"Invalid DateTime"},
      {Marked(march, COleDateTime::null), u"%Y", u""},
      {COleDateTime(2023, 1, 1, 0, 0, 0), all, u"Sun|Jan|01|00|12|001|01|00|AM|00|01|0|00|23|2023"},
      {COleDateTime(100, 1, 1, 0, 0, 0), all, u"Fri|Jan|01|00|12|001|01|00|AM|00|00|5|00|00|100"},
      {COleDateTime(9999, 12, 31, 23, 59, 59), all, u"Fri|Dec|31|23|11|365|12|59|PM|59|52|5|52|99|9999"},
  };
  for (const auto& c : kFormats) EXPECT_EQ(U(c.date.Format(c.format)), c.expected) << Fields(c.date);
}
