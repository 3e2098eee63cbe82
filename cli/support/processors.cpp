#include "cli/support/processors.h"

#include <sched.h>

#include <algorithm>
#include <system_error>
#include <utility>

#include "cli/support/errors.h"

namespace cli {

int usableProcessors() {
  cpu_set_t usable;
  if (sched_getaffinity(0, sizeof usable, &usable) == 0) return std::max(CPU_COUNT(&usable), 1);
  // More processors than the set has room for.
  return std::max(static_cast<int>(std::thread::hardware_concurrency()), 1);
}

std::jthread startThread(std::function<void()> work) {
  try {
    return std::jthread(std::move(work));
  } catch (const std::system_error&) {
    throw WorkError(
        "no thread can be started: the limits of processes (ulimit -u) or memory (ulimit -v) are "
        "reached");
  }
}

}  // namespace cli
