// bench/AmountBench.cpp: amounts in words on typical amounts of 2 to 13 integer digits, with and
// without decimals: CUtilityCalc::RMB directly, englishNum through the manager's call as the calculator
// makes it, and beside them CGmp writing the same amounts as digits (read, then GetString).
#include <benchmark/benchmark.h>

#include <iterator>
#include <memory>

#include "VKTCalc.h"

namespace {

constexpr const char16_t* kAmounts[] = {u"12", u"1234.5", u"100200.07", u"30000000.10", u"123456789.99",
                                        u"999999999999", u"1234567890123.45"};
constexpr int kAmountCount = static_cast<int>(std::size(kAmounts));

void BM_RMB(benchmark::State& state) {
  const char16_t* text = kAmounts[state.range(0)];
  CString out;
  for (auto _ : state) {
    CString amount(text);  // RMB changes its amount
    benchmark::DoNotOptimize(CUtilityCalc::RMB(out, amount, 1));
  }
  if (out.IsEmpty()) state.SkipWithError("no text");
  state.SetLabel(CString(text).ToUtf8());
}
BENCHMARK(BM_RMB)->DenseRange(0, kAmountCount - 1);

void BM_EnglishNum(benchmark::State& state) {
  const char16_t* text = kAmounts[state.range(0)];
  std::unique_ptr<CFuncMnger> manager(CFuncMnger::NewFuncMnger());
  CFuncPara para;
  para.strName = u"englishNum";
  for (auto _ : state) {
    para.arrArgs.RemoveAll();
    para.arrArgs.Add(CString(text));
    CErrorCollector errors;
    benchmark::DoNotOptimize(manager->CallFunc(para, 0, &errors, -1));
  }
  if (para.strResult.GetLength() < 3) state.SkipWithError("no words");
  state.SetLabel(CString(text).ToUtf8());
}
BENCHMARK(BM_EnglishNum)->DenseRange(0, kAmountCount - 2);  // words stop at 12 integer digits

// The baseline: the same amount read into a number and written back as digits.
void BM_GmpGetString(benchmark::State& state) {
  const char16_t* text = kAmounts[state.range(0)];
  CString out;
  for (auto _ : state) {
    CGmp value(text);
    value.GetString(out, 2, 0);
    benchmark::DoNotOptimize(out.GetLength());
  }
  state.SetLabel(CString(text).ToUtf8());
}
BENCHMARK(BM_GmpGetString)->DenseRange(0, kAmountCount - 1);

}  // namespace

BENCHMARK_MAIN();
