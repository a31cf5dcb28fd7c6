// tests/support/TestHost.h: a small host that drives whole calculations the
// way a grid does: it parses a formula, loops over ICalc::Calculate, answers
// codes 2 (variables) and 3 (functions it computes itself) from its maps and
// records what it was asked. With it the one fake language of the tests and
// a guard that undoes a process-wide setting. Shared by the calculator's and
// the functions' tests, the fuzzer and the benchmarks.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "VKTCalc.h"
#include "tests/support/Text.h"

namespace vkt::test {

// A language interface with made-up texts: `texts` by number (an entry may
// be null: that number answers null), "E<number>" for a number it lacks.
// TranslateText puts "T:" in front.
class FakeLanguage : public ILggInterface {
 public:
  FakeLanguage();
  const char16_t* GetText(int nID) override;
  void TranslateText(CString& text) override;

  std::map<int, const char16_t*> texts;  // 1000, 1003, 1004, 1005, 1068, 1070, 1072 at start

 private:
  std::map<int, std::u16string> m_madeUp;  // stable pointers for the library to copy
};

// Runs `undo` when the scope ends, so that a failing assertion cannot leave
// a process-wide setting behind for later tests.
class OnExit {
 public:
  explicit OnExit(std::function<void()> undo) : m_undo(std::move(undo)) {}
  ~OnExit() { m_undo(); }
  OnExit(const OnExit&) = delete;
  OnExit& operator=(const OnExit&) = delete;

 private:
  std::function<void()> m_undo;
};

// Installs a FakeLanguage for the lifetime of the object and removes it after.
class ScopedFakeLanguage {
 public:
  ScopedFakeLanguage() { SetLggInterface(&language); }
  ~ScopedFakeLanguage() { SetLggInterface(nullptr); }
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

  // One text for a table to compare: "[kind] value" after code 0, else
  // "[kind] code error: text" (the request in place of the text for 2, 3).
  std::u16string Summary() const;
  std::u16string Asked() const;  // `asked` joined by ","
};

class TestHost {
 public:
  std::unordered_map<std::u16string, std::u16string> variables;  // exact names
  std::unordered_map<std::u16string, std::u16string> functions;  // lower-cased name: fixed value
  int checkGate = 0;  // CalculatePara::bCheckGate
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

// The older name of U() for a CString, kept for the benchmarks.
inline std::u16string Str(const CString& s) { return U(s); }
// A number in decimal, for texts that tests put together.
inline std::u16string Num(long long n) { return U(CString(std::to_string(n).c_str())); }

}  // namespace vkt::test
