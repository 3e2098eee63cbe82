#include "cli/support/memory.h"

#include <malloc.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace cli {

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

std::uint64_t machineMemory() {
  return static_cast<std::uint64_t>(sysconf(_SC_PHYS_PAGES)) *
         static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

}  // namespace cli
