// The tables of all instruction sets that the module is compiled for.
#pragma once

#include "render/kernels.h"

namespace brisel {

extern const Kernels kPlainKernels;
extern const Kernels kSse2Kernels;
extern const Kernels kAvx2Kernels;
extern const Kernels kAvx512Kernels;

}  // namespace brisel
