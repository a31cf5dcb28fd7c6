// tests/numtext/DateTextTest.cpp: date text read by String2Time and the tests on it, spreadsheet serials,
// the English names, letter pictures (FormatDate) and percent formats with zone offsets in several zones.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>

#include "VKTCalc.h"
#include "tests/support/Text.h"

namespace {

using vkt::test::Row;
using vkt::test::U;
using Calc = CUtilityCalc;
std::u16string Show(const COleDateTime& t) {
  return t.GetStatus() == COleDateTime::valid ? U(t.Format(u"%Y-%m-%d %H:%M:%S"))
                                              : t.GetStatus() == COleDateTime::null ? u"null" : u"invalid";
}
constexpr struct { const char16_t* text; int bDateOnly, result; const char16_t* out; } kRead[] = {
    {nullptr, 0, 1, u"null"},
    {u"", 0, 0, u"null"},
    {u"   ", 0, 1, u"null"},  // blanks stand for no date
    {u"2024/01\\15 8:30", 0, 1, u"2024-01-15 08:30:00"},  // the separators may differ
    {u"  2024.1.15 08:30:15", 0, 1, u"2024-01-15 08:30:15"},
    {u"1000-1-1", 0, 1, u"1000-01-01 00:00:00"},
    {u"999-1-1", 0, 0, u"null"},
    {u"24-1-15", 0, 0, u"null"},
    {u"1/15/2024", 0, 0, u"null"},  // a third day digit
    {u"2024-1", 0, 0, u"null"},     // one separator
    {u"2024-0-1", 0, 0, u"null"},
    {u"2023-2-29", 0, 0, u"null"},
    {u"2024-2-29", 0, 1, u"2024-02-29 00:00:00"},
    {u"2024-1-15 24:00", 0, 0, u"null"},  // passes the field ranges, refused by the calendar
    {u"2024-1-15 zz", 1, 1, u"2024-01-15 00:00:00"},
    {u"2024-1-15 zz", 0, 0, u"null"},
    {u"2024-1-15-08:30", 0, 1, u"2024-01-15 08:30:00"},  // a date separator behind the day leads on
    {u"2024-1-15-08:30", 1, 1, u"2024-01-15 08:30:00"},  // only a blank stops a date-only reading
    {u"2024-1-15 ", 0, 1, u"2024-01-15 00:00:00"},
    {u"2024-1-15 08:30 ", 0, 0, u"null"},  // a blank only behind the day
    {u"2024-1-15 08:30:15.9x!", 0, 1, u"2024-01-15 08:30:15"},  // nothing behind that point is read
    {u"2024-1-15 08:30:15:1", 0, 0, u"null"},
    {u"2024:1:15", 0, 0, u"null"},
    {u"0000-00-00", 0, 1, u"null"},  // the zero date
    {u"00000000", 0, 1, u"null"},
    {u"20240115", 0, 1, u"2024-01-15 00:00:00"},
    {u"2024011", 0, 0, u"null"},
    {u" 2024-01-15T08:30:00", 1, 1, u"2024-01-15 08:30:00"},  // a T hands the text on, time and all
    {u"15.1.2024T", 0, 0, u"null"},
};
TEST(DateText, String2Time) {
  for (const auto& c : kRead) {
    COleDateTime t(2000, 1, 1, 0, 0, 0);
    EXPECT_EQ(Calc::String2Time(c.text, &t, c.bDateOnly), c.result) << Row(c.text);
    EXPECT_EQ(Show(t), c.out) << Row(c.text) << " dateOnly " << c.bDateOnly;
    EXPECT_EQ(Calc::String2Time(c.text, nullptr, c.bDateOnly), c.result) << Row(c.text);
  }
}
constexpr struct { const char16_t *value, *low, *high; int result; const char16_t* after; } kValid[] = {
    {u"abc", u"", u"", 1, u"abc"},  // no bounds: nothing is read
    {u"abc", u"2024-1-1", u"", 0, u""},
    {u"abc", u"", u"2024-1-1", 1, u""},
    {u"2024-1-15 23:00", u"2024-1-15 23:30", u"2024-1-15 01:00", 1, u"2024-1-15 23:00"},  // times ignored
    {u"2024-1-14", u"2024-1-15", u"", 0, u"2024-1-14"},
    {u"2024-1-16", u"", u"2024-1-15", 0, u"2024-1-16"},
    {u"2024-1-15", u"xx", u"2024-1-1", 0, u"2024-1-15"},  // an unreadable low is no bound
    {u"2024-1-15", u"", u"xx", 1, u"2024-1-15"},
    {u"2024-1-15", u"   ", u"", 1, u"2024-1-15"},  // a low bound that stands for no date
    {u"2024-1-15", u"", u"0000-00-00", 0, u"2024-1-15"},  // a high one: every date lies after it
    {u"   ", u"2024-1-1", u"", 0, u"   "},                    // no date comes first
};
TEST(DateText, IsValidDate) {
  for (const auto& c : kValid) {
    CString value(c.value), low(c.low), high(c.high);
    EXPECT_EQ(Calc::IsValidDate(value, low, high), c.result) << Row(c.value) << " " << Row(c.low);
    EXPECT_EQ(U(value), c.after) << Row(c.value) << " " << Row(c.low);
  }
}
// "" is the null date, "!" an invalid one.
constexpr struct { const char16_t *a, *b; int bDateOnly, result; } kCompare[] = {
    {u"2024-1-15 08:00", u"2024-1-15 09:00", 0, -1},
    {u"2024-1-15 08:00", u"2024-1-15 09:00", 1, 0},
    {u"2024-1-16", u"2024-1-15 23:00", 1, 1},
    {u"2023-12-31", u"2024-1-1", 1, -1},  // the year decides first
    {u"2024-1-15", u"2024-1-15", 0, 0},
    {u"!", u"1000-1-1", 0, -1},  // a date that is not valid comes first
    {u"1000-1-1", u"", 1, 1},
    {u"!", u"", 0, 0},
};
TEST(DateText, CompareAndLastDay) {
  for (const auto& c : kCompare) {
    COleDateTime a, b;
    Calc::String2Time(c.a, &a, 0);
    Calc::String2Time(c.b, &b, 0);
    if (*c.a == u'!') a.SetStatus(COleDateTime::invalid);
    EXPECT_EQ(Calc::CompareDateTime(a, b, c.bDateOnly), c.result) << Row(c.a) << " vs " << Row(c.b);
  }
  constexpr int kLast[][3] = {  // year, month, last day
      {2024, 2, 29},
      {2023, 2, 28},
      {9999, 12, 31},
      {2024, 13, 0},  // no day makes a date: 0
      {2024, 0, 0},
      {10000, 1, 0},
  };
  for (const auto& c : kLast) EXPECT_EQ(Calc::GetLastDayOfMonth(c[0], c[1]), c[2]) << c[0] << "-" << c[1];
}
// A serial, the kind and date it reads as, and the serial that date gives back.
constexpr struct { const char16_t* serial; int kind; const char16_t *date, *back; } kSerial[] = {
    {u"1", 4, u"1900-01-01 00:00:00", u""},  // nothing is written before 1901
    {u"59", 4, u"1900-02-28 00:00:00", u""},
    {u"60", 4, u"1900-03-01 00:00:00", u""},  // day 60 is a day the calendar lacks
    {u"61", 4, u"1900-03-01 00:00:00", u""},
    {u"367", 4, u"1901-01-01 00:00:00", u"367"},
    {u"45306", 4, u"2024-01-15 00:00:00", u"45306"},
    {u"45306.5", 3, u"2024-01-15 12:00:00", u"45306.5"},
    {u"45306.00001", 3, u"2024-01-15 00:00:01", u"45306.00001157407407"},  // whole seconds; 15 digits back
    {u"abc", 4, u"1899-12-31 00:00:00", u""},
    {u"-2147483648", 4, u"invalid", u""},
    {u"1.5e300", 3, u"1968-01-20 03:14:07", u"24857.13480324074074"},  // the seconds saturate
};
TEST(DateText, SpreadsheetSerials) {
  for (const auto& c : kSerial) {
    CString serial(c.serial), back(u"old");
    COleDateTime t;
    EXPECT_EQ(Calc::ECMADateTimeToDateTime(t, serial), c.kind) << Row(c.serial);
    EXPECT_EQ(Show(t), c.date) << Row(c.serial);
    EXPECT_EQ(Calc::DateTimeToECMADateTime(t, back), 4) << Row(c.serial);
    EXPECT_EQ(U(back), c.back) << Row(c.serial);
  }
}
constexpr struct { const char16_t *date, *picture, *expected; } kPicture[] = {
    {u"2024-1-5 08:03:09", u"YYYY-MM-DD", u"2024-01-05"},
    {u"2024-1-5 08:03:09", u"YYYY年M月D日", u"2024年1月5日"},
    {u"2024-1-5 08:03:09", u"yy/mm/dd", u"24/01/05"},
    {u"2024-1-5 08:03:09", u"YYYY-mm-dd", u"2024-01-05"},
    {u"2024-1-5 08:03:09", u"YYYY-MM-DD HH:mm:SS", u"2024-01-05 08:03:09"},
    {u"2024-1-5 08:03:09", u"YYYY-MM-DD hh:mm:ss", u"2024-01-05 08:03:09"},
    {u"2024-1-5 08:03:09", u"hh点mm分", u"08点03分"},
    {u"2024-1-5 08:03:09", u"H:m:s", u"8:3:9"},
    {u"2024-1-5 08:03:09", u"M/D/Y", u"1/5/2024"},
    {u"2024-1-5 08:03:09", u"Month D, YYYY", u"January 5, 2024"},
    {u"2024-1-5 08:03:09", u"Mon. D, YYYY", u"Jan. 5, 2024"},
    {u"2024-1-5 08:03:09", u"Mon D", u"January 5"},
    {u"2024-1-5 08:03:09", u"Day, Month D", u"Friday, January 5"},
    {u"2024-1-5 08:03:09", u"Day.", u"Fri."},
    {u"2024-1-5 08:03:09", u"YYYY-mm-dd hh:mm", u"2024-01-05 08:MM"},  // every m became M
    {u"2024-1-5 08:03:09", u"Month D hh:mm", u"January 5 08:MM"},
    {u"2024-1-5 08:03:09", u"YYYYY MMM", u"2024Y 01M"},
    {u"2024-1-5", u"H:m:s", u"::"},  // the number 0 in a one-letter field gives nothing
    {u"2024-5-2", u"Month.", u"May"},  // May has no short form: the point goes with the field
    {u"2024-9-3", u"Month. Day.", u"Sept. Tues."},
    {u"2024-1-5", u"Date", u"5ate"},  // letters of words are fields
    {u"abc", u"YYYY", u"abc"},
    {u"  ", u"Y-M-D Day Month", u"-1-M--1  "},  // no date: what the getters answer
};
TEST(DateText, FormatDate) {
  for (const auto& c : kPicture) {
    CString date(c.date), picture(c.picture);
    Calc::FormatDate(date, picture);
    EXPECT_EQ(U(picture), c.expected) << Row(c.date) << " " << Row(c.picture);
  }
}
TEST(DateText, NamesAndClock) {
  const auto month = [](int i) { return U(Calc::GetEnglishMonth(i)) + u"|"; };
  const auto day = [](int i) { return U(Calc::GetEnglishDay(i)) + u"|"; };
  EXPECT_EQ(month(-1) + month(0) + month(11) + month(12), u"<null>|January|December|<null>|");
  EXPECT_EQ(day(-1) + day(0) + day(6) + day(7), u"<null>|Sunday|Saturday|<null>|");
  EXPECT_EQ(U(g_arrWeekDay[0]) + U(g_arrWeekDay[6]), u"日六");
  constexpr struct { int bDate, bTime, bMilli; const char16_t* shape; } kClock[] = {  // every digit as 9
      {1, 1, 1, u"9999-99-99 99:99:99.999"},
      {0, 1, 0, u"99:99:99"},
      {1, 0, 1, u"9999-99-99.999"},
      {0, 0, 1, u"999"},
      {0, 0, 0, u""},
  };
  for (const auto& c : kClock) {
    CString out(u"old");
    Calc::GetDateTime(out, c.bDate, c.bTime, c.bMilli);
    std::u16string shape = U(out);
    for (char16_t& ch : shape) ch = ch >= u'0' && ch <= u'9' ? u'9' : ch;
    EXPECT_EQ(shape, c.shape) << c.bDate << c.bTime << c.bMilli;
  }
}
// Zone offsets in fixed POSIX zones. The zone is read once per process, so each row runs in a child
// started afresh, which sets TZ before the first reading.
constexpr struct { const char* tz; const char16_t *format, *expected; } kZone[] = {
    {"EST5", u"%H:%M:%S %Z", u"08:03:09 -04:59"},  // west: the second taken off shows as a minute
    {"EST5", u"%H:%M/Z %z", u"13:03 -04:59"},      // moved to UTC; the zone text is the local one
    {"UTC0", u"%Y %Z/z", u"2024 +00:00"},
    {"CST-8", u"%d %H:%M/Z %Z", u"05 00:03 +08:00"},
    {"IST-5:30", u"%Z", u"+05:30"},
    {"NST3:30", u"%Z", u"-03:29"},
    {"CST-8", nullptr, u"2024.01.05 08:03:09"},  // the process-wide format; nothing moves
};
TEST(DateText, MyFormatDateTimeZones) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  for (const auto& c : kZone) {
    EXPECT_EXIT(
        {
          setenv("TZ", c.tz, 1);
          tzset();
          COleDateTime value(2024, 1, 5, 8, 3, 9);
          CString out;
          Calc::MyFormatDateTime(out, value, c.format);
          std::fprintf(stderr, "got [%s]", out.ToUtf8().c_str());
          std::exit(U(out) == c.expected ? 0 : 1);
        },
        testing::ExitedWithCode(0), "")
        << c.tz << " " << Row(c.format);
  }
}

}  // namespace
