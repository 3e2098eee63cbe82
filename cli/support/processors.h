// How much may be done at once.
#pragma once

#include <functional>
#include <thread>

namespace cli {

// The processors that this process may use, at least 1; `taskset` and containers may leave it fewer
// than the machine has.
int usableProcessors();

// Throws WorkError when the system gives this process no more threads.
std::jthread startThread(std::function<void()> work);

}  // namespace cli
