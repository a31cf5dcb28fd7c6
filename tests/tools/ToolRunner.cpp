// tests/tools/ToolRunner.cpp: child processes for the tool's tests. Plain
// files carry standard input, output and error, so that nothing can block
// on a full pipe; the terminal case reads the pseudo-terminal's master side
// until the child has closed its end.
#include "tests/tools/ToolRunner.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

extern char** environ;

namespace vkt::test {

namespace {

namespace fs = std::filesystem;

std::string ReadFile(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

fs::path NewWorkDir() {
  static std::atomic<int> counter{0};
  fs::path dir = fs::temp_directory_path() /
                 ("vktcalc-tool-test-" + std::to_string(getpid()) + "-" +
                  std::to_string(counter.fetch_add(1)));
  fs::create_directories(dir);
  return dir;
}

// argv for posix_spawn: the tool, then the arguments; pointers into `args`.
std::vector<char*> MakeArgv(const std::string& tool, const std::vector<std::string>& args) {
  std::vector<char*> argv;
  argv.push_back(const_cast<char*>(tool.c_str()));
  for (const std::string& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
  argv.push_back(nullptr);
  return argv;
}

std::vector<char*> MakeEnv(const std::vector<std::string>& extraEnv) {
  std::vector<char*> env;
  for (char** entry = environ; *entry != nullptr; ++entry) env.push_back(*entry);
  for (const std::string& entry : extraEnv) env.push_back(const_cast<char*>(entry.c_str()));
  env.push_back(nullptr);
  return env;
}

int WaitFor(pid_t pid) {
  int status = 0;
  while (waitpid(pid, &status, 0) < 0) {
    if (errno != EINTR) return -1;
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

std::string ToolPath() { return VKTCALC_TOOL_PATH; }

std::string ToolDataDir() { return VKTCALC_TOOL_DATA; }

ToolResult RunTool(const std::vector<std::string>& args, const std::string& input,
                   const std::vector<std::string>& extraEnv) {
  const fs::path dir = NewWorkDir();
  const std::string in = (dir / "in").string();
  const std::string out = (dir / "out").string();
  const std::string err = (dir / "err").string();
  std::ofstream(in, std::ios::binary) << input;

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 0, in.c_str(), O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 1, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  posix_spawn_file_actions_addopen(&actions, 2, err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);

  const std::string tool = ToolPath();
  std::vector<char*> argv = MakeArgv(tool, args);
  std::vector<char*> env = MakeEnv(extraEnv);
  pid_t pid = 0;
  ToolResult result;
  if (posix_spawn(&pid, tool.c_str(), &actions, nullptr, argv.data(), env.data()) == 0) {
    result.exitCode = WaitFor(pid);
    result.out = ReadFile(out);
    result.err = ReadFile(err);
  }
  posix_spawn_file_actions_destroy(&actions);
  fs::remove_all(dir);
  return result;
}

ToolResult RunToolOnTerminal(const std::vector<std::string>& args, const std::string& input) {
  ToolResult result;
  const int master = posix_openpt(O_RDWR | O_NOCTTY);
  if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0) {
    if (master >= 0) close(master);
    return result;
  }
  const int slave = open(ptsname(master), O_RDWR | O_NOCTTY);
  if (slave < 0) {
    close(master);
    return result;
  }
  // No echo of what is typed and no CR before each LF: the output is then
  // exactly what the tool wrote.
  termios mode{};
  tcgetattr(slave, &mode);
  mode.c_lflag &= ~static_cast<tcflag_t>(ECHO);
  mode.c_oflag &= ~static_cast<tcflag_t>(ONLCR);
  tcsetattr(slave, TCSANOW, &mode);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  for (int fd = 0; fd < 3; ++fd) posix_spawn_file_actions_adddup2(&actions, slave, fd);
  posix_spawn_file_actions_addclose(&actions, master);

  const std::string tool = ToolPath();
  std::vector<char*> argv = MakeArgv(tool, args);
  std::vector<char*> env = MakeEnv({});
  pid_t pid = 0;
  const bool started =
      posix_spawn(&pid, tool.c_str(), &actions, nullptr, argv.data(), env.data()) == 0;
  posix_spawn_file_actions_destroy(&actions);
  if (started) {
    // Canonical mode keeps the lines until the tool reads them; the VEOF
    // character at the start of a line is the end of input.
    std::string typed = input + static_cast<char>(mode.c_cc[VEOF]);
    if (write(master, typed.data(), typed.size()) != static_cast<ssize_t>(typed.size()))
      result.err = "could not type the input";
  }
  close(slave);
  if (started) {
    char buffer[4096];
    for (;;) {
      pollfd ready{master, POLLIN, 0};
      if (poll(&ready, 1, 20000) <= 0) break;  // a tool that hangs fails the test
      const ssize_t n = read(master, buffer, sizeof buffer);
      if (n <= 0) break;  // EIO once the tool has closed the terminal
      result.out.append(buffer, static_cast<std::size_t>(n));
    }
    result.exitCode = WaitFor(pid);
  }
  close(master);
  return result;
}

}  // namespace vkt::test
