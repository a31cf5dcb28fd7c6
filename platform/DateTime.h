// platform/DateTime.h: dates with times of day, and spans between them.
//
// A COleDateTime is a double m_dt counted in days from 30 December 1899,
// 00:00 (serial 0), with a status: valid, invalid or null. The whole part
// names the day, the fraction the time of day. Before serial 0 the fraction
// still counts forward from that day's midnight, so the serial runs against
// time there: -1.25 is 29 December 1899 06:00, later than -1.0 at 00:00.
// Valid dates run from 1 January 100 to 31 December 9999; fields are read
// to the nearest second. Comparisons and arithmetic go by the moment in time
// that the serial names, not by the raw double.
//
// A COleDateTimeSpan is a double count of days, negative for a span back in
// time, with the same three statuses. A span longer than the whole calendar
// (1 January 100 to the end of 9999) is invalid.
//
// Anything that cannot be a date leaves the status invalid, never a crash:
// fields out of range, serials outside the calendar, NaN, arithmetic that
// runs off either end.
#pragma once

#include <ctime>

#include "VKTCalcExport.h"
#include "platform/CString.h"

class VKTCALC_API COleDateTimeSpan {
 public:
  enum DateTimeSpanStatus { valid = 0, invalid = 1, null = 2 };

  COleDateTimeSpan() noexcept;                  // 0 days, valid
  COleDateTimeSpan(double days) noexcept;       // invalid when not finite or too long
  COleDateTimeSpan(long days, int hours, int minutes, int seconds) noexcept;

  // The fields may have any sign and size; they are summed as seconds.
  void SetDateTimeSpan(long days, int hours, int minutes, int seconds) noexcept;
  DateTimeSpanStatus GetStatus() const noexcept { return m_status; }
  void SetStatus(DateTimeSpanStatus status) noexcept { m_status = status; }

  // The span as a plain number of units, fractions included.
  double GetTotalDays() const noexcept { return m_span; }
  double GetTotalHours() const noexcept { return m_span * 24.0; }
  double GetTotalMinutes() const noexcept { return m_span * 1440.0; }
  double GetTotalSeconds() const noexcept { return m_span * 86400.0; }

  // The span to the nearest second, split into whole days and the hours
  // (-23..23), minutes and seconds (-59..59) left over. Each part carries
  // the sign of the span: -1.5 hours is 0 days, -1 hour, -30 minutes.
  // Chosen: all parts are 0 for a span that is not valid.
  long GetDays() const noexcept;
  int GetHours() const noexcept;
  int GetMinutes() const noexcept;
  int GetSeconds() const noexcept;

  // Arithmetic is valid only when both sides are; else the result is invalid.
  COleDateTimeSpan operator+(const COleDateTimeSpan& other) const noexcept;
  COleDateTimeSpan operator-(const COleDateTimeSpan& other) const noexcept;
  COleDateTimeSpan operator-() const noexcept;
  COleDateTimeSpan& operator+=(const COleDateTimeSpan& other) noexcept;
  COleDateTimeSpan& operator-=(const COleDateTimeSpan& other) noexcept;

  // Equal: same status and same length. Ordering compares lengths only.
  bool operator==(const COleDateTimeSpan& other) const noexcept;
  bool operator!=(const COleDateTimeSpan& other) const noexcept { return !(*this == other); }
  bool operator<(const COleDateTimeSpan& other) const noexcept { return m_span < other.m_span; }
  bool operator>(const COleDateTimeSpan& other) const noexcept { return m_span > other.m_span; }
  bool operator<=(const COleDateTimeSpan& other) const noexcept { return m_span <= other.m_span; }
  bool operator>=(const COleDateTimeSpan& other) const noexcept { return m_span >= other.m_span; }

  double m_span;                  // days; the fraction is part of a day
  DateTimeSpanStatus m_status;
};

class VKTCALC_API COleDateTime {
 public:
  enum DateTimeStatus { valid = 0, invalid = 1, null = 2 };

  // The present local time, to the second.
  static COleDateTime GetCurrentTime();

  COleDateTime() noexcept;                 // serial 0.0, valid
  COleDateTime(double serial) noexcept;    // valid when inside the calendar
  COleDateTime(int year, int month, int day, int hour, int minute, int second) noexcept;
  explicit COleDateTime(const std::tm& fields) noexcept;  // tm_year + 1900, tm_mon + 1, ...
  COleDateTime& operator=(double serial) noexcept;

  // Each returns the new status: 0 when the fields make a date (year 100 to
  // 9999, month 1 to 12, day within the month, hour 0 to 23, minute and
  // second 0 to 59), else 1 with status invalid and m_dt unchanged. SetDate
  // sets midnight; SetTime sets the time of day on 30 December 1899.
  int SetDateTime(int year, int month, int day, int hour, int minute, int second) noexcept;
  int SetDate(int year, int month, int day) noexcept;
  int SetTime(int hour, int minute, int second) noexcept;

  DateTimeStatus GetStatus() const noexcept { return m_status; }
  void SetStatus(DateTimeStatus status) noexcept { m_status = status; }

  // Fields; -1 for a value that is not valid.
  int GetYear() const noexcept;
  int GetMonth() const noexcept;       // 1..12
  int GetDay() const noexcept;         // 1..31
  int GetHour() const noexcept;        // 0..23
  int GetMinute() const noexcept;      // 0..59
  int GetSecond() const noexcept;      // 0..59
  int GetDayOfWeek() const noexcept;   // 1 for Sunday .. 7 for Saturday
  int GetDayOfYear() const noexcept;   // 1 for 1 January

  // The fields as the C library keeps them (tm_isdst -1); false, with out
  // untouched, for a value that is not valid.
  bool GetAsTm(std::tm& out) const noexcept;

  // Text by the runtime's percent codes, with the C locale's names:
  //   %a %A  weekday, short and full      %b %B  month, short and full
  //   %d     day 01-31                    %H     hour 00-23
  //   %I     hour 01-12                   %j     day of the year 001-366
  //   %m     month 01-12                  %M     minute 00-59
  //   %p     AM or PM                     %S     second 00-59
  //   %U     week 00-53, Sunday first     %W     week 00-53, Monday first
  //   %w     weekday 0-6, Sunday 0        %y     year 00-99
  //   %Y     year in full, not padded     %%     a percent sign
  //   %c     %m/%d/%y %H:%M:%S           %x     %m/%d/%y
  //   %X     %H:%M:%S                     %n %t  new line and tab
  // A '#' after the percent drops the leading zeros of a number
  // (%#d gives 5, %#j gives 36) and makes %c and %x long:
  // "%A, %B %#d, %Y %H:%M:%S" and "%A, %B %#d, %Y".
  // Any other code, and a percent sign at the end, is copied as it stands.
  // Chosen: a null value formats as empty text, an invalid one as
  // "Invalid DateTime"; a null format gives empty text.
  CString Format(const char16_t* format) const;

  // Arithmetic. A date that is not valid keeps its status; an invalid span,
  // or a result outside the calendar, gives invalid.
  COleDateTime operator+(const COleDateTimeSpan& span) const noexcept;
  COleDateTime operator-(const COleDateTimeSpan& span) const noexcept;
  COleDateTime& operator+=(const COleDateTimeSpan& span) noexcept;
  COleDateTime& operator-=(const COleDateTimeSpan& span) noexcept;
  // The span from other to this date; invalid unless both are valid.
  COleDateTimeSpan operator-(const COleDateTime& other) const noexcept;

  // Equal: same status and same moment. Ordering compares the moments only,
  // whatever the status; callers test the status first.
  bool operator==(const COleDateTime& other) const noexcept;
  bool operator!=(const COleDateTime& other) const noexcept { return !(*this == other); }
  bool operator<(const COleDateTime& other) const noexcept;
  bool operator>(const COleDateTime& other) const noexcept { return other < *this; }
  bool operator<=(const COleDateTime& other) const noexcept;
  bool operator>=(const COleDateTime& other) const noexcept { return other <= *this; }

  double m_dt;                // days since 30 December 1899; see above for negatives
  DateTimeStatus m_status;
};
