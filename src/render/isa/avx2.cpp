#include "render/isa/avx2.h"

#include "render/isa/kernel_table.h"

namespace brisel {

const Kernels kAvx2Kernels = kernelTable<Avx2>("avx2");

}  // namespace brisel
