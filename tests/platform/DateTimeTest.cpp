// Tests of COleDateTime and COleDateTimeSpan: serial anchors, a walk over
// every day of the calendar against a plain leap-year counter, limits,
// negative serials, span parts and the percent format. Expected serials,
// weekdays and format texts were taken from an independent calendar.
#include "platform/DateTime.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <string>

namespace {

std::u16string Text(const CString& s) { return std::u16string(s.View()); }

struct Anchor {
  int year, month, day, hour, minute, second;
  double serial;
  int dayOfWeek;  // 1 for Sunday
  int dayOfYear;
};

constexpr Anchor kAnchors[] = {
    {1899, 12, 30, 0, 0, 0, 0.0, 7, 364},     // the epoch
    {1899, 12, 30, 12, 0, 0, 0.5, 7, 364},
    {1899, 12, 29, 6, 0, 0, -1.25, 6, 363},   // before 0 the fraction counts forward
    {1899, 12, 29, 18, 0, 0, -1.75, 6, 363},
    {1900, 1, 1, 0, 0, 0, 2.0, 2, 1},
    {1900, 2, 28, 0, 0, 0, 60.0, 4, 59},
    {1900, 3, 1, 0, 0, 0, 61.0, 5, 60},       // 1900 has no 29 February
    {2000, 1, 1, 0, 0, 0, 36526.0, 7, 1},
    {2000, 2, 29, 0, 0, 0, 36585.0, 3, 60},   // but 2000 has
    {2024, 1, 15, 0, 0, 0, 45306.0, 2, 15},
    {2024, 3, 3, 18, 0, 0, 45354.75, 1, 63},
    {1601, 1, 1, 0, 0, 0, -109205.0, 2, 1},
    {100, 1, 1, 0, 0, 0, -657434.0, 6, 1},    // first valid day
    {100, 1, 1, 12, 0, 0, -657434.5, 6, 1},
    {9999, 12, 31, 0, 0, 0, 2958465.0, 6, 365},  // last valid day
};

TEST(COleDateTime, AnchorsBothWays) {
  for (const Anchor& a : kAnchors) {
    SCOPED_TRACE(testing::Message() << a.year << "-" << a.month << "-" << a.day << " "
                                    << a.hour << "h, serial " << a.serial);
    COleDateTime built(a.year, a.month, a.day, a.hour, a.minute, a.second);
    EXPECT_EQ(built.GetStatus(), COleDateTime::valid);
    EXPECT_DOUBLE_EQ(built.m_dt, a.serial);

    COleDateTime read(a.serial);
    ASSERT_EQ(read.GetStatus(), COleDateTime::valid);
    EXPECT_EQ(read.GetYear(), a.year);
    EXPECT_EQ(read.GetMonth(), a.month);
    EXPECT_EQ(read.GetDay(), a.day);
    EXPECT_EQ(read.GetHour(), a.hour);
    EXPECT_EQ(read.GetMinute(), a.minute);
    EXPECT_EQ(read.GetSecond(), a.second);
    EXPECT_EQ(read.GetDayOfWeek(), a.dayOfWeek);
    EXPECT_EQ(read.GetDayOfYear(), a.dayOfYear);
  }
}

bool IsLeap(int y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; }

// Every day from 1 January 100 to 31 December 9999, serial by serial,
// against a counter that knows only month lengths and the leap rule.
TEST(COleDateTime, EveryDayOfTheCalendar) {
  static const int kMonthDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  int y = 100, m = 1, d = 1, yday = 1;
  int wday = 5;  // 1 January 100 was a Friday (tm_wday)
  int failures = 0;
  for (long serial = -657434; serial <= 2958465 && failures < 5; ++serial) {
    std::tm tm{};
    const COleDateTime date(static_cast<double>(serial));
    if (!date.GetAsTm(tm) || tm.tm_year + 1900 != y || tm.tm_mon + 1 != m || tm.tm_mday != d ||
        tm.tm_yday + 1 != yday || tm.tm_wday != wday || tm.tm_hour != 0) {
      ADD_FAILURE() << "serial " << serial << " should be " << y << "-" << m << "-" << d;
      ++failures;
    }
    if (serial % 53 == 0) {  // and back, on a stride that meets every weekday and month
      COleDateTime back;
      back.SetDate(y, m, d);
      if (back.m_dt != static_cast<double>(serial)) {
        ADD_FAILURE() << y << "-" << m << "-" << d << " gave " << back.m_dt;
        ++failures;
      }
    }
    const int monthLength = (m == 2 && IsLeap(y)) ? 29 : kMonthDays[m - 1];
    wday = (wday + 1) % 7;
    ++yday;
    if (++d > monthLength) {
      d = 1;
      if (++m > 12) {
        m = 1;
        ++y;
        yday = 1;
      }
    }
  }
  EXPECT_EQ(y, 10000);  // the walk ended exactly at the calendar's end
}

// Times of day round-trip on both sides of the epoch and at the limits.
TEST(COleDateTime, TimesRoundTrip) {
  const int kDays[][3] = {{1899, 12, 28}, {1899, 12, 29}, {1899, 12, 30}, {1899, 12, 31},
                          {100, 1, 1},    {2024, 2, 29},  {9999, 12, 31}};
  const int kSeconds[] = {0, 1, 59, 60, 3599, 43199, 43200, 43201, 86340, 86399};
  for (const auto& day : kDays) {
    for (int s : kSeconds) {
      COleDateTime t(day[0], day[1], day[2], s / 3600, s / 60 % 60, s % 60);
      ASSERT_EQ(t.GetStatus(), COleDateTime::valid);
      const COleDateTime copy(t.m_dt);
      EXPECT_EQ(copy.GetYear(), day[0]);
      EXPECT_EQ(copy.GetMonth(), day[1]);
      EXPECT_EQ(copy.GetDay(), day[2]) << day[0] << "-" << day[1] << "-" << day[2] << " +" << s;
      EXPECT_EQ(copy.GetHour() * 3600 + copy.GetMinute() * 60 + copy.GetSecond(), s)
          << day[0] << "-" << day[1] << "-" << day[2];
    }
  }
}

struct BadFields {
  int year, month, day, hour, minute, second;
  const char* why;
};

constexpr BadFields kBad[] = {
    {99, 12, 31, 0, 0, 0, "year below 100"},
    {10000, 1, 1, 0, 0, 0, "year above 9999"},
    {2024, 0, 1, 0, 0, 0, "month 0"},
    {2024, 13, 1, 0, 0, 0, "month 13"},
    {2024, 1, 0, 0, 0, 0, "day 0"},
    {2024, 1, 32, 0, 0, 0, "day 32"},
    {2024, 4, 31, 0, 0, 0, "31 April"},
    {2023, 2, 29, 0, 0, 0, "29 February, common year"},
    {1900, 2, 29, 0, 0, 0, "29 February 1900"},
    {2100, 2, 29, 0, 0, 0, "29 February 2100"},
    {2024, 2, 30, 0, 0, 0, "30 February"},
    {2024, 1, 15, 24, 0, 0, "hour 24"},
    {2024, 1, 15, -1, 0, 0, "hour -1"},
    {2024, 1, 15, 0, 60, 0, "minute 60"},
    {2024, 1, 15, 0, 0, 60, "second 60"},
    {2024, 1, 15, 0, 0, -1, "second -1"},
    {INT_MIN, INT_MIN, INT_MIN, INT_MIN, INT_MIN, INT_MIN, "all INT_MIN"},
    {INT_MAX, INT_MAX, INT_MAX, INT_MAX, INT_MAX, INT_MAX, "all INT_MAX"},
};

TEST(COleDateTime, SetDateTimeRefusesAndKeepsTheValue) {
  for (const BadFields& b : kBad) {
    COleDateTime t(2001, 2, 3, 4, 5, 6);
    const double before = t.m_dt;
    EXPECT_EQ(t.SetDateTime(b.year, b.month, b.day, b.hour, b.minute, b.second), 1) << b.why;
    EXPECT_EQ(t.GetStatus(), COleDateTime::invalid) << b.why;
    EXPECT_EQ(t.m_dt, before) << b.why;
    EXPECT_EQ(t.GetYear(), -1) << b.why;
    EXPECT_EQ(t.GetSecond(), -1) << b.why;
    EXPECT_EQ(COleDateTime(b.year, b.month, b.day, b.hour, b.minute, b.second).GetStatus(),
              COleDateTime::invalid)
        << b.why;
  }
  COleDateTime t;
  EXPECT_EQ(t.SetDateTime(2024, 2, 29, 23, 59, 59), 0);  // the last second of a leap day
  EXPECT_EQ(t.GetStatus(), COleDateTime::valid);
}

TEST(COleDateTime, FieldsAreMinusOneUnlessValid) {
  for (COleDateTime::DateTimeStatus status : {COleDateTime::invalid, COleDateTime::null}) {
    COleDateTime t(2024, 3, 3, 14, 5, 6);
    t.SetStatus(status);
    EXPECT_EQ(t.GetYear(), -1);
    EXPECT_EQ(t.GetMonth(), -1);
    EXPECT_EQ(t.GetDay(), -1);
    EXPECT_EQ(t.GetHour(), -1);
    EXPECT_EQ(t.GetMinute(), -1);
    EXPECT_EQ(t.GetSecond(), -1);
    EXPECT_EQ(t.GetDayOfWeek(), -1);
    EXPECT_EQ(t.GetDayOfYear(), -1);
    std::tm tm{};
    tm.tm_year = 77;
    EXPECT_FALSE(t.GetAsTm(tm));
    EXPECT_EQ(tm.tm_year, 77);  // untouched
  }
}

TEST(COleDateTime, SerialsOutsideTheCalendarAreInvalid) {
  const double kInvalid[] = {-657435.0,  // 31 December 99
                             2958466.0,  // 1 January 10000
                             std::nan(""), std::numeric_limits<double>::infinity(),
                             -std::numeric_limits<double>::infinity(), 1e300, -1e300};
  for (double serial : kInvalid) {
    EXPECT_EQ(COleDateTime(serial).GetStatus(), COleDateTime::invalid) << serial;
    COleDateTime assigned;
    assigned = serial;
    EXPECT_EQ(assigned.GetStatus(), COleDateTime::invalid) << serial;
  }
  EXPECT_EQ(COleDateTime(2958465.99999).GetSecond(), 59);  // 23:59:59.1, still 9999
  EXPECT_EQ(COleDateTime().GetStatus(), COleDateTime::valid);
  EXPECT_EQ(COleDateTime().m_dt, 0.0);
}

TEST(COleDateTime, SetDateAndSetTime) {
  COleDateTime t(2024, 3, 3, 14, 5, 6);
  EXPECT_EQ(t.SetDate(2024, 2, 29), 0);
  EXPECT_EQ(t.m_dt, 45351.0);  // midnight
  EXPECT_EQ(t.SetTime(6, 0, 0), 0);
  EXPECT_EQ(t.m_dt, 0.25);  // on the epoch's day
  EXPECT_EQ(t.SetTime(24, 0, 0), 1);
  EXPECT_EQ(t.m_dt, 0.25);
}

TEST(COleDateTime, NegativeSerialsOrderAndMoveByTime) {
  const COleDateTime midnight(-1.0);  // 29 December 00:00
  const COleDateTime six(-1.25);      // 29 December 06:00
  const COleDateTime evening(-0.9);   // 30 December 21:36: trunc(-0.9) is day 0
  EXPECT_TRUE(midnight < six);
  EXPECT_TRUE(six < evening);
  EXPECT_EQ(evening.GetDay(), 30);
  EXPECT_EQ(evening.GetHour(), 21);
  EXPECT_DOUBLE_EQ((six - midnight).GetTotalDays(), 0.25);

  COleDateTime t = six + COleDateTimeSpan(0, 1, 0, 0);
  EXPECT_EQ(t.GetHour(), 7);
  EXPECT_EQ(t.GetDay(), 29);
  EXPECT_LT(t.m_dt, -1.0);

  t = six + COleDateTimeSpan(1.0);  // across the epoch
  EXPECT_DOUBLE_EQ(t.m_dt, 0.25);
  t -= COleDateTimeSpan(1.0);
  EXPECT_DOUBLE_EQ(t.m_dt, -1.25);
  t -= COleDateTimeSpan(0, 6, 0, 0);  // exactly midnight: no fraction left
  EXPECT_DOUBLE_EQ(t.m_dt, -1.0);
}

TEST(COleDateTime, ArithmeticWithSpans) {
  const COleDateTimeSpan day(1.0);
  EXPECT_EQ(COleDateTime(2024, 1, 31, 0, 0, 0) + day, COleDateTime(2024, 2, 1, 0, 0, 0));
  EXPECT_EQ(COleDateTime(2024, 2, 28, 0, 0, 0) + day, COleDateTime(2024, 2, 29, 0, 0, 0));
  EXPECT_EQ(COleDateTime(2023, 2, 28, 0, 0, 0) + day, COleDateTime(2023, 3, 1, 0, 0, 0));
  EXPECT_EQ(COleDateTime(1900, 2, 28, 0, 0, 0) + day, COleDateTime(1900, 3, 1, 0, 0, 0));
  EXPECT_EQ(COleDateTime(2024, 1, 1, 0, 0, 0) - COleDateTimeSpan(0, 0, 0, 1),
            COleDateTime(2023, 12, 31, 23, 59, 59));

  const COleDateTimeSpan diff =
      COleDateTime(2024, 3, 3, 14, 5, 6) - COleDateTime(2024, 3, 1, 0, 0, 0);
  EXPECT_EQ(diff.GetStatus(), COleDateTimeSpan::valid);
  EXPECT_EQ(diff.GetDays(), 2);
  EXPECT_EQ(diff.GetHours(), 14);
  EXPECT_EQ(diff.GetMinutes(), 5);
  EXPECT_EQ(diff.GetSeconds(), 6);
  EXPECT_EQ((COleDateTime(2024, 3, 1, 0, 0, 0) - COleDateTime(2024, 3, 3, 14, 5, 6)).GetHours(),
            -14);
}

TEST(COleDateTime, ArithmeticAtTheEdgesAndWithBadOperands) {
  COleDateTime last(9999, 12, 31, 23, 59, 59);
  const COleDateTime past = last + COleDateTimeSpan(0, 0, 0, 1);
  EXPECT_EQ(past.GetStatus(), COleDateTime::invalid);
  EXPECT_EQ(past.m_dt, last.m_dt);  // the value stays, only the status says no
  EXPECT_EQ((COleDateTime(100, 1, 1, 0, 0, 0) - COleDateTimeSpan(0, 0, 0, 1)).GetStatus(),
            COleDateTime::invalid);

  COleDateTimeSpan badSpan(1.0);
  badSpan.SetStatus(COleDateTimeSpan::invalid);
  EXPECT_EQ((last - COleDateTimeSpan(1.0) + badSpan).GetStatus(), COleDateTime::invalid);

  COleDateTime nullDate;
  nullDate.SetStatus(COleDateTime::null);
  EXPECT_EQ((nullDate + COleDateTimeSpan(1.0)).GetStatus(), COleDateTime::null);
  EXPECT_EQ((nullDate - last).GetStatus(), COleDateTimeSpan::invalid);
  EXPECT_EQ((last - nullDate).GetStatus(), COleDateTimeSpan::invalid);
}

TEST(COleDateTime, Comparisons) {
  const COleDateTime a(2024, 3, 3, 14, 5, 6);
  const COleDateTime b(2024, 3, 3, 14, 5, 7);
  EXPECT_TRUE(a < b && a <= b && b > a && b >= a && a != b);
  EXPECT_TRUE(a <= a && a >= a && a == COleDateTime(2024, 3, 3, 14, 5, 6));
  COleDateTime nulled(a);
  nulled.SetStatus(COleDateTime::null);
  EXPECT_NE(a, nulled);  // same moment, different status
  EXPECT_EQ(COleDateTime(-0.5), COleDateTime(0.5));  // both 30 December 12:00
}

TEST(COleDateTime, BrokenDownTime) {
  std::tm tm{};
  ASSERT_TRUE(COleDateTime(2024, 3, 3, 14, 5, 6).GetAsTm(tm));
  EXPECT_EQ(tm.tm_year, 124);
  EXPECT_EQ(tm.tm_mon, 2);
  EXPECT_EQ(tm.tm_mday, 3);
  EXPECT_EQ(tm.tm_hour, 14);
  EXPECT_EQ(tm.tm_min, 5);
  EXPECT_EQ(tm.tm_sec, 6);
  EXPECT_EQ(tm.tm_wday, 0);
  EXPECT_EQ(tm.tm_yday, 62);
  EXPECT_EQ(COleDateTime(tm), COleDateTime(2024, 3, 3, 14, 5, 6));

  tm.tm_year = INT_MAX;  // + 1900 must not overflow
  EXPECT_EQ(COleDateTime(tm).GetStatus(), COleDateTime::invalid);
  tm.tm_year = 124;
  tm.tm_mon = 12;
  EXPECT_EQ(COleDateTime(tm).GetStatus(), COleDateTime::invalid);
}

TEST(COleDateTime, CurrentTimeIsValidAndRecent) {
  const COleDateTime now = COleDateTime::GetCurrentTime();
  EXPECT_EQ(now.GetStatus(), COleDateTime::valid);
  EXPECT_GE(now.GetYear(), 2020);
}

struct FormatCase {
  const char16_t* format;
  const char16_t* expected;
};

// 3 March 2024 14:05:06, a Sunday, day 63 of a leap year.
constexpr FormatCase kFormat[] = {
    {u"%Y.%m.%d %H:%M:%S", u"2024.03.03 14:05:06"},
    {u"%Y.%m.%d", u"2024.03.03"},
    {u"%a|%A|%b|%B", u"Sun|Sunday|Mar|March"},
    {u"%d|%H|%I|%j|%m|%M|%p|%S", u"03|14|02|063|03|05|PM|06"},
    {u"%U|%w|%W|%y|%Y", u"09|0|09|24|2024"},
    {u"%#d|%#m|%#j|%#H|%#M|%#S|%#I|%#y", u"3|3|63|14|5|6|2|24"},
    {u"%c", u"03/03/24 14:05:06"},
    {u"%#c", u"Sunday, March 3, 2024 14:05:06"},
    {u"%x|%#x|%X", u"03/03/24|Sunday, March 3, 2024|14:05:06"},
    {u"100%%", u"100%"},
    {u"a%nb%tc", u"a\nb\tc"},
    {u"%Q%Z%z", u"%Q%Z%z"},  // unknown codes stay as they are
    {u"%#Q", u"%#Q"},
    {u"end%", u"end%"},
    {u"end%#", u"end%#"},
    {u"", u""},
    {u"2024年%#m月%#d日", u"2024年3月3日"},
};

TEST(COleDateTimeFormat, Table) {
  const COleDateTime t(2024, 3, 3, 14, 5, 6);
  for (const FormatCase& c : kFormat) {
    EXPECT_EQ(Text(t.Format(c.format)), c.expected) << testing::PrintToString(c.format);
  }
}

struct DatedFormatCase {
  int year, month, day, hour, minute, second;
  const char16_t* expected;
};

constexpr const char16_t* kAllCodes = u"%a|%A|%b|%B|%d|%H|%I|%j|%m|%M|%p|%S|%U|%w|%W|%y|%Y";

constexpr DatedFormatCase kDated[] = {
    {2023, 1, 1, 0, 0, 0, u"Sun|Sunday|Jan|January|01|00|12|001|01|00|AM|00|01|0|00|23|2023"},
    {2021, 12, 31, 12, 59, 59,
     u"Fri|Friday|Dec|December|31|12|12|365|12|59|PM|59|52|5|52|21|2021"},
    {100, 1, 1, 0, 0, 0, u"Fri|Friday|Jan|January|01|00|12|001|01|00|AM|00|00|5|00|00|100"},
    {9999, 12, 31, 23, 59, 59,
     u"Fri|Friday|Dec|December|31|23|11|365|12|59|PM|59|52|5|52|99|9999"},
    {1899, 12, 29, 6, 0, 0, u"Fri|Friday|Dec|December|29|06|06|363|12|00|AM|00|52|5|52|99|1899"},
};

TEST(COleDateTimeFormat, EveryCodeOnSeveralDates) {
  for (const DatedFormatCase& c : kDated) {
    const COleDateTime t(c.year, c.month, c.day, c.hour, c.minute, c.second);
    EXPECT_EQ(Text(t.Format(kAllCodes)), c.expected) << c.year << "-" << c.month << "-" << c.day;
  }
}

TEST(COleDateTimeFormat, StatusAndNullFormat) {
  COleDateTime t(2024, 3, 3, 14, 5, 6);
  EXPECT_EQ(Text(t.Format(nullptr)), u"");
  t.SetStatus(COleDateTime::invalid);
  EXPECT_EQ(Text(t.Format(u"%Y")), u"Invalid DateTime");
  t.SetStatus(COleDateTime::null);
  EXPECT_EQ(Text(t.Format(u"%Y")), u"");
}

TEST(COleDateTimeSpan, PartsCarryTheSign) {
  struct Case {
    long days;
    int hours, minutes, seconds;
    long wantDays;
    int wantHours, wantMinutes, wantSeconds;
  };
  const Case kCases[] = {
      {1, 2, 3, 4, 1, 2, 3, 4},
      {0, -1, -30, 0, 0, -1, -30, 0},
      {0, 1, -30, 0, 0, 0, 30, 0},         // fields are summed, then split
      {0, -8, 0, -1, 0, -8, 0, -1},        // a zone offset less one second
      {0, 0, 0, -1, 0, 0, 0, -1},
      {0, 25, 0, 0, 1, 1, 0, 0},
      {-2, 0, 0, 1, -1, -23, -59, -59},
      {0, 0, 0, 86399, 0, 23, 59, 59},
  };
  for (const Case& c : kCases) {
    const COleDateTimeSpan s(c.days, c.hours, c.minutes, c.seconds);
    SCOPED_TRACE(testing::Message() << c.days << "d " << c.hours << "h " << c.minutes << "m "
                                    << c.seconds << "s");
    EXPECT_EQ(s.GetStatus(), COleDateTimeSpan::valid);
    EXPECT_EQ(s.GetDays(), c.wantDays);
    EXPECT_EQ(s.GetHours(), c.wantHours);
    EXPECT_EQ(s.GetMinutes(), c.wantMinutes);
    EXPECT_EQ(s.GetSeconds(), c.wantSeconds);
  }
}

TEST(COleDateTimeSpan, TotalsAndRounding) {
  const COleDateTimeSpan s(1, 12, 0, 0);
  EXPECT_DOUBLE_EQ(s.GetTotalDays(), 1.5);
  EXPECT_DOUBLE_EQ(s.GetTotalHours(), 36.0);
  EXPECT_DOUBLE_EQ(s.GetTotalMinutes(), 2160.0);
  EXPECT_DOUBLE_EQ(s.GetTotalSeconds(), 129600.0);
  // 0.1 day is 8640.000000000002 seconds in doubles: parts round to 2:24:00.
  const COleDateTimeSpan tenth(0.1);
  EXPECT_EQ(tenth.GetHours(), 2);
  EXPECT_EQ(tenth.GetMinutes(), 24);
  EXPECT_EQ(tenth.GetSeconds(), 0);
  // 0.7 day is 60479.99999999999 seconds: 16:48:00, not 16:47:59.
  const COleDateTimeSpan seventh(0.7);
  EXPECT_EQ(seventh.GetHours(), 16);
  EXPECT_EQ(seventh.GetMinutes(), 48);
  EXPECT_EQ(seventh.GetSeconds(), 0);
  EXPECT_EQ((-seventh).GetMinutes(), -48);
}

TEST(COleDateTimeSpan, ArithmeticAndStatus) {
  const COleDateTimeSpan a(0, 8, 0, 0);
  const COleDateTimeSpan b(0, 0, 0, -1);
  EXPECT_EQ((a + b).GetMinutes(), 59);
  EXPECT_EQ((a - b).GetSeconds(), 1);
  EXPECT_EQ((-a).GetHours(), -8);
  COleDateTimeSpan c = a;
  c += a;
  EXPECT_EQ(c.GetHours(), 16);
  c -= a;
  EXPECT_EQ(c, a);
  EXPECT_TRUE(b < a && a > b && b <= a && a >= b && a != b);

  COleDateTimeSpan bad(1.0);
  bad.SetStatus(COleDateTimeSpan::invalid);
  EXPECT_EQ((a + bad).GetStatus(), COleDateTimeSpan::invalid);
  EXPECT_EQ((bad - a).GetStatus(), COleDateTimeSpan::invalid);
  EXPECT_EQ((-bad).GetStatus(), COleDateTimeSpan::invalid);
  EXPECT_EQ(bad.GetHours(), 0);
  EXPECT_EQ(bad.GetDays(), 0);

  EXPECT_EQ(COleDateTimeSpan(std::nan("")).GetStatus(), COleDateTimeSpan::invalid);
  EXPECT_EQ(COleDateTimeSpan(1e12).GetStatus(), COleDateTimeSpan::invalid);
  EXPECT_EQ(COleDateTimeSpan(LONG_MAX, INT_MAX, INT_MAX, INT_MAX).GetStatus(),
            COleDateTimeSpan::invalid);
  // The whole calendar is the longest span there is.
  const COleDateTimeSpan whole =
      COleDateTime(9999, 12, 31, 23, 59, 59) - COleDateTime(100, 1, 1, 0, 0, 0);
  EXPECT_EQ(whole.GetStatus(), COleDateTimeSpan::valid);
  EXPECT_EQ(whole.GetDays(), 3615899);
}

}  // namespace
