// How much may be done at once.
#pragma once

namespace cli {

// The processors that this process may use, at least 1; `taskset` and containers may leave it fewer
// than the machine has.
int usableProcessors();

}  // namespace cli
