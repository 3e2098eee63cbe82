#include "render/simd/avx512.h"

#include "render/simd/kernel_table.h"

namespace brisel {

const Kernels kAvx512Kernels = kernelTable<Avx512>("avx512");

}  // namespace brisel
