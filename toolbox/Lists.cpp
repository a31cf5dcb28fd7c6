// toolbox/Lists.cpp: cutting text into lists of strings and numbers, and the
// small array and comparison services the function table sorts and searches
// with. The forms with a one-unit separator cut with CStrKit::CString2Array;
// a text separator goes through ListCutting, the same rule for any length.
#include <algorithm>

#include "CUtilityCalc.h"
#include "foundation/CStrKit.h"
#include "platform/WideRuntime.h"
#include "foundation/ListCutting.h"

namespace {

int UnitCount(const char16_t* text) { return text == nullptr ? 0 : static_cast<int>(vkt::wcslen(text)); }

// Turns each four-unit backslash-r-backslash-n of an item into a real line end.
void ExpandLineEnds(CStringArray& items) {
  for (CString& item : items) item.Replace(u"\\r\\n", u"\r\n");
}

}  // namespace

void CUtilityCalc::CString2Array(CStringArray& out, const char16_t* text, const char16_t* sep, int bTrim) {
  vkt::CutList(out, text, sep, UnitCount(sep), bTrim != 0);
}

void CUtilityCalc::CString2ArrayEx(CStringArray& out, const char16_t* text, WORD sep, int bTrim) {
  CStrKit::CString2Array(out, text, sep, bTrim);
  ExpandLineEnds(out);
}

void CUtilityCalc::CString2ArrayEx(CStringArray& out, const char16_t* text, const char16_t* sep, int bTrim) {
  vkt::CutList(out, text, sep, UnitCount(sep), bTrim != 0);
  ExpandLineEnds(out);
}

void CUtilityCalc::CString2UIntArray(CUIntArray& out, CString& text, WORD sep) {
  text.Trim();
  if (text.IsEmpty()) return;
  CStringArray items;
  CStrKit::CString2Array(items, text.GetString(), sep, 1);
  out.RemoveAll();
  out.SetSize(0, items.GetSize());
  for (const CString& item : items) out.Add(static_cast<UINT>(vkt::_wtoi(item.GetString())));
}

int CUtilityCalc::StrCmpW(const char16_t* a, const char16_t* b, int bCase) {
  if (a == nullptr || b == nullptr) return (a != nullptr) - (b != nullptr);
  return bCase ? vkt::wcscoll(a, b) : vkt::_wcsicoll(a, b);
}

// Chosen: std::sort; equal plain numbers cannot be told apart, so the order
// is the one qsort gives.
void CUtilityCalc::Sort_CUIntArray(CUIntArray& items) {
  if (items.GetSize() < 2) return;
  std::sort(items.begin(), items.end());
}

int CUtilityCalc::CUIntArrayAppendSingle(CUIntArray& to, int value) {
  if (CStrKit::CUIntArrayFind(to, value) >= 0) return 0;
  to.Add(static_cast<UINT>(value));
  return 1;
}

int CUtilityCalc::CUIntArrayAppendSingle(CUIntArray& to, CUIntArray& from) {
  return CStrKit::CUIntArrayAppendSingle(to, from) > 0 ? 1 : 0;
}
