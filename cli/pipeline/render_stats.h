// What a render took, and which of the steps that run side by side it waited for.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace cli {

struct StageTime {
  std::string name;
  double busySeconds;
  int threads = 1;  // that share the work
};

// Prints a table of the stages that took time, with their shares of the whole.
void printRenderStats(std::FILE* stream, const std::vector<StageTime>& stages, int frames,
                      double seconds);

}  // namespace cli
