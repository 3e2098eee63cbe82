#include "cli/support/processors.h"

#include <sched.h>

#include <algorithm>
#include <thread>

namespace cli {

int usableProcessors() {
  cpu_set_t usable;
  if (sched_getaffinity(0, sizeof usable, &usable) == 0) return std::max(CPU_COUNT(&usable), 1);
  // More processors than the set has room for.
  return std::max(static_cast<int>(std::thread::hardware_concurrency()), 1);
}

}  // namespace cli
