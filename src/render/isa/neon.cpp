#include "render/isa/neon.h"

#include "render/isa/kernel_table.h"

namespace brisel {

const Kernels kNeonKernels = kernelTable<Neon>("neon");

}  // namespace brisel
