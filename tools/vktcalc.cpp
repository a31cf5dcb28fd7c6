// tools/vktcalc.cpp: main of the vktcalc command-line host. It reads the
// arguments, installs the tool's language interface, and hands formulas from
// the command line, a file, standard input or a person at a terminal to
// ToolHost, or a whole CSV sheet to Sheet, printing results on standard
// output and errors on standard error. What a run does lies in ToolHost and
// Sheet; here is only how it is shown.
#include <fstream>
#include <iterator>
#include <iostream>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "VKTCalc.h"
#include "tools/Sheet.h"
#include "tools/Terminal.h"
#include "tools/ToolHost.h"
#include "tools/ToolLanguage.h"

#ifndef VKTCALC_VERSION
#define VKTCALC_VERSION "unknown"
#endif

namespace vkt::tool {
namespace {

constexpr const char* kUsage =
    "Usage: vktcalc [OPTIONS] FORMULA [NAME=VALUE]...\n"
    "       vktcalc [OPTIONS] -f FILE [NAME=VALUE]...\n"
    "       vktcalc [OPTIONS] - [NAME=VALUE]...\n"
    "       vktcalc --sheet FILE.csv [-o OUT.csv] [NAME=VALUE]...\n"
    "       vktcalc [OPTIONS]\n"
    "       vktcalc --functions | --help | --version\n";

constexpr const char* kHelp =
    "\n"
    "Computes formulas with the VKTCalc engine and prints each result.\n"
    "\n"
    "  FORMULA         a formula such as '=A1+sum(B1,2)*3'; the = may be left out\n"
    "  NAME=VALUE      the value of a variable, for every formula: a number (5),\n"
    "                  a quoted text ('x' or \"x\"), or an expression, which takes\n"
    "                  the variable's place in the formula's text as it stands:\n"
    "                  bracket it, B1='(C1+1)', to have it computed first; a list\n"
    "                  such as R=1,2,3 gives sum(R) three arguments. Names match\n"
    "                  without regard to case\n"
    "  -f FILE         compute each line of FILE, one formula a line\n"
    "  -               compute each line of standard input (the default without\n"
    "                  FORMULA or -f); when it is a terminal, vktcalc prompts, and\n"
    "                  a NAME=VALUE line sets a variable (type =A1=5 to compare)\n"
    "  --trace, --trace=steps\n"
    "                  also print each step: the formula after each value put in\n"
    "  --trace=values  also print each variable and function value used\n"
    "  --sheet FILE    compute a sheet: FILE (- for standard input) is CSV, each\n"
    "                  field a cell (row 1 column 1 is A1); a field that starts\n"
    "                  with = is a formula, and may read cells and ranges (A1,\n"
    "                  b2, sum(A1:C3), ref('B7'), ref(2, 7)). Prints the sheet\n"
    "                  with each formula replaced by its result, or by an error\n"
    "                  that starts with #: #cycle A1 -> B1 -> A1, #ref A1 (reads\n"
    "                  a cell in error), #1003 <message>, #name X, #unsupported X\n"
    "                  (sheet, alias and @ references)\n"
    "  -o OUT          with --sheet: write the sheet to OUT\n"
    "  --functions     list the functions by category\n"
    "  --help          show this text\n"
    "  --version       show the version\n"
    "  --              end of options: what follows is the formula, even if it\n"
    "                  starts with -, and the NAME=VALUE arguments\n"
    "\n"
    "In a file or on standard input, empty lines and lines that start with #\n"
    "are skipped; write =#name for a formula that starts with a #name.\n"
    "\n"
    "Functions of this tool: clamp(value, low, high), which the library runs\n"
    "through a body the tool registers, and env(name, [default]), the value of\n"
    "an environment variable, which the tool computes when the library asks.\n"
    "\n"
    "Exit codes:\n"
    "  0  every formula was computed\n"
    "  1  a formula has an error: it does not parse, or its calculation failed\n"
    "  2  usage error: a bad option or argument, or a file that cannot be read\n"
    "  3  a variable has no value\n"
    "  4  a function is unknown, or has no body in this build\n"
    "With several formulas the code is that of the first that failed; the\n"
    "others are computed all the same.\n"
    "With --sheet:\n"
    "  0  every cell was computed\n"
    "  1  some cells are in error (the others are computed all the same)\n"
    "  2  usage error, or an input that cannot be read: a file that cannot be\n"
    "     opened, a quote that is not closed, more than 700 columns (ZX) or\n"
    "     1,000,000 rows\n";

struct Options {
  enum class Source { kNone, kFormula, kFile, kStdin, kSheet };
  Source source = Source::kNone;
  std::string formula;                   // Source::kFormula
  std::string file;                      // Source::kFile and kSheet
  std::string output;                    // -o, with Source::kSheet
  std::vector<std::string> assignments;  // NAME=VALUE, in order
  TraceMode trace = TraceMode::kOff;
  bool help = false;
  bool version = false;
  bool functions = false;
};

// An argument that starts with "-" and a letter or a second "-" is an
// option; any other ("-", "-1+2", "-(a)") is a formula or an assignment.
bool IsOption(std::string_view arg) {
  if (arg.size() < 2 || arg[0] != '-') return false;
  const char next = arg[1];
  return next == '-' || (next >= 'a' && next <= 'z') || (next >= 'A' && next <= 'Z');
}

// Fills `options`; false with the reason in `problem` for bad usage.
bool ParseArguments(int argc, char** argv, Options& options, std::string& problem) {
  bool optionsEnded = false;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (!optionsEnded && IsOption(arg)) {
      if (arg == "--") {
        optionsEnded = true;
      } else if (arg == "-h" || arg == "--help") {
        options.help = true;
      } else if (arg == "--version") {
        options.version = true;
      } else if (arg == "--functions") {
        options.functions = true;
      } else if (arg == "--trace" || arg == "--trace=steps") {
        options.trace = TraceMode::kSteps;
      } else if (arg == "--trace=values") {
        options.trace = TraceMode::kValues;
      } else if (arg == "-f" || arg == "--sheet") {
        if (options.source != Options::Source::kNone) {
          problem = arg + " cannot be combined with a formula, -, -f or --sheet";
          return false;
        }
        if (i + 1 == argc) {
          problem = arg + " needs a file name";
          return false;
        }
        options.file = argv[++i];
        options.source = arg == "-f" ? Options::Source::kFile : Options::Source::kSheet;
      } else if (arg == "-o") {
        if (i + 1 == argc) {
          problem = "-o needs a file name";
          return false;
        }
        options.output = argv[++i];
      } else {
        problem = Concat({"unknown option ", arg,
                          " (a formula that starts with - goes after --, or write it as =", arg,
                          ")"});
        return false;
      }
      continue;
    }
    if (options.source == Options::Source::kNone) {
      if (arg == "-") {
        options.source = Options::Source::kStdin;
      } else {
        options.source = Options::Source::kFormula;
        options.formula = arg;
      }
    } else {
      options.assignments.push_back(arg);
    }
  }
  if (!options.output.empty() && options.source != Options::Source::kSheet) {
    problem = "-o goes with --sheet";
    return false;
  }
  return true;
}

// Computes the sheet in `file` ("-": standard input) and writes it to
// standard output or `output`. Cells in error give kExitFormula.
int RunSheet(ToolHost& host, const std::string& file, const std::string& output) {
  std::string text;
  if (file == "-") {
    text.assign(std::istreambuf_iterator<char>(std::cin), {});
  } else {
    std::ifstream in(file, std::ios::binary);
    if (!in) {
      std::cerr << "vktcalc: cannot read " << file << '\n';
      return kExitUsage;
    }
    text.assign(std::istreambuf_iterator<char>(in), {});
  }
  Sheet sheet(host);
  std::string problem;
  if (!sheet.Load(text, problem)) {
    std::cerr << "vktcalc: " << file << ": " << problem << '\n';
    return kExitUsage;
  }
  sheet.Parse();
  sheet.Order();
  sheet.Compute();
  const std::string result = sheet.Write();
  if (output.empty()) {
    std::cout << result << std::flush;
  } else {
    std::ofstream out(output, std::ios::binary);
    if (!(out << result) || !out.flush()) {
      std::cerr << "vktcalc: cannot write " << output << '\n';
      return kExitUsage;
    }
  }
  return sheet.ErrorCount() == 0 ? kExitOk : kExitFormula;
}

// Prints one run: its trace and value on standard output, or its error,
// behind `where`, on standard error. Gives the run's exit code.
int Report(const RunReport& report, const std::string& where) {
  for (const std::string& line : report.trace) std::cout << "trace: " << line << '\n';
  if (report.exitCode == kExitOk) {
    std::cout << report.value << '\n';
  } else {
    std::cout.flush();
    std::cerr << where << report.error << '\n';
  }
  return report.exitCode;
}

// A line worth computing: not empty, no comment. Takes off a CR left by a
// file with CR LF line ends.
bool PrepareLine(std::string& line) {
  if (!line.empty() && line.back() == '\r') line.pop_back();
  const std::string::size_type first = line.find_first_not_of(" \t");
  return first != std::string::npos && line[first] != '#';
}

// One formula a line; every line is computed, the first failure's code is
// the result.
int RunLines(ToolHost& host, std::istream& in, const std::string& label, TraceMode trace) {
  int result = kExitOk;
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    if (number == 1 && line.starts_with("\xEF\xBB\xBF")) line.erase(0, 3);  // a BOM
    if (!PrepareLine(line)) continue;
    const int code =
        Report(host.Run(line, trace), Concat({label, ":", std::to_string(number), ": "}));
    if (result == kExitOk) result = code;
  }
  return result;
}

// A person at a terminal: a prompt, one formula a line, NAME=VALUE lines set
// variables. Errors are shown and the session goes on; it ends at the end
// of input or with "quit" or "exit".
int RunInteractive(ToolHost& host, TraceMode trace) {
  std::cout << "vktcalc " << VKTCALC_VERSION
            << ": one formula a line, NAME=VALUE sets a variable, quit or Ctrl-D ends.\n";
  std::string line;
  for (;;) {
    std::cout << "> " << std::flush;
    if (!std::getline(std::cin, line)) {
      std::cout << '\n';  // end of input: leave the prompt's line
      break;
    }
    if (!PrepareLine(line)) continue;
    if (line == "quit" || line == "exit") break;
    if (IsAssignment(line)) {
      std::string problem;
      if (!host.SetAssignment(line, problem)) std::cerr << "error: " << problem << '\n';
      continue;
    }
    Report(host.Run(line, trace), "error: ");
  }
  return kExitOk;
}

int Main(int argc, char** argv) {
  Options options;
  std::string problem;
  if (!ParseArguments(argc, argv, options, problem)) {
    std::cerr << "vktcalc: " << problem << "\nRun vktcalc --help for the usage.\n";
    return kExitUsage;
  }
  if (options.help) {
    std::cout << kUsage << kHelp;
    return kExitOk;
  }
  if (options.version) {
    std::cout << "vktcalc " << VKTCALC_VERSION << '\n';
    return kExitOk;
  }

  ToolHost host;
  if (options.functions) {
    std::cout << host.FunctionList();
    return kExitOk;
  }
  for (const std::string& assignment : options.assignments) {
    if (!host.SetAssignment(assignment, problem)) {
      std::cerr << "vktcalc: " << problem << "\nRun vktcalc --help for the usage.\n";
      return kExitUsage;
    }
  }

  switch (options.source) {
    case Options::Source::kFormula:
      return Report(host.Run(options.formula, options.trace), "vktcalc: ");
    case Options::Source::kFile: {
      std::ifstream in(options.file, std::ios::binary);
      if (!in) {
        std::cerr << "vktcalc: cannot read " << options.file << '\n';
        return kExitUsage;
      }
      return RunLines(host, in, options.file, options.trace);
    }
    case Options::Source::kSheet:
      return RunSheet(host, options.file, options.output);
    case Options::Source::kNone:
    case Options::Source::kStdin:
      break;
  }
  if (StandardInputIsTerminal()) return RunInteractive(host, options.trace);
  return RunLines(host, std::cin, "<stdin>", options.trace);
}

}  // namespace
}  // namespace vkt::tool

int main(int argc, char** argv) {
  // Installed before anything can ask for a text, and left installed: the
  // library never deletes it, and it outlives every calculator here.
  static vkt::tool::ToolLanguage language;
  SetLggInterface(&language);
  return vkt::tool::Main(argc, argv);
}
