#include "cli/support/memory.h"

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <string>

namespace fs = std::filesystem;

namespace cli {
namespace {

// The control group of this process, below the folder of all; empty for the uppermost, and where
// there are none.
fs::path groupOfThis(const fs::path& system) {
  std::ifstream groups(system / "proc/self/cgroup");
  for (std::string line; std::getline(groups, line);) {
    if (line.starts_with("0::/")) return line.substr(4);
  }
  return {};
}

}  // namespace

// Both settings are those of glibc.
void keepFreedMemory() {
  constexpr int kLargestKept = 32 << 20;  // bytes, the most that it takes
  constexpr int kMostKept = 1 << 30;
  mallopt(M_MMAP_THRESHOLD, kLargestKept);
  mallopt(M_TRIM_THRESHOLD, kMostKept);
  // For ffmpeg, unless the user knows better.
  setenv("MALLOC_MMAP_THRESHOLD_", std::to_string(kLargestKept).c_str(), 0);
  setenv("MALLOC_TRIM_THRESHOLD_", std::to_string(kMostKept).c_str(), 0);
}

std::uint64_t availableMemory(const fs::path& system) {
  auto memory = static_cast<std::uint64_t>(sysconf(_SC_PHYS_PAGES)) *
                static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
  const fs::path all = system / "sys/fs/cgroup";
  // A group may have what each above it may. In a container, they may not be where its own name
  // says.
  for (fs::path group = all / groupOfThis(system);; group = group.parent_path()) {
    std::uint64_t limit = 0;
    if (std::ifstream(group / "memory.max") >> limit) memory = std::min(memory, limit);
    if (group == all || group == group.root_path()) return memory;
  }
}

}  // namespace cli
