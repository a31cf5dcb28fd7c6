// tests/tools/ToolRunner.h: runs the built vktcalc binary as a user would,
// in a child process, and collects what it printed and its exit code. The
// tests of the tool use nothing else of it: they see only its behaviour.
#pragma once

#include <string>
#include <vector>

namespace vkt::test {

struct ToolResult {
  int exitCode = -1;  // -1 when the child did not exit normally
  std::string out;    // standard output (on a terminal: everything written)
  std::string err;    // standard error (empty on a terminal)
};

// The built tool and the folder of this test's data files.
std::string ToolPath();
std::string ToolDataDir();

// Runs vktcalc with `args`; `input` is its standard input (a file, not a
// terminal), and `extraEnv` entries "NAME=value" are added to the
// environment it inherits.
ToolResult RunTool(const std::vector<std::string>& args, const std::string& input = "",
                   const std::vector<std::string>& extraEnv = {});

// Runs vktcalc with standard input, output and error on a pseudo-terminal
// with echo off and no output translation, types `input` and then the end
// of input (Ctrl-D), and collects all it wrote until it ended.
ToolResult RunToolOnTerminal(const std::vector<std::string>& args, const std::string& input);

}  // namespace vkt::test
