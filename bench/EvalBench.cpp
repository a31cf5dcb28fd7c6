// bench/EvalBench.cpp: parse and evaluate the formulas a grid holds when no
// cell is referenced: arithmetic with brackets, texts joined to numbers,
// comparison and logic chains and a conditional, from 11 to 187 units. The
// same set is parsed alone beside it, so the evaluation's share shows. The
// runs go through the real calculator with the tests' host.
#include <benchmark/benchmark.h>

#include <iterator>
#include <memory>

#include "VKTCalc.h"
#include "tests/support/TestHost.h"

namespace {

struct Formula {
  const char16_t* text;
  const char16_t* expected;  // checked once before timing
};

constexpr Formula kFormulas[] = {
    {u"=12.5*4-3/2", u"48.5"},
    {u"=(1+2)*3-4/(5+3)", u"8.5"},
    {u"=1250.00*(1-15/100)+49.90*3", u"1212.2"},
    {u"=\"Total: \"+(1234.5-34.5)*2", u"Total: 2400"},
    {u"=(3>2)&&(2<=2)||!(1=0)&&-1<0", u"1"},
    {u"=if(12.5*4>40,\"over\",\"under\")+\" budget by \"+(12.5*4-40)", u"over budget by 10"},
    {u"=\"Net \"+(((1250.75*12-340.5*3)/(4+8/2)+(99.99*0.15-7.5)*(3-1.25)-(450/9+12.5*4)/2.5+"
     u"(0.1+0.2)*(1000-999.7))*1.075-((88.8-44.4)/2+(66.6*3-199.8)+if(17>12,5.5,0)*2))+"
     u"\", rate \"+(7/8*100)+\"%\"",
     u"Net 1817.573615625, rate 87.5%"},
};
constexpr int kFormulaCount = static_cast<int>(std::size(kFormulas));

int Length(const char16_t* text) { return CString(text).GetLength(); }

// The language and the one manager the runs share, made before timing.
struct Shared {
  Shared() : manager(CFuncMnger::NewFuncMnger()), calc(NewCalc(manager, nullptr)) {}
  ~Shared() { delete manager; }
  vkt::test::ScopedFakeLanguage language;
  CFuncMnger* manager;
  std::unique_ptr<ICalc> calc;
  vkt::test::TestHost host;
};

Shared& TheShared() {
  static Shared shared;
  return shared;
}

vkt::test::RunOutcome Run(const Formula& formula) {
  Shared& shared = TheShared();
  return shared.host.Run(*shared.calc, formula.text);
}

bool CheckOnce(benchmark::State& state, const Formula& formula) {
  vkt::test::RunOutcome run = Run(formula);
  if (run.code == 0 && run.value == formula.expected) return true;
  state.SkipWithError("a formula of the set does not give its value");
  return false;
}

void BM_ParseEvaluate(benchmark::State& state) {
  const Formula& formula = kFormulas[state.range(0)];
  if (!CheckOnce(state, formula)) return;
  for (auto _ : state) {
    vkt::test::RunOutcome run = Run(formula);
    benchmark::DoNotOptimize(run);
  }
  state.SetLabel(std::to_string(Length(formula.text)) + " units");
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ParseEvaluate)->DenseRange(0, kFormulaCount - 1);

void BM_ParseOnly(benchmark::State& state) {
  const Formula& formula = kFormulas[state.range(0)];
  for (auto _ : state) {
    CErrorCollector errors;
    std::unique_ptr<ICalcTreeNode> root(CUtilityCalc::ParseExpression_Formula(formula.text, &errors));
    benchmark::DoNotOptimize(root.get());
  }
  state.SetLabel(std::to_string(Length(formula.text)) + " units");
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ParseOnly)->DenseRange(0, kFormulaCount - 1);

// The whole set in turn, as a grid recalculates a sheet: ns per formula.
void BM_ParseEvaluateMix(benchmark::State& state) {
  for (const Formula& formula : kFormulas)
    if (!CheckOnce(state, formula)) return;
  for (auto _ : state) {
    for (const Formula& formula : kFormulas) {
      vkt::test::RunOutcome run = Run(formula);
      benchmark::DoNotOptimize(run);
    }
  }
  state.SetItemsProcessed(state.iterations() * kFormulaCount);
}
BENCHMARK(BM_ParseEvaluateMix);

}  // namespace

BENCHMARK_MAIN();
