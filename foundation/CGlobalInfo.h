// foundation/CGlobalInfo.h: the one process-wide information object.
//
// It is made on first use, from any thread, and lives until the library is
// unloaded. What it holds is computed once, when it is made.
#pragma once

#include "VKTCalcExport.h"
#include "platform/DateTime.h"

class VKTCALC_API CGlobalInfo {
 public:
  static CGlobalInfo* GetInstance();

  CGlobalInfo(const CGlobalInfo&) = delete;
  CGlobalInfo& operator=(const CGlobalInfo&) = delete;

  // The span that turns local time into UTC (local + span = UTC): negative
  // east of Greenwich, -8 hours for UTC+8. Taken from the time zone when the
  // object is made, daylight saving time then in force included.
  COleDateTimeSpan* GetLocalDateTimeSpan();

 private:
  CGlobalInfo();
  ~CGlobalInfo();

  COleDateTimeSpan m_localToUtc;
};
