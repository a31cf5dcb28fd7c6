// bench/PeerBench.cpp: VKTCalc against muparser, a widely used expression
// engine that computes in doubles, on formulas both can express: arithmetic
// with variables, nested brackets, comparisons and min/max/sum calls. Two
// ways of use, one templated body for both sides: parse once and evaluate
// many times, and parse and evaluate each time. Before timing, a table shows
// both results of every formula and why they differ where they do; after the
// run, formulas per second for both sides and the ratio of their times.
//
// Each side works the way its interface is meant to be used. muparser parses
// at the first Eval after SetExpr and keeps the compiled form for later Evals.
// A VKTCalc calculation uses its tree up, so parse-once calculates a Clone of
// the parsed tree each time; a host answers each variable (run code 2) with
// its text and reads the result as text, as a grid does.
#include <benchmark/benchmark.h>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "VKTCalc.h"
#include "tests/support/TestHost.h"

#if VKTCALC_HAVE_MUPARSER
#include <muParser.h>
#endif

namespace {

struct Variable {
  const char* name;
  const char* value;  // the same decimal text for both sides
};

// 0.1 and 0.2 have no exact binary form; 3, 1.5 and 7 do.
constexpr Variable kVariables[] = {{"a", "0.1"}, {"b", "0.2"}, {"c", "3"}, {"d", "1.5"}, {"e", "7"}};

struct Formula {
  const char* text;      // as muparser writes it
  const char* expected;  // VKTCalc's exact result, checked once before timing
};

// Our language writes equality as a single "=" and needs the leading "=" of a
// cell formula; everything else is spelled alike (see OurText). Division cuts
// at 40 decimals, which is where the long results end.
constexpr Formula kFormulas[] = {
    {"a+b*c", "0.7"},
    {"(a+b)*(c-d)/e", "0.0642857142857142857142857142857142857142"},
    {"((a+b)*((c+d)-(e-(a*c))))/((d+(e-c))*2)", "-0.06"},
    {"a>b", "0"},
    {"a+b==0.3", "1"},
    {"(a<b)*(c>=d)", "1"},
    {"min(a,b,c)+max(d,e)", "7.1"},
    {"sum(a,b,c,d)*0.1", "0.48"},
    {"(a+b)*c-d/e+max(a*10,b*c,d)-min(e-c,d+a)*((a+b+c+d+e)/5)+sum(a,b,c)*(c>d)-(e-d)*(a<b)"
     "+((c*d)-(e/(a+b)))*0.25+b*b-a*a+(d-a)*(e+c)/(b+d)-max(c-a,d*b)",
     // Exact with each quotient cut at 40 decimals would end in ...064; the
     // product by 0.25 cuts its partial products first and lands 2 lower.
     "-3.1333249299719887955182072829131652661062"},
};
constexpr int kFormulaCount = static_cast<int>(std::size(kFormulas));
constexpr int kAll = kFormulaCount;  // benchmark argument: the whole set per iteration

std::u16string OurText(const char* peerText) {
  std::u16string text = u"=";
  for (const char* p = peerText; *p != 0; ++p) {
    if (p[0] == '=' && p[1] == '=') ++p;
    text.push_back(static_cast<char16_t>(*p));
  }
  return text;
}

std::string Narrow(const CString& s) { return s.ToUtf8(); }

enum Mode { kParseOnce, kParseEach };

class VktSide {
 public:
  static constexpr const char* kName = "VKTCalc";

  VktSide() : m_calc(NewCalc(nullptr, nullptr)) {
    for (const Variable& v : kVariables) {
      m_host.variables[std::u16string(CString(v.name).View())] = std::u16string(CString(v.value).View());
    }
    for (const Formula& f : kFormulas) {
      m_texts.push_back(OurText(f.text));
      CErrorCollector errors;
      m_trees.emplace_back(CUtilityCalc::ParseExpression_Formula(m_texts.back().c_str(), &errors));
    }
  }

  // One calculation of formula i, its result left in m_value; false when it
  // did not finish.
  template <Mode mode>
  bool Run(int i) {
    CErrorCollector errors;
    std::unique_ptr<ICalcTreeNode> root;
    if constexpr (mode == kParseOnce) {
      if (m_trees[i] != nullptr) root.reset(m_trees[i]->Clone());
    } else {
      root.reset(CUtilityCalc::ParseExpression_Formula(m_texts[i].c_str(), &errors));
    }
    if (root == nullptr) {
      lastCode = -1;
      return false;
    }
    CalculatePara para;
    para.pError = &errors;
    para.pRoot = root.get();
    lastCode = m_host.Drive(*m_calc, para);
    if (lastCode != 0) return false;
    root->GetValue(m_value, 0, 0);
    benchmark::DoNotOptimize(m_value.GetString());
    return true;
  }

  // Both ways must give the same text; empty when either failed.
  std::string Result(int i) {
    if (!Run<kParseEach>(i)) return {};
    const std::string fresh = Narrow(m_value);
    if (!Run<kParseOnce>(i)) return {};
    return Narrow(m_value) == fresh ? fresh : std::string();
  }

  int lastCode = 0;  // run code of the last Run: 0 done; 3 when a call had no built-in body

 private:
  vkt::test::TestHost m_host;
  std::unique_ptr<ICalc> m_calc;
  std::vector<std::u16string> m_texts;
  std::vector<std::unique_ptr<ICalcTreeNode>> m_trees;  // parsed once, never calculated
  CString m_value;
};

#if VKTCALC_HAVE_MUPARSER
class PeerSide {
 public:
  static constexpr const char* kName = "muparser";

  PeerSide() {
    for (int v = 0; v < static_cast<int>(std::size(kVariables)); ++v) {
      m_values[v] = std::strtod(kVariables[v].value, nullptr);
    }
    Define(m_fresh);
    for (const Formula& f : kFormulas) {
      m_parsers.push_back(std::make_unique<mu::Parser>());
      Define(*m_parsers.back());
      m_parsers.back()->SetExpr(f.text);
    }
  }

  template <Mode mode>
  bool Run(int i) {
    if constexpr (mode == kParseOnce) {
      m_result = m_parsers[static_cast<std::size_t>(i)]->Eval();
    } else {
      m_fresh.SetExpr(kFormulas[i].text);
      m_result = m_fresh.Eval();
    }
    benchmark::DoNotOptimize(m_result);
    return true;
  }

  // Both ways must give the same double; false with the message when the
  // formula is refused.
  bool Result(int i, double& value, std::string& message) {
    try {
      Run<kParseEach>(i);
      const double fresh = m_result;
      Run<kParseOnce>(i);
      value = m_result;
      return value == fresh || (std::isnan(value) && std::isnan(fresh));
    } catch (const mu::ParserError& e) {
      message = e.GetMsg();
      return false;
    }
  }

 private:
  void Define(mu::Parser& parser) {
    for (int v = 0; v < static_cast<int>(std::size(kVariables)); ++v) {
      parser.DefineVar(kVariables[v].name, &m_values[v]);
    }
  }

  double m_values[std::size(kVariables)] = {};
  mu::Parser m_fresh;                                // parses anew each time
  std::vector<std::unique_ptr<mu::Parser>> m_parsers;  // one compiled formula each
  double m_result = 0;
};

// The shortest text that reads back as the same double.
std::string Shortest(double x) {
  char buffer[64];
  const std::to_chars_result end = std::to_chars(buffer, buffer + sizeof buffer, x);
  return std::string(buffer, end.ptr);
}

bool HasComparison(const char* text) {
  for (const char* p = text; *p != 0; ++p) {
    if (*p == '<' || *p == '>' || *p == '=') return true;
  }
  return false;
}

// Why a double result differs from the exact one; null when the difference
// has no reason we know of, which fails the check.
const char* WhyDifferent(const std::string& ours, double peer, const char* formula) {
  const double oursAsDouble = std::strtod(ours.c_str(), nullptr);
  if (oursAsDouble == peer) return "ours has more digits than a double holds; the double is the nearest to ours";
  if (std::fabs(oursAsDouble - peer) <= 1e-12 * std::fmax(1.0, std::fabs(oursAsDouble))) {
    return "binary rounding: 0.1 and 0.2 are not exact in binary, and the error reaches the shown digits";
  }
  if (HasComparison(formula)) return "a comparison of binary-rounded values: in doubles 0.1+0.2 is 0.30000000000000004";
  return nullptr;
}

#endif

std::vector<bool> g_checked(kFormulaCount, false);  // both sides agree or differ for a known reason

// Computes every formula on both sides, prints the table and fills g_checked.
void CheckAndPrint() {
  std::printf("Variables:");
  for (const Variable& v : kVariables) std::printf(" %s=%s", v.name, v.value);
  std::printf("\n\n");
  VktSide ours;
#if VKTCALC_HAVE_MUPARSER
  PeerSide peer;
#endif
  for (int i = 0; i < kFormulaCount; ++i) {
    const std::string mine = ours.Result(i);
    std::printf("f%d  %s\n", i, kFormulas[i].text);
    if (mine.empty()) {
      std::printf("    %-9s (failed with run code %d)\n", VktSide::kName, ours.lastCode);
    } else {
      std::printf("    %-9s %s\n", VktSide::kName, mine.c_str());
    }
    bool ok = mine == kFormulas[i].expected;
    if (!ok && !mine.empty()) std::printf("    expected  %s\n", kFormulas[i].expected);
#if VKTCALC_HAVE_MUPARSER
    double theirs = 0;
    std::string message;
    if (!peer.Result(i, theirs, message)) {
      std::printf("    %-9s (failed) %s\n", PeerSide::kName, message.c_str());
      ok = false;
    } else {
      const std::string shown = Shortest(theirs);
      if (shown == mine) {
        std::printf("    %-9s %s  same\n", PeerSide::kName, shown.c_str());
      } else {
        const char* why = mine.empty() ? nullptr : WhyDifferent(mine, theirs, kFormulas[i].text);
        std::printf("    %-9s %s  DIFFERS: %s\n", PeerSide::kName, shown.c_str(), why ? why : "no known reason");
        ok = ok && why != nullptr;
      }
    }
#endif
    if (!ok) std::printf("    not timed: the check failed\n");
    g_checked[static_cast<std::size_t>(i)] = ok;
  }
  std::printf("\n");
}

template <class Side, Mode mode>
void BM_Formulas(benchmark::State& state) {
  const int index = static_cast<int>(state.range(0));
  const int first = index == kAll ? 0 : index;
  const int last = index == kAll ? kFormulaCount : index + 1;
  for (int i = first; i < last; ++i) {
    if (!g_checked[static_cast<std::size_t>(i)]) {
      state.SkipWithError("the check before timing failed");
      return;
    }
  }
  Side side;
  for (auto _ : state) {
    for (int i = first; i < last; ++i) side.template Run<mode>(i);
  }
  state.SetItemsProcessed(state.iterations() * (last - first));  // items/s: formulas per second
}

#define VKTCALC_PEER_BENCH(side, mode) BENCHMARK_TEMPLATE(BM_Formulas, side, mode)->DenseRange(0, kAll)

VKTCALC_PEER_BENCH(VktSide, kParseOnce);
VKTCALC_PEER_BENCH(VktSide, kParseEach);
#if VKTCALC_HAVE_MUPARSER
VKTCALC_PEER_BENCH(PeerSide, kParseOnce);
VKTCALC_PEER_BENCH(PeerSide, kParseEach);
#endif

// Keeps formulas per second of every benchmark, the best over its
// repetitions (--benchmark_repetitions): on a shared machine the best run is
// the one least disturbed.
class RateReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
      auto counter = run.counters.find("items_per_second");
      if (counter == run.counters.end()) continue;
      double& best = rates[run.run_name.str()];
      if (counter->second.value > best) best = counter->second.value;
    }
    ConsoleReporter::ReportRuns(runs);
  }
  std::map<std::string, double> rates;
};

void PrintRates(const RateReporter& reporter) {
  static const char* const kModes[] = {"kParseOnce", "kParseEach"};
  static const char* const kModeNames[] = {"parse once, evaluate many", "parse and evaluate each time"};
  for (int mode = 0; mode < 2; ++mode) {
    std::printf("\n%s (formulas per second)\n%-6s %14s %14s %10s\n", kModeNames[mode], "", VktSide::kName,
                "muparser", "time ratio");
    for (int i = 0; i <= kAll; ++i) {
      const std::string suffix = std::string(", ") + kModes[mode] + ">/" + std::to_string(i);
      auto ours = reporter.rates.find("BM_Formulas<VktSide" + suffix);
      auto theirs = reporter.rates.find("BM_Formulas<PeerSide" + suffix);
      if (ours == reporter.rates.end()) continue;
      char label[16];
      std::snprintf(label, sizeof label, i == kAll ? "all" : "f%d", i);
      if (theirs == reporter.rates.end()) {
        std::printf("%-6s %14.0f %14s %10s\n", label, ours->second, "-", "-");
      } else {
        std::printf("%-6s %14.0f %14.0f %9.2fx\n", label, ours->second, theirs->second,
                    theirs->second / ours->second);
      }
    }
  }
  std::printf("\ntime ratio: VKTCalc's time per formula over muparser's (above 1: VKTCalc is slower).\n");
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  vkt::test::ScopedFakeLanguage language;  // the library needs a language interface
#if !VKTCALC_HAVE_MUPARSER
  std::printf("muparser was not found when this was built: VKTCalc is timed alone.\n\n");
#endif
  CheckAndPrint();
  RateReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  PrintRates(reporter);
  return 0;
}
