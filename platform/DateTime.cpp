// platform/DateTime.cpp: the calendar behind COleDateTime and its spans.
// Day numbers come from the standard civil calendar (sys_days and
// year_month_day); all that is ours is the serial's odd sign rule before
// 1899-12-30, rounding to the second, and the percent format.
#include "platform/DateTime.h"

#include <chrono>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/Clock.h"

namespace {

namespace chr = std::chrono;

constexpr std::int64_t kSecondsPerDay = 86400;
constexpr chr::sys_days kEpoch{chr::year{1899} / chr::December / 30};
constexpr std::int64_t kFirstDay =
    (chr::sys_days{chr::year{100} / chr::January / 1} - kEpoch).count();
constexpr std::int64_t kLastDay =
    (chr::sys_days{chr::year{9999} / chr::December / 31} - kEpoch).count();
// The calendar in seconds from the epoch: [kFirstSecond, kEndSecond).
constexpr std::int64_t kFirstSecond = kFirstDay * kSecondsPerDay;
constexpr std::int64_t kEndSecond = (kLastDay + 1) * kSecondsPerDay;
// No span between two valid dates is longer than the whole calendar.
constexpr double kMaxSpanDays = static_cast<double>(kLastDay + 1 - kFirstDay);

static_assert(kFirstDay == -657434, "1 January 100");
static_assert(kLastDay == 2958465, "31 December 9999");

constexpr const char16_t* kInvalidText = u"Invalid DateTime";
constexpr const char16_t* kDayNames[7] = {u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                          u"Thursday", u"Friday", u"Saturday"};
constexpr const char16_t* kMonthNames[12] = {
    u"January", u"February", u"March",     u"April",   u"May",      u"June",
    u"July",    u"August",   u"September", u"October", u"November", u"December"};

// The serial as a straight count of days in time: before 0 the whole part
// counts back but the fraction forward, so -1.25 is the moment -0.75.
double Linear(double serial) {
  const double whole = std::trunc(serial);
  return serial < 0 ? whole + (whole - serial) : serial;
}

// The inverse of Linear.
double Serial(double linear) {
  const double day = std::floor(linear);
  const double fraction = linear - day;
  return (day < 0 && fraction != 0) ? day - fraction : linear;
}

// The moment to the nearest second, when it lies within the calendar.
std::optional<std::int64_t> ToSecond(double linear) {
  if (!std::isfinite(linear)) return std::nullopt;
  const double s = std::floor(linear * static_cast<double>(kSecondsPerDay) + 0.5);
  if (s < static_cast<double>(kFirstSecond) || s >= static_cast<double>(kEndSecond)) {
    return std::nullopt;
  }
  return static_cast<std::int64_t>(s);
}

bool InCalendar(double serial) { return ToSecond(Linear(serial)).has_value(); }

// The serial of a date given by fields, or nothing when they name no date.
// Wide arguments let callers add offsets (tm_year + 1900) without overflow.
std::optional<double> SerialOf(long long y, long long mo, long long d, long long h,
                               long long mi, long long s) {
  if (y < 100 || y > 9999 || mo < 1 || mo > 12 || d < 1 || d > 31 || h < 0 || h > 23 ||
      mi < 0 || mi > 59 || s < 0 || s > 59) {
    return std::nullopt;
  }
  const chr::year_month_day ymd{chr::year{static_cast<int>(y)},
                                chr::month{static_cast<unsigned>(mo)},
                                chr::day{static_cast<unsigned>(d)}};
  if (!ymd.ok()) return std::nullopt;  // past the end of the month
  const auto day = static_cast<double>((chr::sys_days{ymd} - kEpoch).count());
  const double fraction = static_cast<double>(h * 3600 + mi * 60 + s) /
                          static_cast<double>(kSecondsPerDay);
  return day < 0 ? day - fraction : day + fraction;
}

struct Fields {
  int year;
  int month;      // 1..12
  int day;        // 1..31
  int hour;
  int minute;
  int second;
  int dayOfWeek;  // 0 for Sunday
  int dayOfYear;  // 1 for 1 January
};

std::optional<Fields> Split(const COleDateTime& date) {
  if (date.m_status != COleDateTime::valid) return std::nullopt;
  const std::optional<std::int64_t> second = ToSecond(Linear(date.m_dt));
  if (!second) return std::nullopt;
  std::int64_t dayNumber = *second / kSecondsPerDay;
  std::int64_t ofDay = *second % kSecondsPerDay;
  if (ofDay < 0) {  // floor division
    --dayNumber;
    ofDay += kSecondsPerDay;
  }
  const chr::sys_days day = kEpoch + chr::days{dayNumber};
  const chr::year_month_day ymd{day};
  Fields f;
  f.year = static_cast<int>(ymd.year());
  f.month = static_cast<int>(static_cast<unsigned>(ymd.month()));
  f.day = static_cast<int>(static_cast<unsigned>(ymd.day()));
  f.hour = static_cast<int>(ofDay / 3600);
  f.minute = static_cast<int>(ofDay / 60 % 60);
  f.second = static_cast<int>(ofDay % 60);
  f.dayOfWeek = static_cast<int>(chr::weekday{day}.c_encoding());
  f.dayOfYear =
      static_cast<int>((day - chr::sys_days{ymd.year() / chr::January / 1}).count()) + 1;
  return f;
}

// The span in whole seconds, rounded half away from zero; 0 when not valid.
std::int64_t SpanSeconds(const COleDateTimeSpan& span) {
  if (span.m_status != COleDateTimeSpan::valid) return 0;
  const double s = std::round(span.m_span * static_cast<double>(kSecondsPerDay));
  if (!(std::fabs(s) < 9.0e18)) return 0;  // only a hand-set m_span gets here
  return static_cast<std::int64_t>(s);
}

// ---- Format ----

void AppendNumber(std::u16string& out, int value, int width, bool noPad) {
  char16_t digits[12];
  int n = 0;
  unsigned magnitude = value < 0 ? 0u - static_cast<unsigned>(value) : static_cast<unsigned>(value);
  do {
    digits[n++] = static_cast<char16_t>(u'0' + magnitude % 10);
    magnitude /= 10;
  } while (magnitude != 0);
  if (value < 0) out.push_back(u'-');
  if (!noPad) {
    for (int i = n; i < width; ++i) out.push_back(u'0');
  }
  while (n > 0) out.push_back(digits[--n]);
}

void AppendShort(std::u16string& out, const char16_t* name) { out.append(name, 3); }

void FormatInto(std::u16string& out, const char16_t* format, const Fields& f) {
  for (const char16_t* p = format; *p != 0; ++p) {
    if (*p != u'%') {
      out.push_back(*p);
      continue;
    }
    const char16_t* start = p;
    bool alternate = false;
    if (p[1] == u'#') {
      alternate = true;
      ++p;
    }
    const char16_t code = p[1];
    if (code == 0) {  // a lone percent at the end
      out.append(start, static_cast<std::size_t>(p + 1 - start));
      break;
    }
    ++p;
    const int hour12 = f.hour % 12 == 0 ? 12 : f.hour % 12;
    const int yday0 = f.dayOfYear - 1;
    switch (code) {
      case u'a': AppendShort(out, kDayNames[f.dayOfWeek]); break;
      case u'A': out += kDayNames[f.dayOfWeek]; break;
      case u'b': AppendShort(out, kMonthNames[f.month - 1]); break;
      case u'B': out += kMonthNames[f.month - 1]; break;
      case u'c':
        FormatInto(out, alternate ? u"%A, %B %#d, %Y %H:%M:%S" : u"%m/%d/%y %H:%M:%S", f);
        break;
      case u'd': AppendNumber(out, f.day, 2, alternate); break;
      case u'H': AppendNumber(out, f.hour, 2, alternate); break;
      case u'I': AppendNumber(out, hour12, 2, alternate); break;
      case u'j': AppendNumber(out, f.dayOfYear, 3, alternate); break;
      case u'm': AppendNumber(out, f.month, 2, alternate); break;
      case u'M': AppendNumber(out, f.minute, 2, alternate); break;
      case u'n': out.push_back(u'\n'); break;
      case u'p': out += f.hour < 12 ? u"AM" : u"PM"; break;
      case u'S': AppendNumber(out, f.second, 2, alternate); break;
      case u't': out.push_back(u'\t'); break;
      case u'U': AppendNumber(out, (yday0 + 7 - f.dayOfWeek) / 7, 2, alternate); break;
      case u'w': AppendNumber(out, f.dayOfWeek, 1, alternate); break;
      case u'W':
        AppendNumber(out, (yday0 + 7 - (f.dayOfWeek + 6) % 7) / 7, 2, alternate);
        break;
      case u'x': FormatInto(out, alternate ? u"%A, %B %#d, %Y" : u"%m/%d/%y", f); break;
      case u'X': FormatInto(out, u"%H:%M:%S", f); break;
      case u'y': AppendNumber(out, f.year % 100, 2, alternate); break;
      case u'Y': AppendNumber(out, f.year, 1, alternate); break;
      case u'%': out.push_back(u'%'); break;
      default:  // not ours: copied as it stands
        out.append(start, static_cast<std::size_t>(p + 1 - start));
        break;
    }
  }
}

}  // namespace

// ---- COleDateTimeSpan ----

COleDateTimeSpan::COleDateTimeSpan() noexcept : m_span(0.0), m_status(valid) {}

COleDateTimeSpan::COleDateTimeSpan(double days) noexcept
    : m_span(days),
      m_status(std::isfinite(days) && std::fabs(days) <= kMaxSpanDays ? valid : invalid) {}

COleDateTimeSpan::COleDateTimeSpan(long days, int hours, int minutes, int seconds) noexcept
    : m_span(0.0), m_status(valid) {
  SetDateTimeSpan(days, hours, minutes, seconds);
}

void COleDateTimeSpan::SetDateTimeSpan(long days, int hours, int minutes, int seconds) noexcept {
  // Summed in double: every field is an exact integer there, and a sum too
  // large for exactness is far past the span limit anyway.
  const double total = static_cast<double>(days) * static_cast<double>(kSecondsPerDay) +
                       static_cast<double>(hours) * 3600.0 +
                       static_cast<double>(minutes) * 60.0 + static_cast<double>(seconds);
  *this = COleDateTimeSpan(total / static_cast<double>(kSecondsPerDay));
}

long COleDateTimeSpan::GetDays() const noexcept {
  return static_cast<long>(SpanSeconds(*this) / kSecondsPerDay);
}

int COleDateTimeSpan::GetHours() const noexcept {
  return static_cast<int>(SpanSeconds(*this) % kSecondsPerDay / 3600);
}

int COleDateTimeSpan::GetMinutes() const noexcept {
  return static_cast<int>(SpanSeconds(*this) % 3600 / 60);
}

int COleDateTimeSpan::GetSeconds() const noexcept {
  return static_cast<int>(SpanSeconds(*this) % 60);
}

COleDateTimeSpan COleDateTimeSpan::operator+(const COleDateTimeSpan& other) const noexcept {
  COleDateTimeSpan sum(m_span + other.m_span);
  if (m_status != valid || other.m_status != valid) sum.m_status = invalid;
  return sum;
}

COleDateTimeSpan COleDateTimeSpan::operator-(const COleDateTimeSpan& other) const noexcept {
  return *this + (-other);
}

COleDateTimeSpan COleDateTimeSpan::operator-() const noexcept {
  COleDateTimeSpan negated(*this);
  negated.m_span = -m_span;
  return negated;
}

COleDateTimeSpan& COleDateTimeSpan::operator+=(const COleDateTimeSpan& other) noexcept {
  return *this = *this + other;
}

COleDateTimeSpan& COleDateTimeSpan::operator-=(const COleDateTimeSpan& other) noexcept {
  return *this = *this - other;
}

bool COleDateTimeSpan::operator==(const COleDateTimeSpan& other) const noexcept {
  return m_status == other.m_status && m_span == other.m_span;
}

// ---- COleDateTime ----

COleDateTime COleDateTime::GetCurrentTime() {
  const vkt::platform::LocalTime now = vkt::platform::LocalTimeNow();
  return COleDateTime(now.year, now.month, now.day, now.hour, now.minute, now.second);
}

COleDateTime::COleDateTime() noexcept : m_dt(0.0), m_status(valid) {}

COleDateTime::COleDateTime(double serial) noexcept
    : m_dt(serial), m_status(InCalendar(serial) ? valid : invalid) {}

COleDateTime::COleDateTime(int year, int month, int day, int hour, int minute,
                           int second) noexcept
    : m_dt(0.0), m_status(valid) {
  SetDateTime(year, month, day, hour, minute, second);
}

COleDateTime::COleDateTime(const std::tm& fields) noexcept : m_dt(0.0), m_status(invalid) {
  const std::optional<double> serial =
      SerialOf(fields.tm_year + 1900LL, fields.tm_mon + 1LL, fields.tm_mday, fields.tm_hour,
               fields.tm_min, fields.tm_sec);
  if (serial) {
    m_dt = *serial;
    m_status = valid;
  }
}

COleDateTime& COleDateTime::operator=(double serial) noexcept {
  return *this = COleDateTime(serial);
}

int COleDateTime::SetDateTime(int year, int month, int day, int hour, int minute,
                              int second) noexcept {
  const std::optional<double> serial = SerialOf(year, month, day, hour, minute, second);
  if (serial) {
    m_dt = *serial;
    m_status = valid;
  } else {
    m_status = invalid;
  }
  return m_status;
}

int COleDateTime::SetDate(int year, int month, int day) noexcept {
  return SetDateTime(year, month, day, 0, 0, 0);
}

int COleDateTime::SetTime(int hour, int minute, int second) noexcept {
  return SetDateTime(1899, 12, 30, hour, minute, second);
}

int COleDateTime::GetYear() const noexcept {
  const std::optional<Fields> f = Split(*this);
  return f ? f->year : -1;
}

int COleDateTime::GetMonth() const noexcept {
  const std::optional<Fields> f = Split(*this);
  return f ? f->month : -1;
}

int COleDateTime::GetDay() const noexcept {
  const std::optional<Fields> f = Split(*this);
  return f ? f->day : -1;
}

int COleDateTime::GetHour() const noexcept {
  const std::optional<Fields> f = Split(*this);
  return f ? f->hour : -1;
}

int COleDateTime::GetMinute() const noexcept {
  const std::optional<Fields> f = Split(*this);
  return f ? f->minute : -1;
}

int COleDateTime::GetSecond() const noexcept {
  const std::optional<Fields> f = Split(*this);
  return f ? f->second : -1;
}

int COleDateTime::GetDayOfWeek() const noexcept {
  const std::optional<Fields> f = Split(*this);
  return f ? f->dayOfWeek + 1 : -1;
}

int COleDateTime::GetDayOfYear() const noexcept {
  const std::optional<Fields> f = Split(*this);
  return f ? f->dayOfYear : -1;
}

bool COleDateTime::GetAsTm(std::tm& out) const noexcept {
  const std::optional<Fields> f = Split(*this);
  if (!f) return false;
  out = std::tm{};
  out.tm_year = f->year - 1900;
  out.tm_mon = f->month - 1;
  out.tm_mday = f->day;
  out.tm_hour = f->hour;
  out.tm_min = f->minute;
  out.tm_sec = f->second;
  out.tm_wday = f->dayOfWeek;
  out.tm_yday = f->dayOfYear - 1;
  out.tm_isdst = -1;
  return true;
}

CString COleDateTime::Format(const char16_t* format) const {
  if (m_status == null || format == nullptr) return CString();
  const std::optional<Fields> f = Split(*this);
  if (!f) return CString(kInvalidText);
  std::u16string out;
  FormatInto(out, format, *f);
  return CString(std::u16string_view(out));
}

COleDateTime COleDateTime::operator+(const COleDateTimeSpan& span) const noexcept {
  COleDateTime result(*this);
  if (m_status != valid) return result;
  if (span.m_status != COleDateTimeSpan::valid) {
    result.m_status = invalid;
    return result;
  }
  const double moment = Linear(m_dt) + span.m_span;
  if (ToSecond(moment)) {
    result.m_dt = Serial(moment);
  } else {
    result.m_status = invalid;
  }
  return result;
}

COleDateTime COleDateTime::operator-(const COleDateTimeSpan& span) const noexcept {
  return *this + (-span);
}

COleDateTime& COleDateTime::operator+=(const COleDateTimeSpan& span) noexcept {
  return *this = *this + span;
}

COleDateTime& COleDateTime::operator-=(const COleDateTimeSpan& span) noexcept {
  return *this = *this - span;
}

COleDateTimeSpan COleDateTime::operator-(const COleDateTime& other) const noexcept {
  COleDateTimeSpan span(Linear(m_dt) - Linear(other.m_dt));
  if (m_status != valid || other.m_status != valid) span.m_status = COleDateTimeSpan::invalid;
  return span;
}

bool COleDateTime::operator==(const COleDateTime& other) const noexcept {
  return m_status == other.m_status && Linear(m_dt) == Linear(other.m_dt);
}

bool COleDateTime::operator<(const COleDateTime& other) const noexcept {
  return Linear(m_dt) < Linear(other.m_dt);
}

bool COleDateTime::operator<=(const COleDateTime& other) const noexcept {
  return Linear(m_dt) <= Linear(other.m_dt);
}
