// bench/ScaleBench.cpp: cost against the size of a formula: a run of n
// additions, a call of sum with n arguments, and a sum whose one variable
// the host answers with a list of n values, which is parsed again as the
// call's arguments. Each run parses and computes; the fitted complexity
// shows whether the cost stays linear in n.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "VKTCalc.h"

namespace {

std::u16string Repeated(const char16_t* head, const char16_t* item, int count, const char16_t* tail) {
  std::u16string text(head);
  for (int i = 0; i < count; ++i) {
    if (i > 0) text += item[0] == u'1' && item[1] == 0 ? u"+" : u",";
    text += item;
  }
  return text + tail;
}

// Parses and computes formula; variable, when given, is answered with
// value. The result text, or an empty text when the run did not finish.
CString Run(ICalc& calc, const std::u16string& formula, const CString& value) {
  CErrorCollector errors;
  std::unique_ptr<ICalcTreeNode> root(CUtilityCalc::ParseExpression_Formula(formula.c_str(), &errors));
  if (root == nullptr) return CString();
  CalculatePara para;
  para.pError = &errors;
  para.pRoot = root.get();
  int code = calc.Calculate(para);
  if (code == 2) {
    CString answer(value);
    if (calc.SetNodeValue(para.pRoot, para.pCurrent, answer, para.pError, nullptr) == 0) return CString();
    code = calc.Calculate(para);
  }
  CString result;
  if (code == 0) root->GetValue(result, 0, 0);
  return result;
}

ICalc& TheCalc() {
  static std::unique_ptr<ICalc> calc(NewCalc(nullptr, nullptr));
  return *calc;
}

void Measure(benchmark::State& state, const std::u16string& formula, const CString& value,
             const CString& expected) {
  if (Run(TheCalc(), formula, value) != expected) {
    state.SkipWithError("the formula does not give its value");
    return;
  }
  for (auto _ : state) {
    CString result = Run(TheCalc(), formula, value);
    benchmark::DoNotOptimize(result);
  }
  state.SetComplexityN(state.range(0));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

CString Number(long long value) { return CString::FromUtf8(std::to_string(value)); }

// =1+1+...+1
void BM_AddRun(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  Measure(state, Repeated(u"=", u"1", n, u""), CString(), Number(n));
}
BENCHMARK(BM_AddRun)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->Complexity();

// =sum(1.5,1.5,...)
void BM_SumArguments(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  Measure(state, Repeated(u"=sum(", u"1.5", n, u")"), CString(), Number(3LL * n / 2));
}
BENCHMARK(BM_SumArguments)
    ->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->Complexity();

// =sum(R) with R answered as "1.5,1.5,...", the way a host hands over a range.
void BM_SumAnswered(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  const std::u16string list = Repeated(u"", u"1.5", n, u"");
  Measure(state, u"=sum(R)", CString(list.c_str()), Number(3LL * n / 2));
}
BENCHMARK(BM_SumAnswered)
    ->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->Complexity();

}  // namespace

BENCHMARK_MAIN();
