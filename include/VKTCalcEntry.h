// VKTCalcEntry.h: the plain exports of the library and the two interfaces a
// host implements for it: its language interface and its script host.
#pragma once

#include "VKTCalcExport.h"
#include "platform/Arrays.h"
#include "platform/CString.h"
#include "platform/DateTime.h"
#include "platform/Types.h"

// The host's language interface: maps text numbers (error numbers and the
// ids of the function table) to texts in the host's language. The library
// holds no message text of its own.
class VKTCALC_API ILggInterface {
 public:
  virtual ~ILggInterface();
  // The text of a number; it must stay valid until the caller has copied it.
  virtual const char16_t* GetText(int nID) = 0;
  // Translates, in place, a text that a registered function supplied itself.
  virtual void TranslateText(CString& text) = 0;
};

// The host's script host, handed to NewCalc. The library calls Invoke only;
// a non-zero result means success.
class VKTCALC_API IInvokeJS {
 public:
  virtual ~IInvokeJS();
  virtual int Invoke(CString& strFunc, CStringArray& arrArgs, CString& strResult) = 0;
};

// Date formats, by the percent codes of COleDateTime::Format. A non-zero
// dateOnly selects the date format ("%Y.%m.%d" at load), zero the date-time
// format ("%Y.%m.%d %H:%M:%S" at load). A null format stores an empty one.
VKTCALC_API void SetDateTimeFormat(const char16_t* format, int dateOnly);
VKTCALC_API void GetDateTimeFormat(CString& out, int dateOnly);
VKTCALC_API CString TimeToString(const COleDateTime& time, int dateOnly);

// Installs the language interface (an atomic exchange). The library never
// deletes it and has no default: install it before the first error text.
VKTCALC_API void SetLggInterface(ILggInterface* lgg);

// Installs the finder of SOAP-like errors in script results; null removes it.
VKTCALC_API void InjectionAPI_FindAndGetSoapLikeError(int (*finder)(CString&));

// 1 when time is valid and its year is at least minYear, else 0.
VKTCALC_API int isdt(const COleDateTime* time, int minYear);
// Makes a valid time whose year is below minYear invalid; its value stays.
VKTCALC_API void chkdt(COleDateTime* time, int minYear);

// The weekday characters for hosts, Sunday first; the library does not
// read them.
extern VKTCALC_API const char16_t* g_arrWeekDay[7];

// Milliseconds since 1 January 1601 UTC (not since boot).
VKTCALC_API ULONGLONG GetTickTime();
