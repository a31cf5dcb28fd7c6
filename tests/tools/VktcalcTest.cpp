// tests/tools/VktcalcTest.cpp: the vktcalc binary as a user runs it: its arguments, exit codes and
// exact output texts with the caret display, a file of formulas, standard input and a terminal.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <tuple>
#include <vector>

#include "tests/tools/ToolRunner.h"

namespace vkt::test {
namespace {

struct ToolCase {
  std::vector<std::string> args;
  std::string out = {};  // standard output
  std::string err = {};  // standard error
  int code = 0;          // exit code
  std::string in = {};   // standard input
};

// Every row's exact output and exit code; no text id may go without its text anywhere.
void Check(const std::vector<ToolCase>& cases, bool terminal = false) {
  for (const ToolCase& c : cases) {
    const ToolResult r = RunTool(c.args, c.in, terminal);
    EXPECT_EQ(std::tie(r.out, r.err, r.exitCode), std::tie(c.out, c.err, c.code))
        << testing::PrintToString(c.args);
    EXPECT_EQ((r.out + r.err).find("(text "), std::string::npos);
  }
}

const std::string kHint = "\nRun vktcalc --help for the usage.\n";
const std::string kNoName = " is not NAME=VALUE with a valid variable name" + kHint;
const std::string kNoB1 = "vktcalc: no value for variable B1; give it one as B1=VALUE\n";

TEST(Vktcalc, Results) {
  setenv("VKTCALC_TEST_ENV", "it's here", 1);
  Check({
      {{"=A1+sum(B1,2)*3", "A1=5", "B1=3"}, "20\n"}, {{"0.1+0.2"}, "0.3\n"},  // exact; the = may be left out
      {{"\"a\"+\"b\""}, "ab\n"}, {{"1/0"}, "\xE2\x88\x9E\n"},  // a text prints without quotes
      {{"A1", "A1='x y'"}, "x y\n"}, {{"A1", "A1="}, "\n"},  // an empty value is the empty text
      {{"A1*2", "A1=1+2"}, "5\n"}, {{"A1*2", "A1=(1+2)"}, "6\n"},  // an expression goes in as it stands
      {{"A1", "A1=B1*2", "B1=4"}, "8\n"}, {{"sum(R)", "R=1,2,3"}, "6\n"},  // a list is several arguments
      {{"a1", "A1=1", "a1=7"}, "7\n"}, {{"--version"}, "vktcalc " VKTCALC_VERSION "\n"},  // the later wins
      {{"--", "-A1", "A1=4"}, "-4\n"}, {{"-1+2"}, "1\n"},  // -1 starts no option
      {{"clamp(15, 0, 10)"}, "10\n"}, {{"clamp(-1, 0.50, 10)"}, "0.5\n"},  // the library runs clamp's body
      {{"env('VKTCALC_SURELY_UNSET')"}, "\n"}, {{"env('VKTCALC_SURELY_UNSET', 5)+1"}, "6\n"},  // the tool env
      {{"env(\"VKTCALC_TEST_ENV\")+\"!\""}, "it's here!\n"},  // always a text, quotes kept
      {{"A1", "A1=2", "--trace"}, "trace: 2\n2\n"},          // options after the formula
      {{"--trace", "=A1+B1*2", "A1=5", "B1=3"}, "trace: 5+B1*2\ntrace: 5+3*2\n11\n"},
      {{"--trace=values", "=A1+sum(B1,2)+clamp(9,0,1)+env('VKTCALC_SURELY_UNSET',0)", "A1=5", "B1=3"},
       "trace: A1 = 5\ntrace: B1 = 3\ntrace: sum(3, 2) = 5\ntrace: clamp(9, 0, 1) = 1\n"
       "trace: env('VKTCALC_SURELY_UNSET', 0) = 0\n11\n"},
  });
}

TEST(Vktcalc, ErrorsAndUsage) {
  Check({
      {{"=1+*2"}, "", "vktcalc: Invalid expression or call:\n1+*2\n--^\n", 1},
      {{"(1"}, "", "vktcalc: Brackets do not match:\n(1\n^\n", 1},
      {{"12a"}, "", "vktcalc: A name cannot start with digits:\n12a\n--^\n", 1},
      {{"a%"}, "", "vktcalc: Invalid variable name:\na%\n-^\n", 1},
      {{"\"a\"-\"b\""}, "", "vktcalc: Invalid expression or call: 'a'-'b'\n", 1},
      {{"A1+1", "A1=1+"}, "", "vktcalc: Invalid expression or call:\n1++1\n--^\n"
                              "(after the value of A1 was put in)\n", 1},
      {{"A1", "A1=A1+1"}, "", "vktcalc: gave up after 257 values: does a variable refer to itself?\n", 1},
      {{""}, "", "vktcalc: the formula is empty\n", 1}, {{" = "}, "", "vktcalc: the formula is empty\n", 1},
      {{"clamp(1, 2)"}, "", "vktcalc: Invalid expression or call: clamp(1, 2)\n", 1},
      {{"clamp('x', 1, 2)"}, "", "vktcalc: Value out of range: clamp(x, 1, 2)\n", 1},
      {{"env()"}, "", "vktcalc: env takes a name and an optional default: env(name, [default])\n", 1},
      {{"=A1+B1", "A1=1"}, "", kNoB1, 3}, {{"--trace", "A1+B1", "A1=1"}, "trace: 1+B1\n", kNoB1, 3},
      {{"foo(1, 'a')"}, "", "vktcalc: unknown function foo\n", 4},
      {{"-A1"}, "", "vktcalc: unknown option -A1 (a formula that starts with - goes after --, or write it as "
                    "=-A1)" + kHint, 2},
      {{"1", "x y=3"}, "", "vktcalc: 'x y=3'" + kNoName, 2}, {{"1", "A1"}, "", "vktcalc: 'A1'" + kNoName, 2},
      {{"1", "A1==2"}, "", "vktcalc: 'A1==2'" + kNoName, 2},
      {{"-f"}, "", "vktcalc: -f needs a file name" + kHint, 2},
      {{"1", "-f", "x"}, "", "vktcalc: -f cannot be combined with a formula, -, -f or --sheet" + kHint, 2},
      {{"-f", "/nonexistent/formulas.txt"}, "", "vktcalc: cannot read /nonexistent/formulas.txt\n", 2},
  });
}

// Each line of a file or standard input is computed, the first failure's code decides; a terminal prompts.
TEST(Vktcalc, FilesStandardInputAndTerminal) {
  const std::string formulas = "# A1=5, B1=3\n=A1+sum(B1,2)*3\n0.1+0.2\n\n  =\"x\"+A1\n=clamp(A1*3, 0, 10)\n"
                               "=1+*2\n=if(A1>B1, \"A1 is larger\", \"B1\")\n=C1+1\n=nosuch(1)\nround(2.5,0)";
  const std::string banner = "vktcalc " VKTCALC_VERSION ": one formula a line, NAME=VALUE sets a variable, "
                             "quit or Ctrl-D ends.\n";
  Check({
      {{"-f", "/dev/stdin", "A1=5", "B1=3"}, "20\n0.3\nx5\n10\nA1 is larger\n3\n",
       "/dev/stdin:7: Invalid expression or call:\n1+*2\n--^\n/dev/stdin:9: no value for variable C1; give "
       "it one as C1=VALUE\n/dev/stdin:10: unknown function nosuch\n", 1, formulas},
      {{"-", "A1=3"}, "2\n6\n0\n", "<stdin>:5: no value for variable X; give it one as X=VALUE\n", 3,
       "\xEF\xBB\xBF" "1+1\r\n# a comment\n\n2*A1\n=X\nA1=2"},  // a BOM, CR LF; A1=2 compares
      {{}, "2\n6\n", "", 0, "1+1\n2*3"}, {{}, "", "", 0, ""},
  });
  Check({
      {{"-", "A1=1"}, banner + "> > 11\n> error: Brackets do not match:\nsum(1,2\n-------^\n> error: no "
       "value for variable X; give it one as X=VALUE\n> > > yes\n> error: Invalid expression or call:\n"
       "x y=1\n--^\n> \n", "", 0,
       "B1=5\n=B1*2+a1\nsum(1,2\nX\n\n# comment\nif(A1=1, \"yes\", \"no\")\nx y=1\n"},
      {{}, banner + "> 2\n> ", "", 0, "1+1\nquit\n2+2\n"},  // quit ends the session
  }, true);
}

// Texts too long to spell out: the pieces of standard output, then of standard error, in order; the
// first starts its text and the last ends it, and no pieces means nothing was written.
TEST(Vktcalc, HelpFunctionListAndBadBytes) {
  const std::string bad = "\xFF\xFE\x80\n" + std::string(300, '(') + "1" + std::string(300, ')') + "\n" +
                          std::string(100000, '1') + "\nsum(" + std::string(5000, '1') + ")\n";
  using Pieces = std::vector<std::string>;
  const struct { std::vector<std::string> args; std::string in; Pieces out, err; } cases[] = {
      {{"--help"}, "", {"Usage: vktcalc [OPTIONS] FORMULA [NAME=VALUE]...\n", "  -f FILE ", "  --trace, "
        "--trace=steps\n", "  --trace=values ", "  --sheet FILE ", "  -o OUT ", "  --functions ",
        "Exit codes:\n  0  every formula was computed\n  1  a formula has an error: it does not parse, or "
        "its calculation failed\n  2  usage error: a bad option or argument, or a file that cannot be read\n"
        "  3  a variable has no value\n  4  a function is unknown, or has no body in this build\n",
        "others are computed all the same.\n",
        "With --sheet:\n  0  every cell was computed\n  1  some cells are in error", "1,000,000 rows\n"}, {}},
      {{"--functions"}, "", {"Control\n  if(condition, then, else)\n", "\nMathematics and statistics\n",
        "  rand()\n", "  sum(value, ...)\n      The sum of the arguments.\n", "\nText, and numbers as text\n",
        "\nDate and time\n", "\nFunctions of this tool\n  clamp(value, low, high)\n      The value, or the "
        "nearer bound when it lies outside low to high.\n  env(name, [default])\n      The value of an "
        "environment variable, else the default, else empty.\n"}, {}},  // rand has no parameter help
      {{"-"}, bad, {}, {"<stdin>:1: no value for variable \xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD; give it ",
        "<stdin>:2: Invalid expression or call:\n(((", "\n<stdin>:3: Invalid variable name:\n111",
        "\n<stdin>:4: Invalid variable name:\nsum(111", ")\n----^\n"}},  // too deep, too long, too long
  };
  for (const auto& c : cases) {
    const ToolResult r = RunTool(c.args, c.in);
    EXPECT_EQ(r.exitCode, c.err.empty() ? 0 : 3) << c.args[0];
    for (const auto& [text, pieces] : {std::tie(r.out, c.out), std::tie(r.err, c.err)}) {
      std::size_t at = 0;
      for (const std::string& piece : pieces) {
        const std::size_t found = text.find(piece, at);
        EXPECT_TRUE(found != text.npos && (at > 0 || found == 0)) << c.args[0] << ": " << piece;
        at = found == text.npos ? text.size() : found + piece.size();
      }
      EXPECT_EQ(at, text.size()) << c.args[0];
    }
  }
}

// A built-in without a body (from --functions; skipped when there is none) comes as run code 3, named.
TEST(Vktcalc, BuiltinWithoutBodyIsReportedByName) {
  const std::string list = RunTool({"--functions"}).out;
  const std::size_t mark = list.find("  [not in this build]");
  if (mark == std::string::npos) GTEST_SKIP() << "every built-in has a body";
  const std::size_t start = list.rfind("\n  ", mark) + 3;
  const std::string name = list.substr(start, list.find('(', start) - start);
  Check({{{name + "(1)"}, "", "vktcalc: the built-in function " + name + " has no body in this build of the "
                              "library\n", 4}});
}

}  // namespace
}  // namespace vkt::test
