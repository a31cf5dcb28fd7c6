// tools/ToolHost.cpp: the run loop of the vktcalc tool, its variables and
// its two host functions. Values go to the library as text only; no node
// pointer is kept across SetNodeValue, since an expression answer re-parses
// the tree. Presentation (where a message goes, which exit code wins over
// several formulas) is left to vktcalc.cpp.
#include "tools/ToolHost.h"

#include <cstdlib>

namespace vkt::tool {

namespace {

// The library's messages end their lines with CR LF; a terminal wants LF.
std::string ToDisplay(const CString& text) {
  std::string out = text.ToUtf8();
  std::string::size_type at = 0;
  while ((at = out.find("\r\n", at)) != std::string::npos) out.erase(at, 1);
  return out;
}

std::vector<CString> SplitLines(const CString& text) {
  CStringArray parts;
  CUtilityCalc::CString2Array(parts, text, u"\r\n", 0);
  std::vector<CString> lines;
  for (int i = 0; i < parts.GetSize(); ++i) lines.push_back(parts[i]);
  return lines;
}

// The text of a failed parse or calculation: the collector's caret display.
std::string ErrorDisplay(CErrorCollector& errors) {
  const char16_t* text = errors.GetErrorText(nullptr);
  if (text != nullptr && *text != 0) return ToDisplay(CString(text));
  std::string fallback = "the calculation failed";
  if (errors.nError > 0) fallback += Concat({" (error ", std::to_string(errors.nError), ")"});
  return fallback;
}

bool IsValidName(const CString& name) {
  int position = 0;
  return !name.IsEmpty() &&
         CUtilityCalc::IsValidVarName(name, CUtilityCalc::Calc_IsChineseEnabled(), 1, 1,
                                      position) != 0;
}

// Splits NAME=VALUE at its first "=". False when there is none, when it is
// the start of "==", or when the name (trimmed of blanks) is not valid.
bool SplitAssignment(std::string_view text, CString& name, CString& value) {
  const std::string_view::size_type equals = text.find('=');
  if (equals == std::string_view::npos) return false;
  if (equals + 1 < text.size() && text[equals + 1] == '=') return false;
  name = CString::FromUtf8(text.substr(0, equals));
  name.Trim(u' ');
  value = CString::FromUtf8(text.substr(equals + 1));
  return IsValidName(name);
}

// clamp(value, low, high): the value if it lies between low and high, else
// the nearer bound. Like max and min, it gives the winning argument's own
// (normalised) text.
int ClampBody(CFuncPara* para, int argc) {
  if (argc != 3) return 0;  // the library reports the call as a bad one
  for (int i = 0; i < argc; ++i) {
    if (!CUtilityCalc::IsPureNumber(para->arrArgs[i], 0, CGmp::CheckStrict_Full, 0)) return -1;
  }
  if (para->ResetDoubleString_Para() == 0) return -1;  // too many digits
  CGmp value(para->arrArgs[0].GetString());
  CGmp low(para->arrArgs[1].GetString());
  CGmp high(para->arrArgs[2].GetString());
  if (low > high) return -1;
  int winner = 0;
  if (value < low) {
    winner = 1;
  } else if (value > high) {
    winner = 2;
  }
  para->strResult = para->arrArgs[winner];
  return 1;
}

// env(name, [default]), computed by the tool on run code 3: the value of an
// environment variable of the tool's process, else the default, else the
// empty text. The arguments come as the request gave them, texts in quotes.
int ComputeEnv(const std::vector<CString>& args, CString& value, std::string& error) {
  if (args.empty() || args.size() > 2) {
    error = "env takes a name and an optional default: env(name, [default])";
    return kExitFormula;
  }
  CString name(args[0]);
  CUtilityCalc::Dettach_Quotes(name, 1);
  const char* found = name.IsEmpty() ? nullptr : std::getenv(name.ToUtf8().c_str());
  if (found != nullptr) {
    value = CString::FromUtf8(found);
    CUtilityCalc::Attach_Quotes(value, 1);  // always a text, whatever it reads like
  } else if (args.size() == 2) {
    value = args[1];  // a number stays a number, a quoted text a text
  } else {
    value = u"''";
  }
  return kExitOk;
}

struct HostFunction {
  const char16_t* name;
  int (*compute)(const std::vector<CString>& args, CString& value, std::string& error);
};

// The functions the tool computes itself when the library asks (run code 3).
constexpr HostFunction kHostFunctions[] = {
    {u"env", ComputeEnv},
};

constexpr const char16_t* kToolGroup = u"vktcalc";
constexpr const char16_t* kToolCategory = u"Functions of this tool";

}  // namespace

std::string Concat(std::initializer_list<std::string_view> parts) {
  std::string out;
  for (std::string_view part : parts) out += part;
  return out;
}

bool IsAssignment(std::string_view line) {
  CString name;
  CString value;
  return SplitAssignment(line, name, value);
}

ToolHost::ToolHost() : m_calc(NewCalc(nullptr, nullptr)) {
  if (m_calc != nullptr) m_mnger = m_calc->GetFuncMnger();
  RegisterFunctions();
}

ToolHost::~ToolHost() = default;

void ToolHost::RegisterFunctions() {
  if (m_mnger == nullptr) return;

  // Named category "vktcalc\Functions of this tool"; texts of our own
  // rather than text ids, so that GetFuncInfo takes them as they are.
  auto* clamp = new CFuncItem(u"clamp", 0, -1, 6);
  clamp->strGroup = kToolGroup;
  clamp->strCategory = kToolCategory;
  clamp->strDesc = u"The value, or the nearer bound when it lies outside low to high.";
  clamp->arrParamText.Add(CString(u"(value, low, high)"));
  clamp->arrParaKinds.Add(2);
  clamp->pfnBody = ClampBody;
  m_mnger->m_arrItems.Add(clamp);

  auto* env = new CFuncItem(u"env", 0, -1, 1);
  env->strGroup = kToolGroup;
  env->strCategory = kToolCategory;
  env->strDesc = u"The value of an environment variable, else the default, else empty.";
  env->arrParamText.Add(CString(u"(name, [default])"));
  env->arrParaKinds.Add(1);
  m_mnger->m_arrItems.Add(env);  // no body: the tool answers run code 3
}

bool ToolHost::SetAssignment(std::string_view argument, std::string& problem) {
  CString name;
  CString value;
  if (!SplitAssignment(argument, name, value)) {
    problem = Concat({"'", argument, "' is not NAME=VALUE with a valid variable name"});
    return false;
  }
  for (auto& variable : m_variables) {
    if (variable.first.CompareNoCase(name) == 0) {
      variable.second = value;
      return true;
    }
  }
  m_variables.emplace_back(name, value);
  return true;
}

int ToolHost::AnswerVariable(const CString& name, CString& value, std::string& error) {
  for (const auto& variable : m_variables) {
    if (variable.first.CompareNoCase(name) == 0) {
      value = variable.second;
      return kExitOk;
    }
  }
  const std::string text = name.ToUtf8();
  error = Concat({"no value for variable ", text, "; give it one as ", text, "=VALUE"});
  return kExitVariable;
}

int ToolHost::AnswerFunction(const CString& request, CString& value, std::string& error) {
  std::vector<CString> args = SplitLines(request);
  const CString name = args.empty() ? CString() : args.front();
  if (!args.empty()) args.erase(args.begin());

  for (const HostFunction& function : kHostFunctions) {
    if (name.CompareNoCase(function.name) == 0) return function.compute(args, value, error);
  }
  const int index = m_mnger != nullptr ? m_mnger->FindFunc(name) : -1;
  if (index >= 0 && index < 1000) {
    error = Concat({"the built-in function ", name.ToUtf8(),
                    " has no body in this build of the library"});
  } else {
    error = Concat({"unknown function ", name.ToUtf8()});
  }
  return kExitFunction;
}

namespace {

// The message of a run that stopped with neither a result nor a question.
void ReportFailure(int code, CErrorCollector& errors, RunReport& report) {
  if (code == 6) {
    report.exitCode = kExitFunction;
    report.error = Concat({"the call of ", errors.strFuncName.ToUtf8(), " was held back"});
  } else {
    report.exitCode = kExitFormula;
    report.error = ErrorDisplay(errors);
  }
}

// The trace lines the mode asks for.
void CollectTrace(TraceMode mode, CTraceCollector& trace, RunReport& report) {
  if (mode == TraceMode::kSteps) {
    CString lines;
    trace.GetString(lines);
    for (const CString& line : SplitLines(lines)) {
      if (!line.IsEmpty()) report.trace.push_back(line.ToUtf8());
    }
  } else if (mode == TraceMode::kValues) {
    for (int i = 0; i < trace.arrNames.GetSize(); ++i)
      report.trace.push_back(
          Concat({trace.arrNames[i].ToUtf8(), " = ", trace.arrValues[i].ToUtf8()}));
  }
}

}  // namespace

RunReport ToolHost::Run(std::string_view formula, TraceMode mode) {
  RunReport report;
  if (m_calc == nullptr) {
    report.exitCode = kExitFormula;
    report.error = "out of memory";
    return report;
  }

  CErrorCollector errors;
  CTraceCollector trace;
  trace.nMode = mode == TraceMode::kSteps ? 1 : mode == TraceMode::kValues ? 2 : 0;
  trace.InitString(nullptr);

  const CString text = CString::FromUtf8(formula);
  std::unique_ptr<ICalcTreeNode> root(CUtilityCalc::ParseExpression_Formula(text, &errors));
  if (root == nullptr) {
    report.exitCode = kExitFormula;
    report.error = errors.nError != 0 ? ErrorDisplay(errors) : "the formula is empty";
    return report;
  }

  CalculatePara para;
  para.pError = &errors;
  para.pTrace = mode == TraceMode::kOff ? nullptr : &trace;
  para.pRoot = root.get();
  para.bCheckGate = 0;
  para.nDispFormat = 0;

  m_answers = 0;
  m_expressionAnswers = 0;
  for (;;) {
    const int code = m_calc->Calculate(para);
    if (code == 0) {
      CString value;
      root->GetValue(value, 0, 0);
      report.value = value.ToUtf8();
      break;
    }
    if (code != 2 && code != 3) {
      ReportFailure(code, errors, report);
      break;
    }
    if (!AnswerStop(code, para, trace, report)) break;
  }
  CollectTrace(mode, trace, report);
  return report;
}

bool ToolHost::AnswerStop(int code, CalculatePara& para, CTraceCollector& trace, RunReport& report) {
  // The request stays readable after SetNodeValue; the node does not.
  const CString request = para.strResult;
  CString value;
  report.exitCode = code == 2 ? AnswerVariable(request, value, report.error)
                              : AnswerFunction(request, value, report.error);
  if (report.exitCode != kExitOk) return false;

  const bool expression = !value.IsEmpty() &&
                          CUtilityCalc::IsPureNumber(value, 1, CGmp::CheckStrict_None, 0) == 0 &&
                          CUtilityCalc::DetectStringQuotes(value) == 0;
  if (++m_answers > kMaxAnswers || (expression && ++m_expressionAnswers > kMaxExpressionAnswers)) {
    report.exitCode = kExitFormula;
    report.error = Concat({"gave up after ", std::to_string(m_answers),
                           " values: does a variable refer to itself?"});
    return false;
  }
  CString asked(request);  // the trace's calls take a text they may change
  if (code == 2)
    trace.Var_Calced(asked, value);  // ignored unless the trace keeps values
  else
    trace.Func_Calced(asked, value);
  if (m_calc->SetNodeValue(para.pRoot, para.pCurrent, value, para.pError, para.pTrace) == 0) {
    report.exitCode = kExitFormula;
    const std::vector<CString> lines = SplitLines(request);
    const CString what = code == 2 || lines.empty() ? request : lines.front();
    report.error = Concat({ErrorDisplay(*para.pError), "\n(after the value of ", what.ToUtf8(),
                           " was put in)"});
    return false;
  }
  return true;
}

std::string ToolHost::FunctionList() {
  std::string out;
  if (m_mnger == nullptr) return out;
  for (int position = 0;; ++position) {
    CArray<CFuncItem*, CFuncItem*> records;
    if (m_mnger->ListCategory(position, records) == 0) break;
    if (!out.empty()) out += "\n";
    if (records.GetSize() > 0) out += records[0]->strCategory.ToUtf8();
    out += "\n";
    for (CFuncItem* record : records) {
      const CString params = record->arrParamText.GetSize() > 0 ? record->arrParamText[0]
                                                                 : CString(u"()");
      out += Concat({"  ", record->strName.ToUtf8(), params.ToUtf8()});
      const int index = m_mnger->FindFunc(record->strName);
      const CFuncInfo* info = index >= 0 ? m_mnger->GetFuncByIndex(index) : nullptr;
      if (info != nullptr && index < 1000 && info->pfnBody == nullptr)
        out += "  [not in this build]";
      out += Concat({"\n      ", record->strDesc.ToUtf8(), "\n"});
      delete record;
    }
  }
  return out;
}

}  // namespace vkt::tool
