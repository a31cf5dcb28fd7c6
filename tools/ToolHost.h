// tools/ToolHost.h: the host side of the vktcalc tool. It owns the
// calculator and its function manager, registers the tool's own functions,
// keeps the variables given as NAME=VALUE, and drives one formula at a time
// through the run loop: parse, Calculate, answer each variable (run code 2)
// and each function the library leaves to the host (run code 3), until the
// result or an error.
//
// The tool's functions show both ways a host adds one:
// - clamp(value, low, high) is registered with a body: the library runs it;
// - env(name, [default]) is registered without a body: the library stops
//   with run code 3 and the tool computes it.
// A call of any other function that the library cannot run ends the run with
// kExitFunction and a message that names it.
//
// Text crosses this interface as UTF-8; messages use "\n" as line end.
#pragma once

#include "VKTCalc.h"

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vkt::tool {

// Exit codes of the tool; --help documents them.
enum ExitCode : int {
  kExitOk = 0,
  kExitFormula = 1,   // the formula does not parse, or its calculation failed
  kExitUsage = 2,     // bad option or argument, a file that cannot be read
  kExitVariable = 3,  // a variable that has no value
  kExitFunction = 4,  // a function that nobody computes
};

enum class TraceMode {
  kOff,
  kSteps,   // the whole expression after each value put in
  kValues,  // "name = value" for each variable and function used
};

// How one formula went.
struct RunReport {
  int exitCode = kExitOk;
  std::string value;               // the result when exitCode is kExitOk
  std::vector<std::string> trace;  // the trace lines, when a trace was asked for
  std::string error;               // otherwise what went wrong, possibly several lines
};

// True when `line` is NAME=VALUE with a valid variable name: a first "="
// that is not part of "==", and a valid name before it. An interactive line
// of that form sets a variable rather than being computed.
bool IsAssignment(std::string_view line);

// The parts joined into one string. Messages are built with it rather than
// with "literal" + string, which gcc 12 at -O3 warns about falsely
// (-Wrestrict).
std::string Concat(std::initializer_list<std::string_view> parts);

class ToolHost {
 public:
  // The language interface must be installed first (SetLggInterface): the
  // manager and the error texts use it.
  ToolHost();
  ~ToolHost();
  ToolHost(const ToolHost&) = delete;
  ToolHost& operator=(const ToolHost&) = delete;

  // "NAME=VALUE": sets the variable, replacing one whose name differs only
  // in case. The value is text as SetNodeValue takes it: a number, a quoted
  // text, an expression, or empty for the empty text. False, with the reason
  // in `problem`, when the argument is not of that form.
  bool SetAssignment(std::string_view argument, std::string& problem);

  // Computes one formula ("=" in front is optional).
  RunReport Run(std::string_view formula, TraceMode mode);

  // The text of --functions: every category with its functions, usage and
  // description, the built-ins first.
  std::string FunctionList();

  // A run gives up after this many answered stops, and after this many
  // values that were expressions (a variable that refers to itself would
  // otherwise grow the formula for ever).
  static constexpr int kMaxAnswers = 100000;
  static constexpr int kMaxExpressionAnswers = 256;

  // What the host answers for code 2 (a NAME=VALUE variable) or 3 (strResult
  // of a function request); kExitOk with the value, or an exit code and the
  // message. The sheet mode asks them for what is not a cell.
  int AnswerVariable(const CString& name, CString& value, std::string& error);
  int AnswerFunction(const CString& request, CString& value, std::string& error);
  // The one calculator, with the tool's functions registered; null only when
  // memory ran out.
  ICalc* Calc() const { return m_calc.get(); }

 private:
  void RegisterFunctions();
  // Answers the stop `code` (2 or 3) of a run and puts the value in; false,
  // with the exit code and message in report, when the run must end.
  bool AnswerStop(int code, CalculatePara& para, CTraceCollector& trace, RunReport& report);

  int m_answers = 0;            // answered stops of the current run
  int m_expressionAnswers = 0;  // of them, values that were expressions

  std::unique_ptr<ICalc> m_calc;
  CFuncMnger* m_mnger = nullptr;                  // owned by the calculator
  std::vector<std::pair<CString, CString>> m_variables;  // name, value as given
};

}  // namespace vkt::tool
