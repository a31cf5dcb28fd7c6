// bench/TreeBench.cpp: parsing and writing back the formulas a grid holds,
// from a short sum of two cells to a 200-unit conditional. Each formula is
// timed alone (its length in the label) and the whole set as one mix.
#include <benchmark/benchmark.h>

#include <iterator>
#include <memory>

#include "VKTCalc.h"

namespace {

constexpr const char16_t* kFormulas[] = {
    u"=A1+B1",
    u"=SUM(A1:A10)*2",
    u"=IF(A1>0,B1/A1,0)",
    u"=ROUND(C3*D3*(1-E3/100),2)",
    u"=if(and(A1>=10,B1<20),'ok','check')",
    u"=sum(B2:B20)/count(B2:B20)-avg(C2:C20)+max(D2:D20)*0.15",
    u"=IF(ISBLANK(@Sheet2.F7),\"\",VLOOKUP(F7,$A$1:$D$200,3)&&G7<>'closed'||H7>=1000)",
    u"=round((Q1+Q2+Q3+Q4)/4*1.075-sum(R1:R12)/12,2)+if(S1='x',left(T1,3)+mid(T1,4,2),"
    u"right(T1,2))-max(U1,U2,U3)*min(V1,V2)+abs(W1-W2)/(1+X1*0.05)+dateDif(Y1,Y2,'d')",
};
constexpr int kFormulaCount = static_cast<int>(std::size(kFormulas));

std::unique_ptr<ICalcTreeNode> ParseOrDie(const char16_t* formula, benchmark::State& state) {
  CErrorCollector errors;
  std::unique_ptr<ICalcTreeNode> root(CUtilityCalc::ParseExpression_Formula(formula, &errors));
  if (root == nullptr) state.SkipWithError("a formula of the set does not parse");
  return root;
}

void Label(benchmark::State& state, const char16_t* formula) {
  state.SetLabel(std::to_string(CString(formula).GetLength()) + " units");
}

void BM_Parse(benchmark::State& state) {
  const char16_t* formula = kFormulas[state.range(0)];
  if (ParseOrDie(formula, state) == nullptr) return;
  CErrorCollector errors;
  for (auto _ : state) {
    std::unique_ptr<ICalcTreeNode> root(CUtilityCalc::ParseExpression_Formula(formula, &errors));
    benchmark::DoNotOptimize(root.get());
  }
  Label(state, formula);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Parse)->DenseRange(0, kFormulaCount - 1);

void BM_GetExpression(benchmark::State& state) {
  const char16_t* formula = kFormulas[state.range(0)];
  std::unique_ptr<ICalcTreeNode> root = ParseOrDie(formula, state);
  if (root == nullptr) return;
  CString text;
  for (auto _ : state) {
    root->GetExpression(text);
    benchmark::DoNotOptimize(text.GetString());
  }
  Label(state, formula);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_GetExpression)->DenseRange(0, kFormulaCount - 1);

// The whole set in turn: one item is one formula.
void BM_ParseAndWriteMix(benchmark::State& state) {
  for (const char16_t* formula : kFormulas)
    if (ParseOrDie(formula, state) == nullptr) return;
  CErrorCollector errors;
  CString text;
  for (auto _ : state) {
    for (const char16_t* formula : kFormulas) {
      std::unique_ptr<ICalcTreeNode> root(CUtilityCalc::ParseExpression_Formula(formula, &errors));
      root->GetExpression(text);
      benchmark::DoNotOptimize(text.GetString());
    }
  }
  state.SetItemsProcessed(state.iterations() * kFormulaCount);
}
BENCHMARK(BM_ParseAndWriteMix);

}  // namespace

BENCHMARK_MAIN();
