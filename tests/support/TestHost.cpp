// tests/support/TestHost.cpp: the test host's loop over Calculate and its
// answers. It does what the library expects of a host and nothing more: the
// values it hands over are texts, and it keeps no node pointer across a
// call, since an answer that is an expression re-parses the tree.
#include "tests/support/TestHost.h"

#include <memory>

namespace vkt::test {

FakeLanguage::FakeLanguage()
    : texts{
          {1000, u"Invalid function name: %s"}, {1003, u"Syntax error: %s"},
          {1004, u"Bad value: %s"},             {1005, u"Number and text mixed: %s"},
          {1068, u"Invalid variable name: %s"}, {1070, u"Brackets don't match: %s"},
          {1072, u"Function failed"},
      } {}

const char16_t* FakeLanguage::GetText(int nID) {
  auto it = texts.find(nID);
  if (it != texts.end()) return it->second;
  std::u16string& text = m_madeUp[nID];
  text = u"E" + Num(nID);
  return text.c_str();
}

void FakeLanguage::TranslateText(CString& text) { text.Insert(0, u"T:"); }

std::u16string RunOutcome::Summary() const {
  const std::u16string kind = u"[" + Num(resultKind) + u"] ";
  if (code == 0) return kind + value;
  return kind + Num(code) + u" " + Num(error) + u": " + (code == 2 || code == 3 ? request : errorText);
}

std::u16string RunOutcome::Asked() const {
  std::u16string text;
  for (const std::u16string& item : asked) text += (text.empty() ? u"" : u",") + item;
  return text;
}

bool TestHost::Answer(int code, const CString& request, CString& value, CTraceCollector* trace) {
  // Code 3 asks with the name and the arguments, a line each; functions go by the lower-cased name.
  CString name = code == 3 && request.Find(u"\r\n") >= 0 ? request.Left(request.Find(u"\r\n")) : request;
  if (code == 3) name.MakeLower();
  const auto& answers = code == 2 ? variables : functions;
  auto it = answers.find(U(name));
  if (it == answers.end()) return false;
  value = CString(std::u16string_view(it->second));
  CString record(request);
  if (trace != nullptr && traceAnswers && code == 2) trace->Var_Calced(record, value);
  if (trace != nullptr && traceAnswers && code == 3) trace->Func_Calced(record, value);
  return true;
}

int TestHost::Drive(ICalc& calc, CalculatePara& para, RunOutcome* outcome) {
  int code = calc.Calculate(para);
  for (int round = 0; (code == 2 || code == 3) && round < maxRounds; ++round) {
    if (outcome != nullptr) outcome->asked.push_back(U(para.strResult));
    CString value;
    if (!Answer(code, para.strResult, value, para.pTrace)) break;
    if (calc.SetNodeValue(para.pRoot, para.pCurrent, value, para.pError, para.pTrace) == 0) {
      code = -1;  // the answer broke the tree: the run has failed
      break;
    }
    code = calc.Calculate(para);
  }
  return code;
}

RunOutcome TestHost::Run(ICalc& calc, const char16_t* formula, CTraceCollector* trace) {
  RunOutcome outcome;
  CErrorCollector errors;
  std::unique_ptr<ICalcTreeNode> root(CUtilityCalc::ParseExpression_Formula(formula, &errors));
  if (root == nullptr) {
    outcome.parsed = 0;
    outcome.code = -1;
  } else {
    CalculatePara para;
    para.pError = &errors;
    para.pTrace = trace;
    para.pRoot = root.get();
    para.bCheckGate = checkGate;
    para.nDispFormat = dispFormat;
    outcome.code = Drive(calc, para, &outcome);
    outcome.resultKind = para.nResultKind;
    if (outcome.code == 0) {
      CString value;
      root->GetValue(value, 0, 0);
      outcome.value = U(value);
    } else if (outcome.code == 2 || outcome.code == 3) {
      outcome.request = U(para.strResult);
    }
  }
  outcome.error = errors.nError;
  outcome.funcName = U(errors.strFuncName);
  const char16_t* text = errors.GetErrorText(nullptr);
  if (text != nullptr) outcome.errorText = text;
  return outcome;
}

}  // namespace vkt::test
