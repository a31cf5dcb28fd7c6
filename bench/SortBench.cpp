// bench/SortBench.cpp: sorting 100,000 shuffled texts (person names, file
// names with numbers, texts led by a number) by Sort_CStringArray and
// Sort_CStringArray_LeftNumber under C.UTF-8 and en_US.UTF-8, beside
// std::stable_sort with a bare collation comparator on the same data in the
// same run; then CompareStringW and ParseFunction per call.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <clocale>
#include <random>
#include <string>
#include <vector>

#include "VKTCalc.h"
#include "platform/WideRuntime.h"

namespace {

constexpr int kRows = 100000;
constexpr const char* kLocales[] = {"C.UTF-8", "en_US.UTF-8"};
constexpr const char* kKinds[] = {"names", "file names", "leading numbers"};

// Made once per kind from a fixed seed, then shuffled: every run and every
// contestant sorts the same texts.
const CStringArray& Data(int kind) {
  static CStringArray data[3];
  CStringArray& rows = data[kind];
  if (rows.GetSize() != 0) return rows;
  static const char* const kGiven[] = {"Anna", "jean", "Zoë", "Émile", "o'Brien", "Li", "Marta", "björn"};
  static const char* const kFamily[] = {"Smith", "de la Cruz", "Müller", "van Dijk", "Øster", "Nakamura",
                                         "le Roy"};
  static const char* const kStems[] = {"file", "File", "img_", "report-", "scan "};
  std::mt19937 random(20261125u + static_cast<unsigned>(kind));
  for (int i = 0; i < kRows; ++i) {
    std::string text;
    const unsigned r = random();
    if (kind == 0) {
      text = std::string(kFamily[r % 7]) + ", " + kGiven[(r / 7) % 8] + " " + static_cast<char>('A' + r % 26);
    } else if (kind == 1) {
      text = kStems[r % 5] + std::to_string(r % 20000) + (r % 3 ? ".txt" : "b.txt");
    } else {
      text = (r % 9 == 0 ? "-" : "") + std::string(r % 11 == 0 ? "00" : "") + std::to_string(r % 5000) + " " +
             kGiven[(r / 5000) % 8];
    }
    rows.Add(CString(text.c_str()));
  }
  std::shuffle(rows.begin(), rows.end(), random);
  return rows;
}

// Sets the run's locale; false, with the run skipped, when it is missing.
bool UseLocale(benchmark::State& state) {
  const char* name = kLocales[state.range(1)];
  state.SetLabel(std::string(kKinds[state.range(0)]) + ", " + name);
  if (setlocale(LC_ALL, name) != nullptr) return true;
  state.SkipWithError((std::string(name) + " is not installed").c_str());
  return false;
}

// The copy of the rows, which every sort must start from, is not timed.
template <class SortFn>
void SortRows(benchmark::State& state, SortFn sort) {
  if (!UseLocale(state)) return;
  const CStringArray& data = Data(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    CStringArray rows(data);
    state.ResumeTiming();
    sort(rows);
    benchmark::DoNotOptimize(rows.GetData());
  }
  state.SetItemsProcessed(state.iterations() * kRows);
  setlocale(LC_ALL, "C");
}

void BM_SortCStringArray(benchmark::State& state) {
  SortRows(state, [](CStringArray& rows) { CUtilityCalc::Sort_CStringArray(rows, 1, 0); });
}

void BM_SortLeftNumber(benchmark::State& state) {
  SortRows(state, [](CStringArray& rows) { CUtilityCalc::Sort_CStringArray_LeftNumber(rows, 1); });
}

// The same collation as Sort_CStringArray with case, without the lock, the
// process-wide settings and the moves through an index array.
void BM_StableSortWcscoll(benchmark::State& state) {
  SortRows(state, [](CStringArray& rows) {
    std::stable_sort(rows.begin(), rows.end(),
                     [](const CString& a, const CString& b) { return vkt::wcscoll(a, b) < 0; });
  });
}

void SortArgs(benchmark::internal::Benchmark* b) {
  for (int locale = 0; locale < 2; ++locale)
    for (int kind = 0; kind < 3; ++kind) b->Args({kind, locale});
  b->Unit(benchmark::kMillisecond);
}
BENCHMARK(BM_SortCStringArray)->Apply(SortArgs);
BENCHMARK(BM_SortLeftNumber)->Apply(SortArgs);
BENCHMARK(BM_StableSortWcscoll)->Apply(SortArgs);

// Pattern 1, digit runs as whole numbers. The comparison uses up its
// arguments, so each call compares fresh copies; the copies are in the time.
constexpr const char16_t* kPairs[][2] = {
    {u"file123.txt", u"file45.txt"}, {u"report-2024-07", u"report-2024-12"}, {u"scan 9b", u"scan 9a"}};

void BM_CompareStringW(benchmark::State& state) {
  const CString a(kPairs[state.range(0)][0]);
  const CString b(kPairs[state.range(0)][1]);
  CString x(a);
  CString y(b);
  const int answer = CUtilityCalc::CompareStringW(x, y, ColSort_Int, 0);
  state.SetLabel(a.ToUtf8() + (answer < 0 ? " < " : answer > 0 ? " > " : " = ") + b.ToUtf8());
  for (auto _ : state) {
    x = a;
    y = b;
    benchmark::DoNotOptimize(CUtilityCalc::CompareStringW(x, y, ColSort_Int, 0));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_CompareStringW)->DenseRange(0, 2);

void BM_ParseFunction(benchmark::State& state) {
  const char16_t* text = u"sum(a, 'b,c', 3)";
  CString name;
  CStringArray args;
  CUtilityCalc::ParseFunction(text, name, args);
  std::string label = name.ToUtf8();
  for (const CString& arg : args) label += " [" + arg.ToUtf8() + "]";
  state.SetLabel(label);
  for (auto _ : state) {
    benchmark::DoNotOptimize(CUtilityCalc::ParseFunction(text, name, args));
    benchmark::DoNotOptimize(args.GetData());
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ParseFunction);

}  // namespace

BENCHMARK_MAIN();
