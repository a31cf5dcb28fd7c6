// bench/NumberTextBench.cpp: the number judge and the cell display on texts
// that grids hold all the time: short integers, money, grouped figures, blank
// padding, dates and words that are no numbers, and a long decimal.
#include <benchmark/benchmark.h>

#include <string>

#include "VKTCalc.h"

namespace {

constexpr const char16_t* kCellTexts[] = {
    u"12",
    u"1234.56",
    u"-1,234,567.89",
    u"  42  ",
    u"0.000",
    u"3.14159265358979323846",
    u"2024.01.15",
    u"Total",
    u"123456789012345678901234567890.123456789",
};
constexpr int kCellTextCount = static_cast<int>(std::size(kCellTexts));

void Label(benchmark::State& state, const char16_t* text) {
  state.SetLabel(CString(text).ToUtf8());
}

template <CGmp::Enum_PureDigitCheckStrict kStrict>
void BM_IsPureNumber(benchmark::State& state) {
  const char16_t* text = kCellTexts[state.range(0)];
  for (auto _ : state) {
    benchmark::DoNotOptimize(CUtilityCalc::IsPureNumber(text, 1, kStrict, 0));
  }
  Label(state, text);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK_TEMPLATE(BM_IsPureNumber, CGmp::CheckStrict_None)->DenseRange(0, kCellTextCount - 1);
BENCHMARK_TEMPLATE(BM_IsPureNumber, CGmp::CheckStrict_Full)->DenseRange(0, kCellTextCount - 1);

// The cell display: 2 decimals, zero shown, thousands grouped, rounded. The
// copy of the text is part of every call, as a grid copies the cell's text
// before it formats it.
void BM_ConvertToDispFormat(benchmark::State& state) {
  const char16_t* text = kCellTexts[state.range(0)];
  for (auto _ : state) {
    CString shown(text);
    CUtilityCalc::ConvertToDispFormat(shown, 2 + 64 + 128, 1, 0);
    benchmark::DoNotOptimize(shown);
  }
  Label(state, text);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ConvertToDispFormat)->DenseRange(0, kCellTextCount - 1);

// The same without rounding: cutting and grouping alone, no CGmp round trip
// beyond the zero tests.
void BM_ConvertToDispFormatCut(benchmark::State& state) {
  const char16_t* text = kCellTexts[state.range(0)];
  for (auto _ : state) {
    CString shown(text);
    CUtilityCalc::ConvertToDispFormat(shown, 2 + 64 + 128, 0, 0);
    benchmark::DoNotOptimize(shown);
  }
  Label(state, text);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ConvertToDispFormatCut)->DenseRange(0, kCellTextCount - 1);

void BM_SepNumber(benchmark::State& state) {
  const char16_t* text = kCellTexts[state.range(0)];
  for (auto _ : state) {
    CString shown(text);
    CUtilityCalc::SepNumber(shown, 1);
    benchmark::DoNotOptimize(shown);
  }
  Label(state, text);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_SepNumber)->DenseRange(0, kCellTextCount - 1);

}  // namespace

BENCHMARK_MAIN();
