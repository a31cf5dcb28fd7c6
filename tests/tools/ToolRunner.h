// tests/tools/ToolRunner.h: runs the built vktcalc binary as a user would, in a child process, and
// collects what it printed and its exit code. The tool's tests see nothing else of it.
#pragma once

#include <string>
#include <vector>

namespace vkt::test {

struct ToolResult {
  std::string out, err;  // standard output and error (on a terminal, all is in out)
  int exitCode = -1;     // -1 when the child did not exit normally
};

// Runs vktcalc with `args` in the test's environment. `in` is its standard input: a file, or with
// `terminal` typed on a pseudo-terminal (no echo, no output translation) and then Ctrl-D.
ToolResult RunTool(const std::vector<std::string>& args, const std::string& in = "", bool terminal = false);

}  // namespace vkt::test
