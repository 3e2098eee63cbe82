#include "render/simd/avx2.h"

#include "render/simd/kernel_table.h"

namespace brisel {

const Kernels kAvx2Kernels = kernelTable<Avx2>("avx2");

}  // namespace brisel
