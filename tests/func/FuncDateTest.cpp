// Tests of the 27 date built-ins through whole calculations: adding, differences, work days, periods,
// fields, week numbers, the clock and comparing, and the bad calls.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "VKTCalc.h"
#include "tests/support/TestHost.h"

namespace {

// Formula and the run's Summary(): "[kind] value", or "[kind] -1 1072: text" for a bad call.
const std::pair<const char16_t*, const char16_t*> kDates[] = {
    {u"=dateAddMonths('2024-01-31',1)", u"[4] 2024.02.29 00:00:00"},   // day lowered to the month's end
    {u"=dateAddMonths('2024-03-31',-13)", u"[4] 2023.02.28 00:00:00"},  // carries below January
    {u"=dateAddMonths('2023-12-15 10:20:30',1)", u"[4] 2024.01.15 10:20:30"},
    {u"=dateAddYears('2024-02-29',1)", u"[4] 2025.02.28 00:00:00"},
    {u"=dateAddYears('2024-02-29',4)", u"[4] 2028.02.29 00:00:00"},
    {u"=dateAddYears('2024-01-31',1.9)", u"[4] 2025.01.31 00:00:00"},   // truncated
    {u"=dateAddMonths('2024-01-15',1.9)", u"[4] 2024.03.15 00:00:00"},  // rounded
    {u"=dateAddDays('2024-02-28',2)", u"[4] 2024.03.01 00:00:00"},
    {u"=dateAddDays('2024-03-01',-1)", u"[4] 2024.02.29 00:00:00"},
    {u"=dateAddHours('2024-12-31 23:00:00',1.5)", u"[3] 2025.01.01 01:00:00"},
    {u"=dateAddMinutes('2024-01-01',-1)", u"[3] 2023.12.31 23:59:00"},
    {u"=dateAddYears('9999-12-31',1)", u"[4] Invalid DateTime"},
    {u"=dateAddYears('2024-01-01','-99999999999')", u"[4] Invalid DateTime"},  // saturated amount
    {u"=dateAddMonths('2024-01-01',99999999999)", u"[4] Invalid DateTime"},
    {u"=dateAddDays('2024-01-01',pow(10,300))", u"[4] Invalid DateTime"},
    {u"=dateAddHours('2024-01-01','-1e300')", u"[3] Invalid DateTime"},
    {u"=dateAddYears('2024-01-01','1e300')", u"[4] 2025.01.01 00:00:00"},  // _wtoi stops at the e
    {u"=dateAddMinutes('2024-01-01','nan')", u"[3] 2024.01.01 00:00:00"},
    {u"=dateAddYears('2024-01-01','nan')", u"[4] 2024.01.01 00:00:00"},
    {u"=dateAddYears(' ',1)", u"[4] Invalid DateTime"},  // no date: its fields are -1
    {u"=dateDifYears('2023-12-31','2024-01-01')", u"[2] 1"},
    {u"=dateDifMonths('2023-12-31','2024-01-01')", u"[2] 1"},
    {u"=dateDifMonths('2024-01-31','2023-03-01')", u"[2] -10"},
    {u"=dateDifDays('2023-12-31','2024-01-01')", u"[2] 1"},
    {u"=dateDifDays('2024-01-01 23:00:00','2024-01-02 01:00:00')", u"[2] 0"},
    {u"=dateDifDays('2024-03-01','2024-02-01')", u"[2] -29"},
    {u"=dateDifHours('2024-01-01 23:00:00','2024-01-02 01:00:00')", u"[2] 2"},
    {u"=dateDifHours('2024-01-02 01:00:00','2024-01-01 23:00:00')", u"[2] -1"},  // nudged towards 0
    {u"=dateDifMinutes('2024-01-01 23:00:00','2024-01-02 01:00:00')", u"[2] 120"},
    {u"=dateDifMinutes('1000-01-01','9999-12-31')", u"[2] 2147483647"},  // 4.7e9 saturates
    {u"=dateDifMinutes('9999-12-31','1000-01-01')", u"[2] -2147483648"},
    {u"=dateDifWorkDays('2024-01-01','2024-01-08')", u"[2] 5"},  // Monday to Monday
    {u"=dateDifWorkDays('2024-01-08','2024-01-01')", u"[2] -5"},
    {u"=dateDifWorkDays('2024-01-01','2024-01-08','6-,7')", u"[2] 6"},  // 5.5 rounds up
    {u"=dateDifWorkDays('2024-01-01','2024-01-08','d1')", u"[2] 6"},    // weekends worked
    {u"=dateDifWorkDays('2024-01-01','2024-01-08','d7,7-')", u"[2] 7"},  // weekday rule wins: 6.5
    {u"=dateDifWorkDays('2024-01-01','2024-01-08','x,,-,d,d-,d32,8,0')", u"[2] 5"},  // no rule
    {u"=dateDifWorkDays('2024-01-01','2024-01-01')", u"[2] 0"},
    {u"=dateDifWorkDays('2024-01-01 12:00:00','2024-01-01','7',9)", u"[2] 0"},  // under a day: no swap
    {u"=dateDifWorkDays('9999-12-30 12:00:00','9999-12-31 18:00:00')", u"[2] 2"},  // stops at the end
    {u"=dateDifWorkDays(' ','2024-01-08')", u"[2] 0"},
    {u"=firstDateOfMonth('2024-05-15 10:20:30')", u"[3] 2024.05.01 00:00:00"},
    {u"=firstDateOfSeason('2024-05-15')", u"[3] 2024.04.01 00:00:00"},
    {u"=firstDateOfYear('2024-05-15','x')", u"[3] 2024.01.01 00:00:00"},  // only the first is read
    {u"=lastDateOfMonth('2024-02-10')", u"[3] 2024.02.29 23:59:59"},
    {u"=lastDateOfSeason('2024-05-15')", u"[3] 2024.06.30 23:59:59"},
    {u"=lastDateOfSeason('2024-02-01')", u"[3] 2024.03.31 23:59:59"},
    {u"=lastDateOfSeason('2024-08-01')", u"[3] 2024.09.30 23:59:59"},
    {u"=lastDateOfSeason('2024-11-02')", u"[3] 2024.12.31 23:59:59"},
    {u"=lastDateOfYear('2024-05-15')", u"[3] 2024.12.31 23:59:59"},
    {u"=firstDateOfYear(' ')", u"[3] Invalid DateTime"},
    {u"=getYear('2024-05-15 10:20:30')", u"[2] 2024"},
    {u"=getMonth('2024-05-15 10:20:30')", u"[2] 5"},
    {u"=getDay('2024-05-15 10:20:30')", u"[2] 15"},
    {u"=getHour('2024-05-15 10:20:30')", u"[2] 10"},
    {u"=getMinute('2024-05-15 10:20:30')", u"[2] 20"},
    {u"=getDayOfYear('2024-12-31')", u"[2] 366"},
    {u"=getYear(' ')", u"[2] -1"},  // blanks stand for no date
    {u"=getDayOfWeek('2024-01-07')", u"[2] 0"},
    {u"=getDayOfWeek('2024-01-07','e')", u"[1] Sunday"},
    {u"=getDayOfWeek('2024-01-07','English')", u"[1] Sunday"},
    {u"=getDayOfWeek('2024-01-07','c')", u"[1] 日"},
    {u"=getDayOfWeek('2024-01-13','C')", u"[1] 六"},
    {u"=getDayOfWeek('2024-01-13','x')", u"[2] 6"},
    {u"=getWeekNumber('2024-01-01')", u"[2] 1"},  // 1 January 2024 is a Monday
    {u"=getWeekNumber('2024-01-08')", u"[2] 2"},
    {u"=getWeekNumber('2024-01-07',0)", u"[2] 2"},
    {u"=getWeekNumber('2024-12-31')", u"[2] 53"},
    {u"=getWeekNumber('2023-01-01')", u"[2] 1"},  // a Sunday
    {u"=getWeekNumber('2023-01-02')", u"[2] 2"},
    {u"=getWeekNumber('2023-01-01',0)", u"[2] 1"},
    {u"=getWeekNumber('2023-01-02',0)", u"[2] 1"},
    {u"=getWeekNumber('2025-01-05')", u"[2] 1"},  // a Wednesday year: five days lead
    {u"=getWeekNumber('2025-01-06',1)", u"[2] 2"},
    {u"=compareDate('2024-01-01 10:00:00','2024-01-01 09:59:59')", u"[2] 1"},
    {u"=compareDate('2024-01-01','2024-01-01 00:00:01')", u"[2] -1"},
    {u"=compareDate('2024-01-01','2024/01/01 00:00:00')", u"[2] 0"},
    {u"=getYear('abc')", u"[0] -1 1072: Syntax error: getYear(abc)"},
    {u"=getMonth('')", u"[0] -1 1072: Syntax error: getMonth()"},
    {u"=getYear('2024-01-01','x')", u"[0] -1 1072: Syntax error: getYear(2024-01-01, x)"},
    {u"=getDayOfWeek(' ')", u"[0] -1 1072: Syntax error: getDayOfWeek( )"},  // -1 is no weekday
    {u"=getWeekNumber()", u"[0] -1 1072: Syntax error: getWeekNumber()"},
    {u"=dateAddDays('x',1)", u"[0] -1 1072: Syntax error: dateAddDays(x, 1)"},
    {u"=dateAddYears('2024-01-01')", u"[0] -1 1072: Syntax error: dateAddYears(2024-01-01)"},
    {u"=dateDifDays('2024-01-01','y')", u"[0] -1 1072: Syntax error: dateDifDays(2024-01-01, y)"},
    {u"=dateDifWorkDays('2024-01-01')", u"[0] -1 1072: Syntax error: dateDifWorkDays(2024-01-01)"},
    {u"=dateDifWorkDays('x','2024-01-01')", u"[0] -1 1072: Syntax error: dateDifWorkDays(x, 2024-01-01)"},
    {u"=lastDateOfMonth()", u"[0] -1 1072: Syntax error: lastDateOfMonth()"},
    {u"=compareDate('2024-01-01')", u"[0] -1 1072: Syntax error: compareDate(2024-01-01)"},
};

TEST(FuncDate, Table) {
  vkt::test::ScopedFakeLanguage language;
  std::unique_ptr<ICalc> calc(NewCalc(nullptr, nullptr));
  vkt::test::TestHost host;
  for (const auto& [formula, expected] : kDates) {
    EXPECT_EQ(host.Run(*calc, formula).Summary(), expected) << vkt::test::Row(formula);
  }
}

// The clock is not asserted, only the shape: every digit becomes 9.
TEST(FuncDate, NowHasTheShapeOfItsFormat) {
  vkt::test::ScopedFakeLanguage language;
  std::unique_ptr<ICalc> calc(NewCalc(nullptr, nullptr));
  vkt::test::TestHost host;
  const std::pair<const char16_t*, const char16_t*> kNow[] = {
      {u"=now()", u"[3] 9999.99.99 99:99:99"},
      {u"=now('')", u"[3] 9999.99.99 99:99:99"},  // empty: the process-wide format too
      {u"=now('%Y')", u"[3] 9999"},
  };
  for (const auto& [formula, expected] : kNow) {
    std::u16string summary = host.Run(*calc, formula).Summary();
    for (std::size_t i = 4; i < summary.size(); ++i) {
      if (summary[i] >= u'0' && summary[i] <= u'9') summary[i] = u'9';
    }
    EXPECT_EQ(summary, expected) << vkt::test::Row(formula);
  }
}

}  // namespace
