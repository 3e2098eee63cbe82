// Runs a target over known inputs, in builds without libFuzzer: every file in the folders given.
// Names each before it runs, so that the last name is that of the input at fault.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "target.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> filesIn(const fs::path& folder) {
  std::vector<fs::path> files;
  if (!fs::is_directory(folder))
    return files;  // a target that nothing ever broke has no regressions
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

/// Without room behind the last byte, so that a sanitizer sees a read too far.
std::vector<std::uint8_t> contentOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::vector<char> read{std::istreambuf_iterator<char>(stream), {}};
  return {read.begin(), read.end()};
}

}  // namespace

int main(int argc, char** argv) {
  int count = 0;
  for (int i = 1; i < argc; ++i) {
    for (const fs::path& file : filesIn(argv[i])) {
      std::printf("%s\n", file.c_str());
      std::fflush(stdout);
      fuzz::runInput(contentOf(file));
      ++count;
    }
  }
  if (count > 0) return EXIT_SUCCESS;
  std::fprintf(stderr, "no inputs; usage: %s FOLDER...\n", argv[0]);
  return EXIT_FAILURE;
}
