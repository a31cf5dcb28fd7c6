// foundation/CGlobalInfo.cpp: the process-wide information object. The
// function-local static makes first use thread-safe without a lock of ours.
#include "foundation/CGlobalInfo.h"

#include "platform/Clock.h"

CGlobalInfo* CGlobalInfo::GetInstance() {
  static CGlobalInfo instance;
  return &instance;
}

CGlobalInfo::CGlobalInfo() : m_localToUtc(0, 0, 0, vkt::platform::LocalToUtcSeconds()) {}

CGlobalInfo::~CGlobalInfo() = default;

COleDateTimeSpan* CGlobalInfo::GetLocalDateTimeSpan() { return &m_localToUtc; }
