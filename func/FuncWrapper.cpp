// func/FuncWrapper.cpp: the one road on which every body runs. It takes the
// quotes off the arguments, calls the body, and turns what the body gives
// back into either a result that the evaluator can read (a pure number or a
// quoted text) or an error text. Error numbers are the calculator's affair.
#include "func/FuncWrapper.h"

#include <utility>
#include <vector>

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

// arrQuoted reaches one past the last quoted argument (new entries 0); it
// is sized once, since growing it entry by entry would copy it again and
// again on a call with many arguments.
void UnquoteArguments(CFuncPara& para) {
  const int count = para.arrArgs.GetSize();
  std::vector<int> quoted;
  for (int i = 0; i < count; ++i) {
    CString copy(para.arrArgs[i]);
    if (CUtilityCalc::Dettach_Quotes(copy, 1) == 0) continue;
    para.arrArgs.ElementAt(i) = std::move(copy);
    quoted.push_back(i);
  }
  if (quoted.empty()) return;
  if (para.arrQuoted.GetSize() <= quoted.back()) para.arrQuoted.SetSize(quoted.back() + 1);
  for (int i : quoted) para.arrQuoted.SetAt(i, 1);
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
