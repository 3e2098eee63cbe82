// How much may be done at once.
#pragma once

namespace cli {

// The processors that this process may use, at least 1; `taskset` and containers may leave it fewer
// than the machine has.
int usableProcessors();

// How many of so many threads the system would give this process now, besides those that it has.
int threadsToBeHad(int wanted);

}  // namespace cli
