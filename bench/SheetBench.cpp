// bench/SheetBench.cpp: vktcalc --sheet on generated sheets, phase by phase:
// reading, parsing, the reference walk with the order, computing and
// writing, as cells per second, with the peak memory of a run. Beside it the
// same formulas with every variable and ref answered by the constant 1, so
// that the sheet's own cost (ranges joined and parsed in again, the graph)
// shows. The tool's units are compiled in here: they are not in a library.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <ctime>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "VKTCalc.h"
#include "tools/Csv.h"
#include "tools/Sheet.h"
#include "tools/ToolHost.h"
#include "tools/ToolLanguage.h"

namespace {

using vkt::tool::Sheet;
using vkt::tool::ToolHost;

std::string Name(int row, int col) {
  CString name;
  CUtilityCalc::GetCellName(name, row, col);
  return name.ToUtf8();
}

// 1,000 rows by 100 columns, fixed seed. Formulas read only cells before them
// in reading order, so the sheet has no cycle: numbers about half the cells,
// and formulas of four numeric kinds; the last four columns hold texts and
// their joins, where no arithmetic reads them, so that no cell is in error.
std::string MakeGrid() {
  std::mt19937 random(20);
  std::string csv;
  for (int row = 0; row < 1000; ++row) {
    for (int col = 0; col < 100; ++col) {
      if (col > 0) csv += ',';
      const unsigned roll = random() % 100;
      std::string field;
      if (col >= 96) {
        field = col < 99 ? "item " + std::to_string(roll)
                         : "=" + Name(row, 98) + "+\" \"+" + Name(row, 97) + "+" + Name(row, 95);
      } else if (row < 10 || col < 2 || roll < 50) {
        field = std::to_string(random() % 1000) + "." + std::to_string(random() % 100);
      } else if (roll < 70) {
        field = "=" + Name(row - 1, col) + "*2+" + Name(row, col - 1);
      } else if (roll < 80) {
        field = "=sum(" + Name(row - 10, col) + ":" + Name(row - 1, col) + ")";
      } else if (roll < 88) {
        field = "=if(" + Name(row, col - 1) + ">500," + Name(row - 1, col) + ",0)";
      } else {
        field = "=round(" + Name(row - 1, col - 1) + "/3,2)";
      }
      vkt::tool::AppendCsvField(csv, field);
    }
    csv += '\n';
  }
  return csv;
}

// A1 reads A2, ..., A100000 holds 1: the longest path the order can meet.
std::string MakeChain() {
  std::string csv;
  for (int row = 1; row < 100000; ++row) csv += "=A" + std::to_string(row + 1) + "+1\n";
  return csv + "1\n";
}

// Peak resident memory in kB since the last ResetPeak (Linux; 0 elsewhere).
long PeakKb() {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line))
    if (line.rfind("VmHWM:", 0) == 0) return std::stol(line.substr(6));
  return 0;
}
void ResetPeak() { std::ofstream("/proc/self/clear_refs") << "5"; }

// Processor time of the process: the machine is shared, and wall time would
// count the other processes.
double Since(std::clock_t& start) {
  const std::clock_t now = std::clock();
  const double seconds = static_cast<double>(now - start) / CLOCKS_PER_SEC;
  start = now;
  return seconds;
}

void RunSheet(benchmark::State& state, const std::string& csv) {
  ToolHost host;
  double phases[5] = {};  // read, parse, walk and order, compute, write
  int cells = 0, errors = 0;
  long peak = 0;
  for (auto _ : state) {
    ResetPeak();
    std::clock_t clock = std::clock();
    Sheet sheet(host);
    std::string problem;
    sheet.Load(csv, problem);
    phases[0] += Since(clock);
    sheet.Parse();
    phases[1] += Since(clock);
    sheet.Order();
    phases[2] += Since(clock);
    sheet.Compute();
    phases[3] += Since(clock);
    benchmark::DoNotOptimize(sheet.Write());
    phases[4] += Since(clock);
    cells = sheet.CellCount();
    errors = sheet.ErrorCount();
    peak = std::max(peak, PeakKb());
  }
  const double runs = static_cast<double>(state.iterations());
  const char* names[] = {"read", "parse", "order", "compute", "write"};
  for (int i = 0; i < 5; ++i) state.counters[std::string(names[i]) + "/s"] = cells * runs / phases[i];
  state.counters["peak_MB"] = static_cast<double>(peak) / 1024;
  state.SetItemsProcessed(state.iterations() * cells);
  state.SetLabel(std::to_string(errors) + " cells in error");
}

void BM_SheetGrid(benchmark::State& state) { RunSheet(state, MakeGrid()); }
void BM_SheetChain(benchmark::State& state) { RunSheet(state, MakeChain()); }

// The grid's formulas alone: parsed and computed with every stop answered
// by 1. Counted per cell of the sheet, as the sheet's phases are.
void BM_ConstantAnswers(benchmark::State& state) {
  std::vector<CString> formulas;
  std::vector<vkt::tool::CsvRecord> records;
  std::string problem;
  vkt::tool::ReadCsv(MakeGrid(), records, problem);
  for (const auto& record : records)
    for (const std::string& field : record)
      if (field.starts_with("=")) formulas.push_back(CString::FromUtf8(field));
  std::unique_ptr<ICalc> calc(NewCalc(nullptr, nullptr));
  double parse = 0, compute = 0;
  std::vector<std::unique_ptr<ICalcTreeNode>> roots(formulas.size());
  for (auto _ : state) {
    std::clock_t clock = std::clock();
    CErrorCollector errors;
    for (std::size_t i = 0; i < formulas.size(); ++i)
      roots[i].reset(CUtilityCalc::ParseExpression_Formula(formulas[i], &errors));
    parse += Since(clock);
    for (std::unique_ptr<ICalcTreeNode>& root : roots) {
      CalculatePara para;
      para.pError = &errors;
      para.pRoot = root.get();
      int code = 0;
      while ((code = calc->Calculate(para)) == 2 || code == 3) {
        CString one(u"1");
        if (calc->SetNodeValue(para.pRoot, para.pCurrent, one, &errors, nullptr) == 0) break;
      }
    }
    compute += Since(clock);
  }
  const double cells = 100000.0 * static_cast<double>(state.iterations());
  state.counters["parse/s"] = cells / parse;
  state.counters["compute/s"] = cells / compute;
  state.SetItemsProcessed(state.iterations() * 100000);
  state.SetLabel(std::to_string(formulas.size()) + " formulas");
}

BENCHMARK(BM_SheetGrid)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_SheetChain)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_ConstantAnswers)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

int main(int argc, char** argv) {
  static vkt::tool::ToolLanguage language;  // installed once, as vktcalc does
  SetLggInterface(&language);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
