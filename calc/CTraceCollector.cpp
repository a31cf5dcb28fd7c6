// calc/CTraceCollector.cpp: the trace of a calculation in its two forms, the
// expression lines of mode 1 and the name and value records of mode 2, and
// their one-string form for a host that stores them. The lines of mode 1 are
// written by the calculator (calc/CCalc.cpp) after each value it puts in.
#include "CTraceCollector.h"

#include "CFuncItem.h"
#include "CUtilityCalc.h"
#include "foundation/CStrKit.h"

namespace {

constexpr int kModeLines = 1;
constexpr int kModePairs = 2;

constexpr const char16_t* kRecordSep = u"!+-/*AbCbE";  // between two records
constexpr const char16_t* kSideSep = u"!AbCbE+-/*";    // between name and value
constexpr const char16_t* kLineEnd = u"\r\n";

}  // namespace

CTraceCollector::CTraceCollector() : nMode(0), sbLines(512) {}

CTraceCollector::~CTraceCollector() = default;

void CTraceCollector::Func_Calced(CFuncPara& para) {
  if (nMode != kModePairs) return;
  Func_Calced(para.strName, para.arrArgs, para.strResult);
}

void CTraceCollector::Func_Calced(CString& call, CString& value) {
  if (nMode != kModePairs || call.IsEmpty()) return;
  // Chosen: no trimming, so a host's text of code 3 is recorded exactly as
  // the calculator gave it.
  CStringArray lines;
  CUtilityCalc::CString2Array(lines, call.GetString(), kLineEnd, 0);
  CString name = lines.GetAt(0);
  CStringArray args;
  for (int i = 1; i < lines.GetSize(); ++i) args.Add(lines.GetAt(i));
  Func_Calced(name, args, value);
}

void CTraceCollector::Func_Calced(CString& name, CStringArray& args, CString& value) {
  if (nMode != kModePairs || name.IsEmpty()) return;
  CString call = name;
  call += u'(';
  if (args.GetSize() == 0) {
    call += u' ';  // "now( )": the blank tells a call from an empty text
  } else {
    for (int i = 0; i < args.GetSize(); ++i) {
      if (i > 0) call += u", ";
      call += args.GetAt(i);
    }
  }
  call += u')';
  arrNames.Add(call);
  arrValues.Add(value);
}

void CTraceCollector::Var_Calced(CString& name, CString& value) {
  if (nMode != kModePairs) return;
  arrNames.Add(name);
  arrValues.Add(value);
}

void CTraceCollector::InitString(const char16_t* text) {
  arrNames.RemoveAll();
  arrValues.RemoveAll();
  sbLines.Clear();
  if (nMode == 0 || text == nullptr || text[0] == 0) return;

  if (nMode == kModeLines) {
    sbLines.Set(text);
    return;
  }
  if (nMode != kModePairs) return;
  CStringArray records;
  CUtilityCalc::CString2Array(records, text, kRecordSep, 0);
  CString name;
  CString value;
  for (const CString& record : records) {
    if (CStrKit::GetLeftRight(record.GetString(), kSideSep, name, value, 0) == 0) continue;
    arrNames.Add(name);
    arrValues.Add(value);
  }
}

void CTraceCollector::GetString(CString& out) {
  if (nMode == kModeLines) {
    sbLines.GetStr(out);
    return;
  }
  if (nMode != kModePairs) return;
  CStringBuilder builder(512);
  for (int i = 0; i < arrNames.GetSize(); ++i) {
    if (i > 0) builder.Append(kRecordSep);
    builder.Append(arrNames.GetAt(i));
    builder.Append(kSideSep);
    // A host may have filled the arrays unevenly; a missing value is empty.
    CString value = i < arrValues.GetSize() ? arrValues.GetAt(i) : CString();
    builder.Append(value);
  }
  builder.GetStr(out);
}
