#include "render/simd/plain.h"

#include "render/simd/kernel_table.h"

namespace brisel {

const Kernels kPlainKernels = kernelTable<Plain>("plain");

}  // namespace brisel
