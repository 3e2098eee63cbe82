#include "cli/support/processors.h"

#include <sched.h>

#include <algorithm>
#include <latch>
#include <system_error>
#include <thread>
#include <vector>

namespace cli {

int usableProcessors() {
  cpu_set_t usable;
  if (sched_getaffinity(0, sizeof usable, &usable) == 0) return std::max(CPU_COUNT(&usable), 1);
  // More processors than the set has room for.
  return std::max(static_cast<int>(std::thread::hardware_concurrency()), 1);
}

int threadsToBeHad(int wanted) {
  std::latch allTried(1);
  std::vector<std::jthread> threads;
  try {
    for (int i = 0; i < wanted; ++i) threads.emplace_back([&] { allTried.wait(); });
  } catch (const std::system_error&) {  // the limits of processes or memory are reached
  }
  allTried.count_down();
  return static_cast<int>(threads.size());
}

}  // namespace cli
