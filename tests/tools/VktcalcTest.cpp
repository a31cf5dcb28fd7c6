// tests/tools/VktcalcTest.cpp: the vktcalc binary as a user runs it: its
// arguments, exit codes and exact output texts, a file of formulas,
// standard input, bad input and the interactive mode on a terminal.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/ToolRunner.h"

namespace vkt::test {
namespace {

struct ToolCase {
  const char* name;
  std::vector<std::string> args;
  int exitCode;
  std::string out;
  std::string err;
};

void Check(const std::vector<ToolCase>& cases) {
  for (const ToolCase& c : cases) {
    const ToolResult r = RunTool(c.args);
    EXPECT_EQ(r.exitCode, c.exitCode) << c.name;
    EXPECT_EQ(r.out, c.out) << c.name;
    EXPECT_EQ(r.err, c.err) << c.name;
  }
}

const std::string kHelpHint = "Run vktcalc --help for the usage.\n";

TEST(VktcalcResults, Table) {
  Check({
      {"the README's formula", {"=A1+sum(B1,2)*3", "A1=5", "B1=3"}, 0, "20\n", ""},
      {"without the =", {"1+2*3"}, 0, "7\n", ""},
      {"exact decimals", {"0.1+0.2"}, 0, "0.3\n", ""},
      {"a text result prints without quotes", {"\"a\"+\"b\""}, 0, "ab\n", ""},
      {"division by zero", {"1/0"}, 0, "\xE2\x88\x9E\n", ""},
      {"a quoted text value", {"A1", "A1='x y'"}, 0, "x y\n", ""},
      {"an empty value is the empty text", {"A1", "A1="}, 0, "\n", ""},
      // An expression takes the variable's place in the text as it stands.
      {"an expression value", {"A1*2", "A1=1+2"}, 0, "5\n", ""},
      {"a bracketed expression value", {"A1*2", "A1=(1+2)"}, 0, "6\n", ""},
      {"a value that names another variable", {"A1", "A1=B1*2", "B1=4"}, 0, "8\n", ""},
      {"a list is several arguments", {"sum(R)", "R=1,2,3"}, 0, "6\n", ""},
      {"names match without case; the later wins", {"a1", "A1=1", "a1=7"}, 0, "7\n", ""},
      {"the library answers @language", {"@language"}, 0, "0\n", ""},
      {"if", {"if(A1>2, \"big\", \"small\")", "A1=3"}, 0, "big\n", ""},
      {"-- before a formula that starts with a letter after -", {"--", "-A1", "A1=4"}, 0,
       "-4\n", ""},
      {"a formula that starts with -1 is no option", {"-1+2"}, 0, "1\n", ""},
      {"options after the formula", {"A1", "A1=2", "--trace"}, 0, "trace: 2\n2\n", ""},
  });
}

TEST(VktcalcHostFunctions, Table) {
  Check({
      // clamp is registered with a body that the library runs.
      {"clamp above", {"clamp(15, 0, 10)"}, 0, "10\n", ""},
      {"clamp below gives the bound's text", {"clamp(-1, 0.50, 10)"}, 0, "0.5\n", ""},
      {"clamp inside", {"clamp(A1, 0, 10)*2", "A1=2.5"}, 0, "5\n", ""},
      {"clamp with two arguments", {"clamp(1, 2)"}, 1, "",
       "vktcalc: Invalid expression or call: clamp(1, 2)\n"},
      {"clamp with low above high", {"clamp(1, 3, 2)"}, 1, "",
       "vktcalc: Value out of range: clamp(1, 3, 2)\n"},
      {"clamp of a word", {"clamp('x', 1, 2)"}, 1, "",
       "vktcalc: Value out of range: clamp(x, 1, 2)\n"},
      // env has no body: the library stops with run code 3 and the tool
      // computes it.
      {"env without a default", {"env('VKTCALC_SURELY_UNSET')"}, 0, "\n", ""},
      {"env with a number default", {"env('VKTCALC_SURELY_UNSET', 5)+1"}, 0, "6\n", ""},
      {"env without a name", {"env()"}, 1, "",
       "vktcalc: env takes a name and an optional default: env(name, [default])\n"},
  });

  const ToolResult set = RunTool({"env(\"VKTCALC_TEST_ENV\")+\"!\""}, "",
                                 {"VKTCALC_TEST_ENV=it's here"});
  EXPECT_EQ(set.exitCode, 0);
  EXPECT_EQ(set.out, "it's here!\n");  // always a text, quotes inside kept
}

TEST(VktcalcErrors, Table) {
  Check({
      {"syntax", {"=1+*2"}, 1, "", "vktcalc: Invalid expression or call:\n1+*2\n--^\n"},
      {"two operands", {"1 2"}, 1, "", "vktcalc: Invalid expression or call:\n1 2\n--^\n"},
      {"an open bracket", {"(1"}, 1, "", "vktcalc: Brackets do not match:\n(1\n^\n"},
      {"digits before a name", {"12a"}, 1, "",
       "vktcalc: A name cannot start with digits:\n12a\n--^\n"},
      {"an invalid variable name", {"a%"}, 1, "", "vktcalc: Invalid variable name:\na%\n-^\n"},
      {"a bad call", {"sum()"}, 1, "", "vktcalc: Invalid expression or call: sum()\n"},
      {"a bad value", {"round(1, -1)"}, 1, "", "vktcalc: Value out of range: round(1, -1)\n"},
      {"text minus text", {"\"a\"-\"b\""}, 1, "", "vktcalc: Invalid expression or call: 'a'-'b'\n"},
      {"a value that breaks the formula", {"A1+1", "A1=1+"}, 1, "",
       "vktcalc: Invalid expression or call:\n1++1\n--^\n(after the value of A1 was put in)\n"},
      {"a variable that refers to itself", {"A1", "A1=A1+1"}, 1, "",
       "vktcalc: gave up after 257 values: does a variable refer to itself?\n"},
      {"the empty formula", {""}, 1, "", "vktcalc: the formula is empty\n"},
      {"only an =", {" = "}, 1, "", "vktcalc: the formula is empty\n"},
      {"a variable without a value", {"=A1+B1", "A1=1"}, 3, "",
       "vktcalc: no value for variable B1; give it one as B1=VALUE\n"},
      {"an unknown function", {"foo(1, 'a')"}, 4, "", "vktcalc: unknown function foo\n"},
  });
}

TEST(VktcalcUsage, Table) {
  Check({
      {"an unknown option", {"--bogus"}, 2, "",
       "vktcalc: unknown option --bogus (a formula that starts with - goes after --, or "
       "write it as =--bogus)\n" + kHelpHint},
      {"a formula that looks like an option", {"-A1"}, 2, "",
       "vktcalc: unknown option -A1 (a formula that starts with - goes after --, or write "
       "it as =-A1)\n" + kHelpHint},
      {"not NAME=VALUE", {"1", "x y=3"}, 2, "",
       "vktcalc: 'x y=3' is not NAME=VALUE with a valid variable name\n" + kHelpHint},
      {"no = at all", {"1", "A1"}, 2, "",
       "vktcalc: 'A1' is not NAME=VALUE with a valid variable name\n" + kHelpHint},
      {"== is no assignment", {"1", "A1==2"}, 2, "",
       "vktcalc: 'A1==2' is not NAME=VALUE with a valid variable name\n" + kHelpHint},
      {"-f without a file", {"-f"}, 2, "", "vktcalc: -f needs a file name\n" + kHelpHint},
      {"-f after a formula", {"1", "-f", "x"}, 2, "",
       "vktcalc: -f cannot be combined with a formula, - or another -f\n" + kHelpHint},
      {"a file that is not there", {"-f", "/nonexistent/formulas.txt"}, 2, "",
       "vktcalc: cannot read /nonexistent/formulas.txt\n"},
      {"--version", {"--version"}, 0, "vktcalc " VKTCALC_VERSION "\n", ""},
  });
}

TEST(VktcalcHelp, DocumentsUsageAndExitCodes) {
  const ToolResult r = RunTool({"--help"});
  EXPECT_EQ(r.exitCode, 0);
  EXPECT_EQ(r.err, "");
  EXPECT_EQ(r.out.rfind("Usage: vktcalc [OPTIONS] FORMULA [NAME=VALUE]...\n", 0), 0u);
  for (const char* line : {
           "  -f FILE ", "  --trace, --trace=steps\n", "  --trace=values ", "  --functions ",
           "Exit codes:\n"
           "  0  every formula was computed\n"
           "  1  a formula has an error: it does not parse, or its calculation failed\n"
           "  2  usage error: a bad option or argument, or a file that cannot be read\n"
           "  3  a variable has no value\n"
           "  4  a function is unknown, or has no body in this build\n"}) {
    EXPECT_NE(r.out.find(line), std::string::npos) << line;
  }
}

TEST(VktcalcFunctions, ListsEveryCategoryWithUsageAndDescription) {
  const ToolResult r = RunTool({"--functions"});
  EXPECT_EQ(r.exitCode, 0);
  EXPECT_EQ(r.err, "");
  const std::string control =
      "Control\n"
      "  if(condition, then, else)\n"
      "      The second argument when the condition is not zero, else the third.\n";
  EXPECT_EQ(r.out.rfind(control, 0), 0u);
  // The categories in the order of their ids, then the tool's own.
  std::string::size_type at = 0;
  for (const char* heading : {"\nMathematics and statistics\n", "\nText, and numbers as text\n",
                              "\nDate and time\n", "\nFunctions of this tool\n"}) {
    const std::string::size_type found = r.out.find(heading, at);
    ASSERT_NE(found, std::string::npos) << heading;
    at = found;
  }
  EXPECT_EQ(r.out.substr(at),
            "\nFunctions of this tool\n"
            "  clamp(value, low, high)\n"
            "      The value, or the nearer bound when it lies outside low to high.\n"
            "  env(name, [default])\n"
            "      The value of an environment variable, else the default, else empty.\n");
  // rand has no parameter help: its usage is written with empty brackets.
  EXPECT_NE(r.out.find("  rand()"), std::string::npos);
  EXPECT_NE(r.out.find("  sum(value, ...)\n      The sum of the arguments.\n"),
            std::string::npos);
  EXPECT_EQ(r.out.find("(text "), std::string::npos) << "an id without a text";
}

// A built-in without a body in this build reaches the tool as run code 3;
// the tool says so. Which built-ins those are depends on the build, so the
// test takes one from --functions and is skipped when every one has a body.
TEST(VktcalcFunctions, BuiltinWithoutBodyIsReportedByName) {
  const std::string list = RunTool({"--functions"}).out;
  const std::string::size_type mark = list.find("  [not in this build]");
  if (mark == std::string::npos) GTEST_SKIP() << "every built-in has a body";
  const std::string::size_type start = list.rfind("\n  ", mark) + 3;
  const std::string name = list.substr(start, list.find('(', start) - start);
  const ToolResult r = RunTool({name + "(1)"});
  EXPECT_EQ(r.exitCode, 4);
  EXPECT_EQ(r.err, "vktcalc: the built-in function " + name +
                       " has no body in this build of the library\n");
}

TEST(VktcalcTrace, StepsShowTheFormulaAfterEachValue) {
  const ToolResult r = RunTool({"--trace", "=A1+B1*2", "A1=5", "B1=3"});
  EXPECT_EQ(r.exitCode, 0);
  EXPECT_EQ(r.out, "trace: 5+B1*2\ntrace: 5+3*2\n11\n");
  EXPECT_EQ(r.err, "");
}

TEST(VktcalcTrace, ValuesShowVariablesAndFunctions) {
  const ToolResult r =
      RunTool({"--trace=values", "=A1+sum(B1,2)+clamp(9,0,1)+env('VKTCALC_SURELY_UNSET',0)",
               "A1=5", "B1=3"});
  EXPECT_EQ(r.exitCode, 0);
  EXPECT_EQ(r.out,
            "trace: A1 = 5\n"
            "trace: B1 = 3\n"
            "trace: sum(3, 2) = 5\n"
            "trace: clamp(9, 0, 1) = 1\n"
            "trace: env('VKTCALC_SURELY_UNSET', 0) = 0\n"
            "11\n");
}

TEST(VktcalcTrace, FailedRunKeepsTheStepsSoFar) {
  const ToolResult r = RunTool({"--trace", "A1+B1", "A1=1"});
  EXPECT_EQ(r.exitCode, 3);
  EXPECT_EQ(r.out, "trace: 1+B1\n");
  EXPECT_EQ(r.err, "vktcalc: no value for variable B1; give it one as B1=VALUE\n");
}

TEST(VktcalcFile, EveryLineIsComputedAndTheFirstFailureDecides) {
  const std::string file = ToolDataDir() + "/formulas.txt";
  const ToolResult r = RunTool({"-f", file, "A1=5", "B1=3"});
  EXPECT_EQ(r.exitCode, 1);  // line 7; the 3 of line 9 and the 4 of line 10 come later
  EXPECT_EQ(r.out, "20\n0.3\nx5\n10\nA1 is larger\n3\n");
  EXPECT_EQ(r.err, file + ":7: Invalid expression or call:\n1+*2\n--^\n" +
                       file + ":9: no value for variable C1; give it one as C1=VALUE\n" +
                       file + ":10: unknown function nosuch\n");
}

TEST(VktcalcStdin, DashAndTheDefaultReadStandardInput) {
  const std::string input = "\xEF\xBB\xBF" "1+1\r\n# a comment\n\n2*A1\n=X\nA1=2";
  const ToolResult r = RunTool({"-", "A1=3"}, input);
  EXPECT_EQ(r.exitCode, 3);
  EXPECT_EQ(r.out, "2\n6\n0\n");  // on standard input a line A1=2 compares
  EXPECT_EQ(r.err, "<stdin>:5: no value for variable X; give it one as X=VALUE\n");

  const ToolResult plain = RunTool({}, "1+1\n2*3");
  EXPECT_EQ(plain.exitCode, 0);
  EXPECT_EQ(plain.out, "2\n6\n");
  const ToolResult empty = RunTool({}, "");
  EXPECT_EQ(empty.exitCode, 0);
  EXPECT_EQ(empty.out, "");
}

TEST(VktcalcStdin, BadBytesAndLongLinesDoNotCrash) {
  std::string input = "\xFF\xFE\x80\n";
  input += std::string(300, '(') + "1" + std::string(300, ')') + "\n";
  input += std::string(100000, '1') + "\n";
  input += "sum(" + std::string(5000, '1') + ")\n";
  const ToolResult r = RunTool({"-"}, input);
  EXPECT_EQ(r.exitCode, 3);  // the bad bytes read as a name nobody gave a value
  EXPECT_EQ(r.out, "");
  for (const char* start : {
           "<stdin>:1: no value for variable ",
           "\n<stdin>:2: Invalid expression or call:\n(((",  // nesting past the limit
           "\n<stdin>:3: Invalid variable name:\n111",        // too many digits for a number
           "\n<stdin>:4: Invalid variable name:\nsum(111"}) {
    EXPECT_NE(r.err.find(start), std::string::npos) << start;
  }
}

TEST(VktcalcInteractive, PromptsAndSetsVariables) {
  const ToolResult r = RunToolOnTerminal(
      {"-", "A1=1"}, "B1=5\n=B1*2+a1\nsum(1,2\nX\n\n# comment\nif(A1=1, \"yes\", \"no\")\nx y=1\n");
  EXPECT_EQ(r.exitCode, 0);
  EXPECT_EQ(r.out,
            "vktcalc " VKTCALC_VERSION
            ": one formula a line, NAME=VALUE sets a variable, quit or Ctrl-D ends.\n"
            "> "                    // B1=5 sets a variable, quietly
            "> 11\n"
            "> error: Brackets do not match:\nsum(1,2\n-------^\n"
            "> error: no value for variable X; give it one as X=VALUE\n"
            "> "                    // empty line
            "> "                    // comment
            "> yes\n"
            "> error: Invalid expression or call:\nx y=1\n--^\n"
            "> \n");                // Ctrl-D
}

TEST(VktcalcInteractive, QuitEndsTheSession) {
  const ToolResult r = RunToolOnTerminal({}, "1+1\nquit\n2+2\n");
  EXPECT_EQ(r.exitCode, 0);
  EXPECT_EQ(r.out,
            "vktcalc " VKTCALC_VERSION
            ": one formula a line, NAME=VALUE sets a variable, quit or Ctrl-D ends.\n"
            "> 2\n> ");
}

}  // namespace
}  // namespace vkt::test
