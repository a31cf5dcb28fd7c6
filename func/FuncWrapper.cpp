// func/FuncWrapper.cpp: the one road on which every body runs. It takes the
// quotes off the arguments, calls the body, and turns what the body gives
// back into either a result that the evaluator can read (a pure number or a
// quoted text) or an error text. Error numbers are the calculator's affair.
#include "func/FuncWrapper.h"

#include "CErrorCollector.h"
#include "CGmp.h"
#include "CUtilityCalc.h"
#include "func/ProcessState.h"
#include "foundation/CStrKit.h"
#include "tree/ErrorNumbers.h"

namespace vkt::func {

namespace {

// Kinds whose result is text even when it reads as a number.
bool IsTextKind(BYTE kind) { return kind == 1 || kind == 3 || kind == 4; }

// Kinds that become text when the result is no pure number; kind 0 keeps
// its 0, since a body such as if() chose it on purpose.
bool IsNumberKind(BYTE kind) { return kind == 2 || kind == 5 || kind == 6; }

void UnquoteArguments(CFuncPara& para) {
  const int count = para.arrArgs.GetSize();
  for (int i = 0; i < count; ++i) {
    CString copy(para.arrArgs[i]);
    if (CUtilityCalc::Dettach_Quotes(copy, 1) == 0) continue;
    para.arrArgs.SetAt(i, copy);
    if (para.arrQuoted.GetSize() <= i) para.arrQuoted.SetSize(i + 1);
    para.arrQuoted.SetAt(i, 1);
  }
}

}  // namespace

int RunBody(CFuncPara& para, PFN_FUNCBODY body, CErrorCollector* pErr) {
  UnquoteArguments(para);
  const int answer = body(&para, para.arrArgs.GetSize());

  if (answer != 1) {
    if (para.strResult.IsEmpty() && (answer == 0 || answer == -1))
      para.strResult = FormatOneArgument(LanguageText(answer == 0 ? kErrSyntax : kErrOutOfRange), CallText(para));
    if (pErr != nullptr) pErr->SetErrorText(para.strResult.GetString());
    para.strResult.Empty();
    return 0;
  }

  if (para.strResult.IsEmpty()) return 1;
  if (!IsTextKind(para.nResultKind)) {
    if (CUtilityCalc::IsPureNumber(para.strResult.GetString(), 0, CGmp::CheckStrict_Normal, 0))
      return 1;
    if (IsNumberKind(para.nResultKind)) para.nResultKind = 1;
  }
  // Whether the body quoted its text or not, it leaves with one pair.
  CUtilityCalc::Dettach_Quotes(para.strResult, 1);
  CUtilityCalc::Attach_Quotes(para.strResult, 1);
  return 1;
}

CString CallText(CFuncPara& para) {
  CString text(para.strName);
  text += u'(';
  text += CStrKit::Array2CString(para.arrArgs, u", ");
  text += u')';
  return text;
}

}  // namespace vkt::func
