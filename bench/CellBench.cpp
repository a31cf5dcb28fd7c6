// bench/CellBench.cpp: reading and writing cell names (B7, AA12, B2:D9, @C3,
// B7@Sheet2) and the walk that reports a formula's references, beside a bare
// A1 reader written here, so that the price of the full reading can be seen.
#include <benchmark/benchmark.h>

#include <iterator>
#include <memory>
#include <string>

#include "VKTCalc.h"

namespace {

// The plain cells and the range come first: the first kPlainCount names are
// all that the bare reader understands.
constexpr const char16_t* kNames[] = {u"B7", u"AA12", u"B2:D9", u"@C3", u"B7@Sheet2"};
constexpr int kNameCount = static_cast<int>(std::size(kNames));
constexpr int kPlainCount = 3;

// An argument of BM_CellName2RowCols: how many names of kNames, from the
// front, make one round; one item is one name, a range counting as one.
void BM_CellName2RowCols(benchmark::State& state) {
  const int count = static_cast<int>(state.range(0));
  CRowCols out;
  int macro1 = 0;
  int macro2 = 0;
  for (auto _ : state) {
    for (int i = 0; i < count; ++i) {
      benchmark::DoNotOptimize(CUtilityCalc::CellName2RowCols(out, kNames[i], &macro1, &macro2, 1));
      benchmark::DoNotOptimize(out);
    }
  }
  state.SetLabel(count == kNameCount ? "whole mix" : "plain cells and the range");
  state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(BM_CellName2RowCols)->Arg(kNameCount)->Arg(kPlainCount);

// One CCellname for the whole round, as the reference walk keeps one.
void BM_ParseCellname(benchmark::State& state) {
  CCellname cellname;
  for (auto _ : state) {
    for (const char16_t* name : kNames) {
      cellname.pszName = name;
      benchmark::DoNotOptimize(CUtilityCalc::ParseCellname(cellname));
      benchmark::DoNotOptimize(cellname.rowcols);
    }
  }
  state.SetItemsProcessed(state.iterations() * kNameCount);
}
BENCHMARK(BM_ParseCellname);

// From A1 to the last writable cell, with one- and two-letter columns.
constexpr int kCells[][2] = {
    {0, 0}, {6, 1}, {11, 26}, {99, 25}, {1022, 51}, {4095, 255}, {65535, 676}, {999998, 699},
};
constexpr int kCellCount = static_cast<int>(std::size(kCells));

void BM_GetCellName(benchmark::State& state) {
  CString out;
  for (auto _ : state) {
    for (const auto& cell : kCells) {
      benchmark::DoNotOptimize(CUtilityCalc::GetCellName(out, cell[0], cell[1]));
      benchmark::DoNotOptimize(out.GetString());
    }
  }
  state.SetItemsProcessed(state.iterations() * kCellCount);
}
BENCHMARK(BM_GetCellName);

// 20 references: cells, ranges, reference calls, macro cells and a sheet.
constexpr const char16_t kFormula[] =
    u"=round(B7+AA12*sum(B2:D9)-@C3/100,2)+if(ref(2,7)>0,C4/D5,0)+avg(E1:E20)*1.075"
    u"+ref('F6')-max(G1,G2,G3)+B7@Sheet2-H8*2+min(J1:K4)/sum(ref(1,1,3,3))+L9*0.15"
    u"+@M10-N11/(1+P12)*round(2.5-1/7,3)";
constexpr int kFormulaRefs = 20;

// Counts what the walk reports and asks for nothing.
class CountingFilter : public ICellFilter {
 public:
  int OnCell(int nEvent, CCellname*, CRowCol*) override {
    if (nEvent >= 0 && nEvent < 4) ++events[nEvent];
    return 0;
  }
  long events[4] = {};
};

// The tree is parsed once; only the walk is timed. One item is one reference.
void BM_RefWalk(benchmark::State& state) {
  CErrorCollector errors;
  std::unique_ptr<ICalcTreeNode> root(CUtilityCalc::ParseExpression_Formula(kFormula, &errors));
  if (root == nullptr) {
    state.SkipWithError("the formula does not parse");
    return;
  }
  CountingFilter filter;
  CCellname cellname;
  CCellnameRefTraveler traveler(&filter, &cellname);
  root->Travel(&traveler, 1);  // one walk to see what the host is told
  const long found = filter.events[1] + filter.events[3];
  const long cells = filter.events[0];
  for (auto _ : state) {
    benchmark::DoNotOptimize(root->Travel(&traveler, 1));
    benchmark::DoNotOptimize(filter.events[0]);
  }
  state.SetLabel(std::to_string(CString(kFormula).GetLength()) + " units, " + std::to_string(found) +
                 " references reported, " + std::to_string(cells) + " cells");
  state.SetItemsProcessed(state.iterations() * kFormulaRefs);
}
BENCHMARK(BM_RefWalk);

// The baseline: capital letters as a column in bijective base 26, then digits
// as a one-based row, and nothing else: no @, no sheet, no lower case.
bool ReadA1(const char16_t* p, const char16_t* end, int& row, int& col) {
  const char16_t* letters = p;
  int c = 0;
  for (; p < end && *p >= u'A' && *p <= u'Z'; ++p) c = c * 26 + (*p - u'A' + 1);
  if (p == letters || p == end) return false;
  int r = 0;
  for (; p < end && *p >= u'0' && *p <= u'9'; ++p) r = r * 10 + (*p - u'0');
  if (p != end || r == 0) return false;
  row = r - 1;
  col = c - 1;
  return true;
}

// A name, or two split at the first ':', into both corners.
bool ReadA1Range(const char16_t* name, int (&out)[4]) {
  const char16_t* colon = name;
  while (*colon != 0 && *colon != u':') ++colon;
  if (!ReadA1(name, colon, out[0], out[1])) return false;
  if (*colon == 0) {
    out[2] = out[0];
    out[3] = out[1];
    return true;
  }
  const char16_t* end = colon + 1;
  while (*end != 0) ++end;
  return ReadA1(colon + 1, end, out[2], out[3]);
}

// Counted as in BM_CellName2RowCols/3: B2:D9 is one name read as two cells.
void BM_BareA1Reader(benchmark::State& state) {
  int out[4] = {-1, -1, -1, -1};
  for (int i = 0; i < kPlainCount; ++i) {
    if (!ReadA1Range(kNames[i], out)) {
      state.SkipWithError("the bare reader refuses a plain name");
      return;
    }
  }
  for (auto _ : state) {
    for (int i = 0; i < kPlainCount; ++i) {
      const char16_t* name = kNames[i];
      benchmark::DoNotOptimize(name);  // no folding of the constant names
      benchmark::DoNotOptimize(ReadA1Range(name, out));
      benchmark::DoNotOptimize(out);
    }
  }
  state.SetItemsProcessed(state.iterations() * kPlainCount);
}
BENCHMARK(BM_BareA1Reader);

}  // namespace

BENCHMARK_MAIN();
