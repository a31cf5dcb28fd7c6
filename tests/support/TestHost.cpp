// tests/support/TestHost.cpp: the test host's loop over Calculate and its
// answers. It does what the library expects of a host and nothing more: the
// values it hands over are texts, and it keeps no node pointer across a
// call, since an answer that is an expression re-parses the tree.
#include "tests/support/TestHost.h"

#include <memory>

namespace vkt::test {

namespace {

std::u16string Lower(std::u16string text) {
  for (char16_t& c : text) {
    if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c - u'A' + u'a');
  }
  return text;
}

// strResult of code 3: the name and the arguments, a line each.
std::vector<std::u16string> SplitLines(const std::u16string& text) {
  std::vector<std::u16string> lines;
  std::size_t start = 0;
  for (;;) {
    std::size_t end = text.find(u"\r\n", start);
    if (end == std::u16string::npos) {
      lines.push_back(text.substr(start));
      return lines;
    }
    lines.push_back(text.substr(start, end - start));
    start = end + 2;
  }
}

}  // namespace

FakeLanguage::FakeLanguage()
    : texts{
          {1000, u"Invalid function name: %s"},
          {1003, u"Syntax error: %s"},
          {1004, u"Bad value: %s"},
          {1005, u"Number and text mixed: %s"},
          {1068, u"Invalid variable name: %s"},
          {1070, u"Brackets don't match: %s"},
          {1072, u"Function failed"},
      } {}

const char16_t* FakeLanguage::GetText(int nID) {
  auto it = texts.find(nID);
  if (it != texts.end()) return it->second.c_str();
  m_scratch.clear();
  m_scratch.push_back(u'E');
  for (char c : std::to_string(nID)) m_scratch.push_back(static_cast<char16_t>(c));
  return m_scratch.c_str();
}

void FakeLanguage::TranslateText(CString& text) { text.Insert(0, u"T:"); }

ScopedFakeLanguage::ScopedFakeLanguage() { SetLggInterface(&language); }

ScopedFakeLanguage::~ScopedFakeLanguage() { SetLggInterface(nullptr); }

bool TestHost::Answer(int code, const CString& request, CString& value, CTraceCollector* trace) {
  if (code == 2) {
    auto it = variables.find(Str(request));
    if (it == variables.end()) return false;
    value = CString(std::u16string_view(it->second));
    if (trace != nullptr && traceAnswers) {
      CString name(request);
      trace->Var_Calced(name, value);
    }
    return true;
  }

  std::vector<std::u16string> lines = SplitLines(Str(request));
  std::u16string name = lines.front();
  lines.erase(lines.begin());
  std::u16string answer;
  auto fixed = functions.find(Lower(name));
  if (fixed != functions.end()) {
    answer = fixed->second;
  } else if (!onFunction || !onFunction(name, lines, answer)) {
    return false;
  }
  value = CString(std::u16string_view(answer));
  if (trace != nullptr && traceAnswers) {
    CString call(request);
    trace->Func_Calced(call, value);
  }
  return true;
}

int TestHost::Drive(ICalc& calc, CalculatePara& para, RunOutcome* outcome) {
  int code = calc.Calculate(para);
  for (int round = 0; (code == 2 || code == 3) && round < maxRounds; ++round) {
    if (outcome != nullptr) outcome->asked.push_back(Str(para.strResult));
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
      outcome.value = Str(value);
    } else if (outcome.code == 2 || outcome.code == 3) {
      outcome.request = Str(para.strResult);
    }
  }
  outcome.error = errors.nError;
  outcome.funcName = Str(errors.strFuncName);
  const char16_t* text = errors.GetErrorText(nullptr);
  if (text != nullptr) outcome.errorText = text;
  return outcome;
}

}  // namespace vkt::test
