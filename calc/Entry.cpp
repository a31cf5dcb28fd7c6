// calc/Entry.cpp: the plain exports a host finds by name: date formats,
// the language interface, the SOAP-like error finder, date checks and the
// system clock. Nothing here computes; each is a setter, getter or check.
#include "VKTCalcEntry.h"
#include "func/ProcessState.h"
#include "platform/Clock.h"

ILggInterface::~ILggInterface() = default;
IInvokeJS::~IInvokeJS() = default;

void SetDateTimeFormat(const char16_t* format, int dateOnly) {
  vkt::ProcessStateData& state = vkt::ProcessState();
  CString copy(format);  // made outside the lock; null stores empty
  CCritSecGuard guard(state.formatLock);
  (dateOnly ? state.dateFormat : state.dateTimeFormat) = std::move(copy);
}

void GetDateTimeFormat(CString& out, int dateOnly) {
  vkt::ProcessStateData& state = vkt::ProcessState();
  CCritSecGuard guard(state.formatLock);
  out = dateOnly ? state.dateFormat : state.dateTimeFormat;
}

CString TimeToString(const COleDateTime& time, int dateOnly) {
  CString format;
  GetDateTimeFormat(format, dateOnly);
  return time.Format(format.GetString());
}

void SetLggInterface(ILggInterface* lgg) {
  vkt::ProcessState().language.exchange(lgg, std::memory_order_acq_rel);
}

void InjectionAPI_FindAndGetSoapLikeError(int (*finder)(CString&)) {
  vkt::ProcessState().soapFinder.store(finder, std::memory_order_release);
}

int isdt(const COleDateTime* time, int minYear) {
  return time->GetStatus() == COleDateTime::valid && time->GetYear() >= minYear ? 1 : 0;
}

void chkdt(COleDateTime* time, int minYear) {
  if (time->GetStatus() == COleDateTime::valid && time->GetYear() < minYear)
    time->SetStatus(COleDateTime::invalid);
}

ULONGLONG GetTickTime() { return vkt::platform::SystemTimeSince1601() / 10000; }
