// tests/support/TestHost.h: a small host that drives whole calculations the
// way a grid does: it parses a formula, loops over ICalc::Calculate and
// answers codes 2 (variables, from a map) and 3 (functions it computes
// itself), and records in its own trace what it answered. Shared by the
// calculator's tests, the fuzzer and the benchmarks.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "VKTCalc.h"

namespace vkt::test {

// A language interface with made-up texts: "E<number>" for any number that
// has no text of its own, and a few with "%s" for the errors the calculator
// shows. TranslateText puts "T:" in front.
class FakeLanguage : public ILggInterface {
 public:
  FakeLanguage();
  const char16_t* GetText(int nID) override;
  void TranslateText(CString& text) override;

  std::map<int, std::u16string> texts;  // the host's own texts by number

 private:
  std::u16string m_scratch;  // the last made-up text, valid until the next call
};

// Installs a FakeLanguage for the lifetime of the object and removes it after.
class ScopedFakeLanguage {
 public:
  ScopedFakeLanguage();
  ~ScopedFakeLanguage();
  ScopedFakeLanguage(const ScopedFakeLanguage&) = delete;
  ScopedFakeLanguage& operator=(const ScopedFakeLanguage&) = delete;

  FakeLanguage language;
};

// How one run ended.
struct RunOutcome {
  int code = 0;                    // last run code: 0, -1, 6, or 2 / 3 left unanswered
  std::u16string value;            // code 0: root->GetValue(text, 0, 0)
  unsigned char resultKind = 0;    // para.nResultKind at the end
  int error = 0;                   // the collector's number
  std::u16string errorText;        // GetErrorText(null), empty for none
  std::u16string funcName;         // the collector's strFuncName
  std::u16string request;          // code 2 / 3 left unanswered: strResult
  int parsed = 1;                  // 0 when the formula did not parse
  std::vector<std::u16string> asked;  // every strResult of code 2 and 3, in order
};

class TestHost {
 public:
  // The host's answer to a function it computes itself: the name, the
  // arguments as strResult gave them (quotes kept); true with the value,
  // false to leave the request unanswered.
  using FunctionAnswer =
      std::function<bool(const std::u16string& name, const std::vector<std::u16string>& args,
                         std::u16string& value)>;

  std::unordered_map<std::u16string, std::u16string> variables;  // exact names
  std::unordered_map<std::u16string, std::u16string> functions;  // lower-cased name: fixed value
  FunctionAnswer onFunction;  // asked when `functions` has no entry; may be empty
  int checkGate = 0;          // CalculatePara::bCheckGate
  unsigned char dispFormat = 0;
  // Calls the trace's Var_Calced and Func_Calced for what the host answered,
  // as a host that shows the whole trace does.
  bool traceAnswers = true;
  int maxRounds = 1000;  // answered stops before giving up (code stays 2 or 3)

  // Parses text as a cell formula and drives it to its end; the tree is
  // destroyed afterwards.
  RunOutcome Run(ICalc& calc, const char16_t* formula, CTraceCollector* trace = nullptr);
  // Drives a parsed tree (para's root, collectors and flags set by the
  // caller) until a code other than an answered 2 or 3.
  int Drive(ICalc& calc, CalculatePara& para, RunOutcome* outcome = nullptr);

 private:
  // The answer to a code 2 or 3 request; false when the host has none.
  bool Answer(int code, const CString& request, CString& value, CTraceCollector* trace);
};

// The text of a CString as a std::u16string, for comparisons in tests.
inline std::u16string Str(const CString& s) { return std::u16string(s.View()); }

}  // namespace vkt::test
