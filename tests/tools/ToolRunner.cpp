// tests/tools/ToolRunner.cpp: child processes for the tool's tests. Plain files carry standard input,
// output and error, so that nothing can block on a full pipe; a terminal is read until the child ends.
#include "tests/tools/ToolRunner.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace vkt::test {

ToolResult RunTool(const std::vector<std::string>& args, const std::string& in, bool terminal) {
  static int runs = 0;
  const std::string base = (std::filesystem::temp_directory_path() / "vktcalc-test-").string() +
                           std::to_string(getpid()) + "-" + std::to_string(runs++);
  const std::string files[] = {base + ".in", base + ".out", base + ".err"};
  std::ofstream(files[0], std::ios::binary) << in;
  std::vector<char*> argv{const_cast<char*>(VKTCALC_TOOL_PATH)};
  for (const std::string& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
  argv.push_back(nullptr);
  // Canonical mode keeps the typed lines until the tool reads them; Ctrl-D at a line's start ends input.
  termios mode{};
  mode.c_cflag = CS8 | CREAD | B38400;
  mode.c_lflag = ICANON;
  mode.c_cc[VEOF] = 4;
  int master = -1;
  const pid_t pid = terminal ? forkpty(&master, nullptr, &mode, nullptr) : fork();
  if (pid == 0) {
    for (int fd = 0; fd < 3 && !terminal; ++fd)
      dup2(open(files[fd].c_str(), fd == 0 ? O_RDONLY : O_WRONLY | O_CREAT | O_TRUNC, 0600), fd);
    execv(argv[0], argv.data());
    _exit(127);
  }
  ToolResult result;
  const std::string typed = in + '\x04';
  if (pid > 0 && terminal && write(master, typed.data(), typed.size()) > 0) {
    char buffer[4096];
    ssize_t n = 0;
    // Read until EIO, once the tool has closed the terminal; a tool that hangs fails after 20 s.
    for (pollfd ready{master, POLLIN, 0}; poll(&ready, 1, 20000) > 0 && (n = read(master, buffer, 4096)) > 0;)
      result.out.append(buffer, static_cast<std::size_t>(n));
  }
  if (master >= 0) close(master);
  int status = 0;
  if (pid > 0 && waitpid(pid, &status, 0) == pid && WIFEXITED(status)) result.exitCode = WEXITSTATUS(status);
  for (int fd = 1; fd < 3 && !terminal; ++fd) {
    std::ifstream file(files[fd], std::ios::binary);
    (fd == 1 ? result.out : result.err).assign(std::istreambuf_iterator<char>(file), {});
  }
  for (const std::string& file : files) std::remove(file.c_str());
  return result;
}

}  // namespace vkt::test
