// bench/CalcBench.cpp: whole calculations the way a grid runs them: parse a
// cell's formula, loop over Calculate while a host answers the variables
// (the built-ins run in the library), read the result, destroy
// the tree. Each formula alone, then on 2 threads with separate trees and
// calculators that share one function manager.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <iterator>
#include <memory>
#include <string>

#include "VKTCalc.h"
#include "tests/support/TestHost.h"

namespace {

struct Formula {
  const char16_t* text;
  const char16_t* expected;  // checked once before timing
};

constexpr Formula kFormulas[] = {
    {u"=A1+B1", u"19.5"},
    {u"=A1*(1+B1/100)-C1", u"10.375"},
    {u"=if(A1>B1,A1-B1,B1-A1)", u"5.5"},
    {u"=sum(A1,B1,C1)/3+D1*2", u"87.5"},
    {u"=(A1+B1)*C1>=D1&&E1<>'closed'", u"1"},
    {u"=A1*B1+C1*D1-(A1+B1+C1+D1)/4+if(A1>=10,B1,C1)*2", u"205.875"},
};
constexpr int kFormulaCount = static_cast<int>(std::size(kFormulas));

void SetUpHost(vkt::test::TestHost& host) {
  host.variables = {{u"A1", u"12.5"}, {u"B1", u"7"}, {u"C1", u"3"}, {u"D1", u"40"}, {u"E1", u"'open'"}};
}

// One whole calculation of a formula; false when it did not end with code 0.
bool CalculateOnce(vkt::test::TestHost& host, ICalc& calc, const char16_t* formula, CString& value) {
  CErrorCollector errors;
  std::unique_ptr<ICalcTreeNode> root(CUtilityCalc::ParseExpression_Formula(formula, &errors));
  if (root == nullptr) return false;
  CalculatePara para;
  para.pError = &errors;
  para.pRoot = root.get();
  if (host.Drive(calc, para) != 0) return false;
  root->GetValue(value, 0, 0);
  return true;
}

// Process-wide set-up: the language interface and the shared manager, made
// before any thread starts, since making a manager must not race.
struct Shared {
  Shared() : manager(CFuncMnger::NewFuncMnger()) { SetLggInterface(&language); }
  ~Shared() {
    SetLggInterface(nullptr);
    delete manager;
  }
  vkt::test::FakeLanguage language;
  CFuncMnger* manager;
};

Shared& TheShared() {
  static Shared shared;
  return shared;
}

void BM_CalcRun(benchmark::State& state) {
  const Formula& formula = kFormulas[state.range(0)];
  std::unique_ptr<ICalc> calc(NewCalc(TheShared().manager, nullptr));  // one per thread
  vkt::test::TestHost host;
  SetUpHost(host);
  CString value;
  if (!CalculateOnce(host, *calc, formula.text, value) || vkt::test::Str(value) != formula.expected) {
    state.SkipWithError("the formula does not give its expected result");
    return;
  }
  for (auto _ : state) {
    CalculateOnce(host, *calc, formula.text, value);
    benchmark::DoNotOptimize(value.GetString());
  }
  state.SetLabel(std::to_string(CString(formula.text).GetLength()) + " units");
  state.SetItemsProcessed(state.iterations());  // items/s: calculations per second
}
BENCHMARK(BM_CalcRun)->DenseRange(0, kFormulaCount - 1)->Threads(1)->Threads(2)->UseRealTime();

// The whole set, one calculation of each formula per iteration.
void BM_CalcMix(benchmark::State& state) {
  std::unique_ptr<ICalc> calc(NewCalc(TheShared().manager, nullptr));
  vkt::test::TestHost host;
  SetUpHost(host);
  CString value;
  for (auto _ : state) {
    for (const Formula& formula : kFormulas) {
      CalculateOnce(host, *calc, formula.text, value);
      benchmark::DoNotOptimize(value.GetString());
    }
  }
  state.SetItemsProcessed(state.iterations() * kFormulaCount);
}
BENCHMARK(BM_CalcMix)->Threads(1)->Threads(2)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
  TheShared();  // before the threads
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
