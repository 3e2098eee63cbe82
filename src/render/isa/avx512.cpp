#include "render/isa/avx512.h"

#include "render/isa/kernel_table.h"

namespace brisel {

const Kernels kAvx512Kernels = kernelTable<Avx512>("avx512");

}  // namespace brisel
