#include "render/isa/sse2.h"

#include "render/isa/kernel_table.h"

namespace brisel {

const Kernels kSse2Kernels = kernelTable<Sse2>("sse2");

}  // namespace brisel
