// numtext/DateText.cpp: reading date text into a COleDateTime, the tests
// built on it, the serial numbers of spreadsheet files, and the two date
// format languages (the runtime's percent codes and the letter pictures).
// COleDateTime is the judge of what a date is: this file checks only the
// shape of the text and the rough ranges of its fields.
#include <cstdlib>

#include "CGmp.h"
#include "CUtilityCalc.h"
#include "VKTCalcEntry.h"
#include "foundation/CGlobalInfo.h"
#include "foundation/CStrKit.h"
#include "platform/Clock.h"
#include "platform/DateTime.h"
#include "platform/WideRuntime.h"

VKTCALC_API const char16_t* g_arrWeekDay[7] = {u"日", u"一", u"二", u"三", u"四", u"五", u"六"};

namespace {

// An English name and its short form as the letter pictures write it.
struct EnglishName {
  const char16_t* full;
  const char16_t* brief;
};

constexpr EnglishName kMonths[12] = {
    {u"January", u"Jan."}, {u"February", u"Feb."}, {u"March", u"Mar."},
    {u"April", u"Apr."},   {u"May", u"May"},        {u"June", u"Jun."},
    {u"July", u"Jul."},    {u"August", u"Aug."},    {u"September", u"Sept."},
    {u"October", u"Oct."}, {u"November", u"Nov."},  {u"December", u"Dec."},
};

constexpr EnglishName kDays[7] = {
    {u"Sunday", u"Sun."},     {u"Monday", u"Mon."}, {u"Tuesday", u"Tues."},
    {u"Wednesday", u"Wed."},  {u"Thursday", u"Thurs."}, {u"Friday", u"Fri."},
    {u"Saturday", u"Sat."},
};

const EnglishName* Lookup(const EnglishName* table, int size, int index) {
  return index >= 0 && index < size ? &table[index] : nullptr;
}


// The six fields of date text, in the order they are written.
enum DateField { kYear, kMonth, kDay, kHour, kMinute, kSecond, kDateFieldCount };

// date := year sep month sep day [' ' [hour [':' minute [':' second ['.' any]]]]]
// where sep is one of - / \ . and every field may be empty (it reads 0).
// Fills f; false for text of another shape.
//
// A date separator is taken at the end of every date field, so one behind
// the day leads into the hour as the blank does. bDateOnly stops the reading
// at a blank behind the day, whatever follows; behind another separator the
// time is read as usual. A colon behind the seconds has no field to lead
// to: refused.
bool ReadDateFields(const char16_t* p, int bDateOnly, int (&f)[kDateFieldCount]) {
  int field = kYear;
  char16_t digits[5] = {};
  int count = 0;
  int separators = 0;
  for (;; ++p) {
    const char16_t c = *p;
    if (CStrKit::IsDigit(c)) {
      if (count == (field == kYear ? 4 : 2)) return false;
      digits[count++] = c;
      continue;
    }
    digits[count] = 0;
    f[field] = vkt::_wtoi(digits);
    count = 0;
    if (c == 0) break;
    const bool inDate = field <= kDay;
    bool stop = false;
    if (c == u' ') {
      if (field != kDay) return false;
    } else if (c == u'.') {
      if (field == kSecond) stop = true;  // fractions of a second are not read
      else if (!inDate) return false;
    } else if (c == u'-' || c == u'/' || c == u'\\') {
      if (!inDate) return false;
    } else if (c == u':') {
      if (inDate || field == kSecond) return false;
    } else {
      return false;
    }
    ++separators;
    if (stop || (field == kDay && bDateOnly && c == u' ')) break;
    ++field;
  }
  return separators >= 2;
}

// The picture fields of FormatDate, in their numbering.
enum PictureField { kPYear, kPMonth, kPDay, kPWeekday, kPHour, kPMinute, kPSecond, kPFieldCount };

struct Slot {
  int pos = -1;
  int len = 0;
};

// Masks the slot with @ so that no later search finds its letters.
Slot Mask(CString& picture, int pos, int len) {
  for (int i = 0; i < len; ++i) picture.SetAt(pos + i, u'@');
  return Slot{pos, len};
}

// A word in any case, one longer when a point follows it.
Slot FindWord(CString& picture, const char16_t* word, int len) {
  const int pos = CStrKit::FindNoCase(picture.GetString(), word);
  if (pos < 0) return Slot{};
  if (picture.GetAt(pos + len) == u'.') ++len;
  return Mask(picture, pos, len);
}

// The run of the first character of the class, at most max long.
Slot FindRun(CString& picture, const char16_t* letters, int max) {
  const int pos = picture.FindOneOf(letters);
  if (pos < 0) return Slot{};
  const char16_t c = picture.GetAt(pos);
  int len = 1;
  while (len < max && picture.GetAt(pos + len) == c) ++len;
  return Mask(picture, pos, len);
}

// A day, hour, minute or second: one letter drops the leading zero, and
// the number 0 then gives no text.
CString NumberText(int value, int len) {
  CString text;
  if (len == 2) {
    text.Format(u"%02d", value);
  } else if (value != 0) {
    text.Format(u"%d", value);
  }
  return text;
}

CString NameText(const EnglishName* name, bool brief) {
  if (name == nullptr) return CString();
  return CString(brief ? name->brief : name->full);
}

// Chosen: a value that is not valid (a blank date) prints what its getters
// answer, -1 for every number, and no month or day name.
CString FieldText(int field, int len, const COleDateTime& value) {
  CString text;
  switch (field) {
    case kPYear:
      text.Format(len == 2 ? u"%02d" : u"%d", len == 2 ? value.GetYear() % 100 : value.GetYear());
      return text;
    case kPMonth:
      if (len <= 2) {
        text.Format(len == 2 ? u"%02d" : u"%d", value.GetMonth());
        return text;
      }
      return NameText(Lookup(kMonths, 12, value.GetMonth() - 1), len == 4 || len == 6);
    case kPWeekday:
      return NameText(Lookup(kDays, 7, value.GetDayOfWeek() - 1), len == 4);
    case kPDay:
      return NumberText(value.GetDay(), len);
    case kPHour:
      return NumberText(value.GetHour(), len);
    case kPMinute:
      return NumberText(value.GetMinute(), len);
    default:
      return NumberText(value.GetSecond(), len);
  }
}

}  // namespace

int CUtilityCalc::String2Time(const char16_t* text, COleDateTime* out, int bDateOnly) {
  if (out != nullptr) out->SetStatus(COleDateTime::null);
  if (text == nullptr) return 1;
  const char16_t* p = text;
  while (*p == u' ') ++p;
  if (*p == 0) return p == text ? 0 : 1;  // blanks stand for no date, the empty text for nothing

  bool allDigits = true;
  int length = 0;
  for (const char16_t* q = p; *q != 0; ++q) {
    if (*q == u'T') {
      CString rest(p);
      return CStrKit::XMLString2Time(rest, out) ? 1 : 0;
    }
    allDigits = allDigits && CStrKit::IsDigit(*q);
    if (length < 9) ++length;
  }

  int f[kDateFieldCount] = {};
  if (allDigits) {
    if (length != 8) return 0;
    f[kYear] = ((p[0] - u'0') * 10 + (p[1] - u'0')) * 100 + (p[2] - u'0') * 10 + (p[3] - u'0');
    f[kMonth] = (p[4] - u'0') * 10 + (p[5] - u'0');
    f[kDay] = (p[6] - u'0') * 10 + (p[7] - u'0');
  } else if (!ReadDateFields(p, bDateOnly, f)) {
    return 0;
  }
  if (f[kYear] + f[kMonth] + f[kDay] == 0) return 1;  // the zero date: no date
  if (f[kYear] < 1000 || f[kMonth] == 0 || f[kMonth] > 12 || f[kDay] == 0 || f[kDay] > 31 ||
      f[kHour] >= 25 || f[kMinute] >= 60 || f[kSecond] >= 60) {
    return 0;
  }
  COleDateTime value;
  value.SetDateTime(f[kYear], f[kMonth], f[kDay], f[kHour], f[kMinute], f[kSecond]);
  if (value.GetStatus() != COleDateTime::valid) return 0;
  if (out != nullptr) *out = value;
  return 1;
}

int CUtilityCalc::IsValidDate(CString& value, CString& low, CString& high) {
  if (low.IsEmpty() && high.IsEmpty()) return 1;
  COleDateTime date;
  if (!String2Time(value.GetString(), &date, 1)) value.Empty();
  // A bound of blanks or the zero date reads (as no date) and so still
  // counts: every valid value lies after it.
  COleDateTime bound;
  if (!low.IsEmpty() && String2Time(low.GetString(), &bound, 1)) {
    if (value.IsEmpty() || CompareDateTime(date, bound, 1) < 0) return 0;
  }
  if (high.IsEmpty() || value.IsEmpty()) return 1;
  if (!String2Time(high.GetString(), &bound, 1)) return 1;
  return CompareDateTime(date, bound, 1) > 0 ? 0 : 1;
}

int CUtilityCalc::CompareDateTime(COleDateTime& a, COleDateTime& b, int bDateOnly) {
  const bool aValid = a.GetStatus() == COleDateTime::valid;
  const bool bValid = b.GetStatus() == COleDateTime::valid;
  if (!aValid || !bValid) return aValid == bValid ? 0 : (aValid ? 1 : -1);
  if (bDateOnly) {
    const int x[3] = {a.GetYear(), a.GetMonth(), a.GetDay()};
    const int y[3] = {b.GetYear(), b.GetMonth(), b.GetDay()};
    for (int i = 0; i < 3; ++i) {
      if (x[i] != y[i]) return x[i] < y[i] ? -1 : 1;
    }
    return 0;
  }
  return a < b ? -1 : (b < a ? 1 : 0);
}

// Chosen: 0 when no day of the month makes a date (month 0 or 13, a year
// outside the calendar), so that the count-down always ends.
int CUtilityCalc::GetLastDayOfMonth(int year, int month) {
  for (int day = 31; day >= 1; --day) {
    COleDateTime date;
    if (date.SetDateTime(year, month, day, 0, 0, 0) == COleDateTime::valid && date.GetMonth() == month) {
      return day;
    }
  }
  return 0;
}

// Chosen: out is emptied first, so that it holds the present time alone.
void CUtilityCalc::GetDateTime(CString& out, int bDate, int bTime, int bMilli) {
  const vkt::platform::LocalTime now = vkt::platform::LocalTimeNow();
  out.Empty();
  if (bDate) out.AppendFormat(u"%d-%02d-%02d", now.year, now.month, now.day);
  if (bTime) {
    if (!out.IsEmpty()) out += u' ';
    out.AppendFormat(u"%02d:%02d:%02d", now.hour, now.minute, now.second);
  }
  if (bMilli) {
    if (!out.IsEmpty()) out += u'.';
    out.AppendFormat(u"%03d", now.millisecond);
  }
}

// Day 1 is 1 January 1900 and day 60 its 29 February, a day the calendar
// lacks: from day 61 on each serial stands one above a plain count.
BYTE CUtilityCalc::ECMADateTimeToDateTime(COleDateTime& out, CString& serial) {
  CString whole = serial;
  int seconds = 0;
  const int point = serial.Find(u'.');
  if (point >= 0) {
    whole = serial.Left(point);
    const CString fraction = serial.Mid(point);
    seconds = Double2Int(CGmp::Str2Double(fraction.GetString(), 0) * 24.0 * 3600.0);
  }
  out.SetDateTime(1900, 1, 1, 0, 0, 0);
  long days = static_cast<long>(vkt::_wtoi(whole.GetString())) - 1;
  if (days >= 60) --days;
  out += COleDateTimeSpan(days, 0, 0, seconds);
  return seconds != 0 ? 3 : 4;
}

BYTE CUtilityCalc::DateTimeToECMADateTime(COleDateTime& value, CString& out) {
  out.Empty();
  if (!isdt(&value, 1901)) return 4;
  const COleDateTime midnight(value.GetYear(), value.GetMonth(), value.GetDay(), 0, 0, 0);
  long days = (midnight - COleDateTime(1900, 1, 1, 0, 0, 0)).GetDays() + 1;
  if (days >= 60) ++days;
  out.Format(u"%ld", days);
  const int hour = value.GetHour();
  const int minute = value.GetMinute();
  const int second = value.GetSecond();
  if (hour == 0 && minute == 0 && second == 0) return 4;
  CGmp part;
  part.Set((minute / 60.0 + hour + second / 3600.0) / 24.0);
  if (!part.m_strDec.IsEmpty()) {
    out += u'.';
    out += part.m_strDec;
  }
  return 4;
}

const char16_t* CUtilityCalc::GetEnglishMonth(int index) {
  const EnglishName* name = Lookup(kMonths, 12, index);
  return name == nullptr ? nullptr : name->full;
}

const char16_t* CUtilityCalc::GetEnglishDay(int index) {
  const EnglishName* name = Lookup(kDays, 7, index);
  return name == nullptr ? nullptr : name->full;
}

void CUtilityCalc::MyFormatDateTime(CString& out, COleDateTime& value, const char16_t* format) {
  CString copy(format);
  if (copy.IsEmpty()) {
    GetDateTimeFormat(copy, 0);
    out = value.Format(copy.GetString());
    return;
  }
  const int toUtc = CStrKit::FindNoCase(copy.GetString(), u"/Z");
  if (toUtc >= 0) copy.Delete(toUtc, 2);
  const COleDateTimeSpan localToUtc = *CGlobalInfo::GetInstance()->GetLocalDateTimeSpan();
  const int zoneAt = CStrKit::FindNoCase(copy.GetString(), u"%Z");
  if (zoneAt >= 0) {
    // The span is split one second short, so that a zone west of
    // Greenwich shows one minute short: UTC-5 as -04:59.
    const COleDateTimeSpan span = localToUtc + COleDateTimeSpan(0, 0, 0, -1);
    int hours = -span.GetHours();
    int minutes = -span.GetMinutes();
    char16_t sign = u'+';
    if (hours < 0 || minutes < 0) {
      sign = u'-';
      hours = std::abs(hours);
      minutes = std::abs(minutes);
    }
    CString zone;
    zone.Format(u"%c%02d:%02d", sign, hours, minutes);
    copy.Delete(zoneAt, 2);
    copy.Insert(zoneAt, zone.GetString());
  }
  if (toUtc >= 0) value += localToUtc;
  out = value.Format(copy.GetString());
}

// The picture is scanned once, each field masked as it is found; the fields
// are then replaced from the rightmost on, so that positions stay true.
void CUtilityCalc::FormatDate(CString& date, CString& picture) {
  COleDateTime value;
  if (!String2Time(date.GetString(), &value, 0)) {
    picture = date;
    return;
  }
  Slot slots[kPFieldCount];
  slots[kPMonth] = FindWord(picture, u"Month", 5);
  if (slots[kPMonth].pos < 0) slots[kPMonth] = FindWord(picture, u"Mon", 3);
  slots[kPWeekday] = FindWord(picture, u"day", 3);
  // A lower-case m stands for the month in a picture that has a year or a
  // day but no capital M; a masked month word is no capital M.
  if (picture.Find(u'm') >= 0 && picture.Find(u'M') < 0 && picture.FindOneOf(u"YyDd") >= 0) {
    picture.Replace(u'm', u'M');
  }
  constexpr struct {
    int field;
    const char16_t* letters;
    int max;
  } kRuns[] = {{kPYear, u"Yy", 4}, {kPMonth, u"M", 2}, {kPDay, u"Dd", 2},
               {kPHour, u"Hh", 2}, {kPMinute, u"m", 2}, {kPSecond, u"Ss", 2}};
  for (const auto& run : kRuns) {
    if (slots[run.field].pos < 0) slots[run.field] = FindRun(picture, run.letters, run.max);
  }
  for (;;) {
    int last = -1;
    for (int i = 0; i < kPFieldCount; ++i) {
      if (slots[i].pos >= 0 && (last < 0 || slots[i].pos > slots[last].pos)) last = i;
    }
    if (last < 0) break;
    picture.Delete(slots[last].pos, slots[last].len);
    picture.Insert(slots[last].pos, FieldText(last, slots[last].len, value).GetString());
    slots[last].pos = -1;
  }
}
