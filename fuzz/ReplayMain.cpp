// fuzz/ReplayMain.cpp: a plain main for the fuzz targets. It feeds every file
// named on the command line, or every file of the folders named there, to
// LLVMFuzzerTestOneInput once, so that ctest replays the saved inputs of a
// target on every build, with any compiler.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

int RunFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    std::fprintf(stderr, "cannot read %s\n", path.c_str());
    return 1;
  }
  std::vector<char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  int failures = 0;
  int files = 0;
  for (int i = 1; i < argc; ++i) {
    std::filesystem::path arg(argv[i]);
    if (std::filesystem::is_directory(arg)) {
      for (const auto& entry : std::filesystem::directory_iterator(arg)) {
        if (!entry.is_regular_file()) continue;
        failures += RunFile(entry.path());
        ++files;
      }
    } else {
      failures += RunFile(arg);
      ++files;
    }
  }
  std::printf("replayed %d inputs\n", files);
  return failures == 0 && files > 0 ? 0 : 1;
}
