// tests/tools/SheetTest.cpp: vktcalc --sheet as a user runs it: each sheets/NAME.csv against the
// sheets/NAME.out.csv beside it, unreadable sheets and their exit codes, and a 100,000-cell chain.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/tools/ToolRunner.h"

namespace vkt::test {
namespace {

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

std::string TempPath(const std::string& name) {
  return (std::filesystem::temp_directory_path() / ("vktcalc-sheet-" + name)).string();
}

// One row per pair of files; the exit code is 1 as soon as one cell is in error.
constexpr struct { const char* name; const char* variable; int code; } kSheets[] = {
    {"forward", "rate=0.5", 0},  // forward references, lower-case names, a NAME=VALUE variable
    {"ranges", "", 0},           // empty and text cells in sum; a range over formula cells
    {"refs", "", 1},             // outside the grid, $A$1, ref forms, a reversed range, self reference,
                                 // a ref that only its computed argument names
    {"cycle", "", 1},            // a two-cell cycle, cells behind it, a range that holds its own cell
    {"text", "", 0},             // quotes, commas and CR LF inside a field; CR LF records
    {"errors", "", 1},           // syntax, unknown function, sheet, @ and alias forms, "=" alone
    {"readme", "rate=0.2", 1},   // the sample of README.md
};

TEST(Sheet, FilesGiveTheirExpectedOutput) {
  for (const auto& c : kSheets) {
    const std::string base = std::string(VKTCALC_SHEETS_DIR) + "/" + c.name;
    std::vector<std::string> args{"--sheet", base + ".csv"};
    if (*c.variable != 0) args.push_back(c.variable);
    const ToolResult r = RunTool(args);
    EXPECT_EQ(r.out, ReadFile(base + ".out.csv")) << c.name;
    EXPECT_EQ(r.err, "") << c.name;
    EXPECT_EQ(r.exitCode, c.code) << c.name;
  }
}

TEST(Sheet, StandardInputOutputFileAndUnreadableInput) {
  const std::string out = TempPath("out.csv");
  const struct { std::vector<std::string> args; std::string in, out, err; int code; } cases[] = {
      {{"--sheet", "-"}, "\xEF\xBB\xBF" "2,=A1*3\n", "2,6\n", "", 0},  // a BOM goes
      {{"--sheet", "-"}, "", "", "", 0}, {{"--sheet", "-"}, "\n\n", "\n\n", "", 0},  // empty rows stay
      {{"--sheet", "-", "-o", out}, "=1/0,=A1+1,=A1*2", "", "", 1},
      {{"--sheet", "-", "x=1+"}, "x,=ref(A1),=x*2", "x,#unsupported ref('x'),#1003 Invalid expression or "
       "call: 1+*2\n", "", 1},  // a ref to no cell; a value that does not parse in
      {{"--sheet", "-"}, "a\nb,\"c\nd", "", "vktcalc: -: a quoted field that starts in record 2 is not "
       "closed\n", 2},
      {{"--sheet", "-"}, std::string(700, ',') + "\n", "", "vktcalc: -: row 1 has 701 fields; names go up to "
       "column ZX (700)\n", 2},
      {{"--sheet", "/nonexistent/s.csv"}, "", "", "vktcalc: cannot read /nonexistent/s.csv\n", 2},
      {{"--sheet", "-", "-o", "/nonexistent/o.csv"}, "1", "", "vktcalc: cannot write /nonexistent/o.csv\n",
       2},
      {{"-o", "x", "1"}, "", "", "vktcalc: -o goes with --sheet\nRun vktcalc --help for the usage.\n", 2},
      {{"--sheet"}, "", "", "vktcalc: --sheet needs a file name\nRun vktcalc --help for the usage.\n", 2},
  };
  for (const auto& c : cases) {
    const ToolResult r = RunTool(c.args, c.in);
    EXPECT_EQ(r.out, c.out) << testing::PrintToString(c.args);
    EXPECT_EQ(r.err, c.err) << testing::PrintToString(c.args);
    EXPECT_EQ(r.exitCode, c.code) << testing::PrintToString(c.args);
  }
  // A division by zero is a text: it joins with + and is refused by *.
  EXPECT_EQ(ReadFile(out), "\xE2\x88\x9E,\xE2\x88\x9E,#1003 Invalid expression or call: '\xE2\x88\x9E'*2\n");
  std::remove(out.c_str());
}

// A1 reads A2, which reads A3, ... to A100000: the order walks the whole chain at once.
TEST(Sheet, HundredThousandCellChain) {
  constexpr int kCells = 100000;
  const std::string in = TempPath("chain.csv");
  std::string sheet, expected;
  for (int row = 1; row < kCells; ++row) {
    sheet += "=A" + std::to_string(row + 1) + "+1\n";
    expected += std::to_string(kCells - row + 1) + "\n";
  }
  sheet += "1\n";
  expected += "1\n";
  std::ofstream(in, std::ios::binary) << sheet;
  const ToolResult r = RunTool({"--sheet", in});
  std::remove(in.c_str());
  EXPECT_EQ(r.exitCode, 0);
  EXPECT_TRUE(r.out == expected) << r.out.substr(0, 200) << r.err;
}

}  // namespace
}  // namespace vkt::test
