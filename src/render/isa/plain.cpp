#include "render/isa/plain.h"

#include "render/isa/kernel_table.h"

namespace brisel {

const Kernels kPlainKernels = kernelTable<Plain>("plain");

}  // namespace brisel
