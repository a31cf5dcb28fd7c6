// func/FuncDate.cpp: the 27 date built-ins. A date travels as text: each
// body reads its dates with CUtilityCalc::String2Time and answers a number
// with SetResult(int), or a date as "'%s'" of TimeToString(time, 0), the
// time of day written out whatever the row's kind. A wrong number of
// arguments and a date that does not read answer 0, so that the wrapper
// reports text 1003 with the call; no body answers -1.
//
// String2Time also accepts what stands for no date (blanks, the zero date)
// and gives a null value; the bodies do not test for it, its fields read
// -1, and a date built from those fields is invalid.
#include <algorithm>
#include <bit>
#include <climits>
#include <cstdint>
#include <span>

#include "CFuncItem.h"
#include "CGmp.h"
#include "CUtilityCalc.h"
#include "VKTCalcEntry.h"
#include "foundation/CStrKit.h"
#include "func/BuiltinTable.h"
#include "platform/DateTime.h"
#include "platform/WideRuntime.h"

namespace vkt::func {

namespace {

// ---- Helpers shared by the bodies ------------------------------------------

const char16_t* Arg(CFuncPara* para, int index) { return para->arrArgs[index].GetString(); }

bool ReadDate(CFuncPara* para, int index, COleDateTime& out) {
  return CUtilityCalc::String2Time(Arg(para, index), &out, 0) != 0;
}

int PutDate(CFuncPara* para, const COleDateTime& time) {
  para->strResult = u"'" + TimeToString(time, 0) + u"'";
  return 1;
}

int PutInt(CFuncPara* para, int value) {
  para->SetResult(value);
  return 1;
}

// Towards zero. Chosen: NaN gives 0 and values past the int range saturate
// at its ends instead of being cast (dateDifMinutes over the whole calendar
// is about 5.2e9 minutes).
int TruncateToInt(double value) {
  if (value != value) return 0;
  if (value >= static_cast<double>(INT_MAX)) return INT_MAX;
  if (value <= static_cast<double>(INT_MIN)) return INT_MIN;
  return static_cast<int>(value);
}

// The fields of `time` with another year, month and day. A day the month
// lacks is lowered one at a time, but not below 27: 31 April becomes 30
// April, 29 February 2025 becomes 28 February. Chosen: the year is computed
// in 64 bits (an amount may be INT_MAX) and clamped to 0..10000 before the
// call, which leaves any year outside the calendar invalid as it was.
COleDateTime WithDate(long long year, int month, int day, const COleDateTime& time) {
  const int y = static_cast<int>(std::clamp(year, 0LL, 10000LL));
  const int hour = time.GetHour();
  const int minute = time.GetMinute();
  const int second = time.GetSecond();
  COleDateTime result;
  while (result.SetDateTime(y, month, day, hour, minute, second) != 0 && day > 27) --day;
  return result;
}

// ---- Adding to a date ----------------------------------------------------------
//
// The amounts come as int already, so no double is cast here: _wtoi and
// CGmp::Str2Int saturate at the int range (the 301 digits of 10^300 read as
// INT_MAX), nan reads as 0, and _wtoi reads '1e300' as 1 where Str2Int
// takes the exponent.
// An amount that leaves the calendar gives an invalid date, which
// TimeToString writes as such.

// Truncated: 1.9 years are 1.
int DateAddYears(CFuncPara* para, int argc) {
  COleDateTime date;
  if (argc != 2 || !ReadDate(para, 0, date)) return 0;
  const long long year = static_cast<long long>(date.GetYear()) + _wtoi(Arg(para, 1));
  return PutDate(para, WithDate(year, date.GetMonth(), date.GetDay(), date));
}

// Rounded: 1.9 months are 2. The month carries into the year both ways.
int DateAddMonths(CFuncPara* para, int argc) {
  COleDateTime date;
  if (argc != 2 || !ReadDate(para, 0, date)) return 0;
  const long long months = static_cast<long long>(date.GetYear()) * 12 + (date.GetMonth() - 1) +
                           CGmp::Str2Int(Arg(para, 1));
  const long long year = months >= 0 ? months / 12 : -((11 - months) / 12);
  const int month = static_cast<int>(months - year * 12) + 1;
  return PutDate(para, WithDate(year, month, date.GetDay(), date));
}

// Each unit is 1 for the field that takes the amount and 0 for the others.
// The span sums its fields as a double, so INT_MAX days only make it invalid.
int AddSpan(CFuncPara* para, int argc, long days, int hours, int minutes) {
  COleDateTime date;
  if (argc != 2 || !ReadDate(para, 0, date)) return 0;
  const int amount = CGmp::Str2Int(Arg(para, 1));
  return PutDate(para, date + COleDateTimeSpan(days * amount, hours * amount, minutes * amount, 0));
}

int DateAddDays(CFuncPara* para, int argc) { return AddSpan(para, argc, 1, 0, 0); }

int DateAddHours(CFuncPara* para, int argc) { return AddSpan(para, argc, 0, 1, 0); }

int DateAddMinutes(CFuncPara* para, int argc) { return AddSpan(para, argc, 0, 0, 1); }

// ---- Differences -----------------------------------------------------------------

// Both dates of a difference; false for a bad call.
bool ReadPair(CFuncPara* para, int argc, COleDateTime& from, COleDateTime& to) {
  return argc == 2 && ReadDate(para, 0, from) && ReadDate(para, 1, to);
}

int DateDifYears(CFuncPara* para, int argc) {
  COleDateTime from;
  COleDateTime to;
  if (!ReadPair(para, argc, from, to)) return 0;
  return PutInt(para, to.GetYear() - from.GetYear());
}

int DateDifMonths(CFuncPara* para, int argc) {
  COleDateTime from;
  COleDateTime to;
  if (!ReadPair(para, argc, from, to)) return 0;
  return PutInt(para, (to.GetYear() - from.GetYear()) * 12 + to.GetMonth() - from.GetMonth());
}

// The span in days as a double, fractions included: 23:00 to 01:00 of the
// next day is 0 days.
int DateDifDays(CFuncPara* para, int argc) {
  COleDateTime from;
  COleDateTime to;
  if (!ReadPair(para, argc, from, to)) return 0;
  return PutInt(para, TruncateToInt((to - from).GetTotalDays()));
}

// 1/172800 of a unit, added behind the multiplication and before the
// truncation, so that a span that came out a hair short still counts.
constexpr double kNudge = 1.0 / 172800;
static_assert(std::bit_cast<std::uint64_t>(kNudge) == 0x3ED845C8A0CE5129u);

int DateDifHours(CFuncPara* para, int argc) {
  COleDateTime from;
  COleDateTime to;
  if (!ReadPair(para, argc, from, to)) return 0;
  return PutInt(para, TruncateToInt((to - from).GetTotalDays() * 24 + kNudge));
}

int DateDifMinutes(CFuncPara* para, int argc) {
  COleDateTime from;
  COleDateTime to;
  if (!ReadPair(para, argc, from, to)) return 0;
  return PutInt(para, TruncateToInt((to - from).GetTotalDays() * 24 * 60 + kNudge));
}

// ---- Work days ----------------------------------------------------------------------

constexpr BYTE kHalfDay = 1;
constexpr BYTE kDayOff = 2;

struct WorkRules {
  BYTE weekFlags[8] = {};    // 1 Monday .. 7 Sunday
  BYTE monthFlags[32] = {};  // day of the month 1 .. 31
  bool given = false;        // some rule was read; the default weekend is gone
};

// Rules: "6" a weekday off, "6-" a half day, "d1" the first of each month
// off, "d15-" a half day; the tokens are split at commas. A token that
// names nothing in range is ignored.
void ReadRules(WorkRules& rules, const char16_t* text) {
  CStringArray tokens;
  CStrKit::CString2Array(tokens, text, u',', 1);
  for (int i = 0; i < tokens.GetSize(); ++i) {
    CString token(tokens[i]);
    if (token.IsEmpty()) continue;
    const bool half = token.GetAt(token.GetLength() - 1) == u'-';
    if (half) token = token.Left(token.GetLength() - 1);
    if (token.IsEmpty()) continue;
    const BYTE flag = half ? kHalfDay : kDayOff;
    if (token.GetAt(0) == u'D' || token.GetAt(0) == u'd') {
      token.Delete(0);
      if (token.IsEmpty()) continue;
      const int day = _wtoi(token.GetString());
      if (day >= 1 && day <= 31) {
        rules.monthFlags[day] = flag;
        rules.given = true;
      }
    } else if (CUtilityCalc::IsPureNumber(token.GetString(), 0, CGmp::CheckStrict_None, 0)) {
      const int weekday = _wtoi(token.GetString());
      if (weekday >= 1 && weekday <= 7) {
        rules.weekFlags[weekday] = flag;
        rules.given = true;
      }
    }
  }
}

double ValueOfFlag(BYTE flag) { return flag == kHalfDay ? 0.5 : 0.0; }

// dateDifWorkDays(from, to [, rules]): the days from `from` up to, not
// including, `to`, each worth 1, a half day 0.5 and a day off 0; the
// weekday rule wins over the month-day rule. Further arguments are ignored.
int DateDifWorkDays(CFuncPara* para, int argc) {
  COleDateTime cur;
  COleDateTime end;
  if (argc < 2 || !ReadDate(para, 0, cur) || !ReadDate(para, 1, end)) return 0;
  WorkRules rules;
  if (argc >= 3) ReadRules(rules, Arg(para, 2));
  if (!rules.given) rules.weekFlags[6] = rules.weekFlags[7] = kDayOff;
  // Less than a whole day back does not swap.
  const bool swapped = (end - cur).GetTotalDays() <= -1.0;
  if (swapped) std::swap(cur, end);
  const COleDateTimeSpan oneDay(1, 0, 0, 0);
  double total = 0.0;
  // Chosen: a date that is not valid counts no days. A null value does not
  // move when a day is added, and a step past 9999 leaves the moment as it
  // was; testing the status keeps both from looping for ever.
  while (cur.GetStatus() == COleDateTime::valid && end.GetStatus() == COleDateTime::valid &&
         cur < end) {
    double value = 1.0;
    const BYTE monthFlag = rules.given ? rules.monthFlags[cur.GetDay()] : 0;
    if (monthFlag != 0) value = ValueOfFlag(monthFlag);
    const int dayOfWeek = cur.GetDayOfWeek();  // 1 Sunday .. 7 Saturday
    const BYTE weekFlag = rules.weekFlags[dayOfWeek == 1 ? 7 : dayOfWeek - 1];
    if (weekFlag != 0) value = ValueOfFlag(weekFlag);
    total += value;
    cur += oneDay;
  }
  const int days = CUtilityCalc::Double2Int(total);  // 5.5 rounds to 6
  return PutInt(para, swapped ? -days : days);
}

// ---- Start and end of a period -------------------------------------------------
//
// One or more arguments; only the first is read.

COleDateTime MakeDate(int year, int month, int day, int hour, int minute, int second) {
  COleDateTime result;
  result.SetDateTime(year, month, day, hour, minute, second);
  return result;
}

int FirstMonthOfSeason(int month) { return (month - 1) / 3 * 3 + 1; }

int Period(CFuncPara* para, int argc, int which) {
  COleDateTime date;
  if (argc < 1 || !ReadDate(para, 0, date)) return 0;
  const int year = date.GetYear();
  const int month = date.GetMonth();
  const int lastOfSeason = FirstMonthOfSeason(month) + 2;
  switch (which) {
    case 0: return PutDate(para, MakeDate(year, month, 1, 0, 0, 0));
    case 1: return PutDate(para, MakeDate(year, FirstMonthOfSeason(month), 1, 0, 0, 0));
    case 2: return PutDate(para, MakeDate(year, 1, 1, 0, 0, 0));
    case 3:
      return PutDate(para,
                     MakeDate(year, month, CUtilityCalc::GetLastDayOfMonth(year, month), 23, 59, 59));
    case 4:
      return PutDate(para, MakeDate(year, lastOfSeason, lastOfSeason == 6 || lastOfSeason == 9 ? 30 : 31,
                                    23, 59, 59));
    default: return PutDate(para, MakeDate(year, 12, 31, 23, 59, 59));
  }
}

int FirstDateOfMonth(CFuncPara* para, int argc) { return Period(para, argc, 0); }
int FirstDateOfSeason(CFuncPara* para, int argc) { return Period(para, argc, 1); }
int FirstDateOfYear(CFuncPara* para, int argc) { return Period(para, argc, 2); }
int LastDateOfMonth(CFuncPara* para, int argc) { return Period(para, argc, 3); }
int LastDateOfSeason(CFuncPara* para, int argc) { return Period(para, argc, 4); }
int LastDateOfYear(CFuncPara* para, int argc) { return Period(para, argc, 5); }

// ---- Parts of a date -----------------------------------------------------------------

int Field(CFuncPara* para, int argc, int (COleDateTime::*field)() const noexcept) {
  COleDateTime date;
  if (argc != 1 || !ReadDate(para, 0, date)) return 0;
  return PutInt(para, (date.*field)());
}

int GetYear(CFuncPara* para, int argc) { return Field(para, argc, &COleDateTime::GetYear); }
int GetMonth(CFuncPara* para, int argc) { return Field(para, argc, &COleDateTime::GetMonth); }
int GetDay(CFuncPara* para, int argc) { return Field(para, argc, &COleDateTime::GetDay); }
int GetHour(CFuncPara* para, int argc) { return Field(para, argc, &COleDateTime::GetHour); }
int GetMinute(CFuncPara* para, int argc) { return Field(para, argc, &COleDateTime::GetMinute); }
int GetDayOfYear(CFuncPara* para, int argc) { return Field(para, argc, &COleDateTime::GetDayOfYear); }

// The English names are CUtilityCalc::GetEnglishDay's.
constexpr const char16_t* kChineseDays[7] = {u"日", u"一", u"二", u"三", u"四", u"五", u"六"};

// getDayOfWeek(date [, form]): 0 for Sunday to 6 for Saturday, or with a
// form starting with c or e the day's name as text. A null date has no
// weekday and makes a bad call.
int GetDayOfWeek(CFuncPara* para, int argc) {
  COleDateTime date;
  if (argc < 1 || !ReadDate(para, 0, date)) return 0;
  const int day = date.GetDayOfWeek() - 1;
  if (day < 0 || day > 6) return 0;
  const char16_t form = argc >= 2 ? para->arrArgs[1].GetAt(0) : u'\0';
  const char16_t* name = nullptr;
  if (form == u'C' || form == u'c') name = kChineseDays[day];
  if (form == u'E' || form == u'e') name = CUtilityCalc::GetEnglishDay(day);
  if (name == nullptr) return PutInt(para, day);
  para->strResult = u"'" + CString(name) + u"'";
  para->nResultKind = 1;
  return 1;
}

// getWeekNumber(date [, mondayFirst = 1]): week 1 holds 1 January however
// few of its days fall in the year, so this is not the ISO week.
int GetWeekNumber(CFuncPara* para, int argc) {
  COleDateTime date;
  if (argc < 1 || !ReadDate(para, 0, date)) return 0;
  const bool mondayFirst = argc < 2 || _wtoi(Arg(para, 1)) != 0;
  const int dayOfYear = date.GetDayOfYear();
  const int firstWeekday = MakeDate(date.GetYear(), 1, 1, 0, 0, 0).GetDayOfWeek() - 1;  // 0 Sunday
  int lead = 0;  // days of the year before the first start of a week
  if (mondayFirst) {
    lead = firstWeekday == 1 ? 0 : firstWeekday == 0 ? 1 : 8 - firstWeekday;
  } else {
    lead = firstWeekday == 0 ? 0 : 7 - firstWeekday;
  }
  return PutInt(para, (dayOfYear - lead + 6) / 7 + (lead != 0 ? 1 : 0));
}

// ---- The clock and comparing -----------------------------------------------------------

// now([format]): the local time in the format, or in the process-wide one
// when it is empty or absent.
int Now(CFuncPara* para, int argc) {
  CString format;
  if (argc >= 1) format = para->arrArgs[0];
  if (format.IsEmpty()) GetDateTimeFormat(format, 0);
  COleDateTime time = COleDateTime::GetCurrentTime();
  CString text;
  CUtilityCalc::MyFormatDateTime(text, time, format.GetString());
  para->strResult = u"'" + text + u"'";
  return 1;
}

// 1 when a is later, -1 when earlier, 0 for the same moment; the time of
// day counts.
int CompareDate(CFuncPara* para, int argc) {
  COleDateTime a;
  COleDateTime b;
  if (!ReadPair(para, argc, a, b)) return 0;
  return PutInt(para, a > b ? 1 : a < b ? -1 : 0);
}

// In the order of the built-in table.
constexpr BuiltinBody kDateBodies[] = {
    {u"compareDate", &CompareDate},
    {u"dateAddDays", &DateAddDays},
    {u"dateAddHours", &DateAddHours},
    {u"dateAddMinutes", &DateAddMinutes},
    {u"dateAddMonths", &DateAddMonths},
    {u"dateAddYears", &DateAddYears},
    {u"dateDifDays", &DateDifDays},
    {u"dateDifHours", &DateDifHours},
    {u"dateDifMinutes", &DateDifMinutes},
    {u"dateDifMonths", &DateDifMonths},
    {u"dateDifWorkDays", &DateDifWorkDays},
    {u"dateDifYears", &DateDifYears},
    {u"firstDateOfMonth", &FirstDateOfMonth},
    {u"firstDateOfSeason", &FirstDateOfSeason},
    {u"firstDateOfYear", &FirstDateOfYear},
    {u"getDay", &GetDay},
    {u"getDayOfWeek", &GetDayOfWeek},
    {u"getDayOfYear", &GetDayOfYear},
    {u"getHour", &GetHour},
    {u"getMinute", &GetMinute},
    {u"getMonth", &GetMonth},
    {u"getWeekNumber", &GetWeekNumber},
    {u"getYear", &GetYear},
    {u"lastDateOfMonth", &LastDateOfMonth},
    {u"lastDateOfSeason", &LastDateOfSeason},
    {u"lastDateOfYear", &LastDateOfYear},
    {u"now", &Now},
};

}  // namespace

std::span<const BuiltinBody> DateBodies() { return kDateBodies; }

}  // namespace vkt::func
