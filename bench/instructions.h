// The instruction set that a benchmark is told to measure.
#pragma once

#include "render/kernels.h"

namespace bench {

/// Takes `--instructions=NAME` out of the arguments; without it, the widest that there is. Ends the
/// program when the processor has none of that name.
const brisel::Kernels& chosenKernels(int& argc, char** argv);

}  // namespace bench
