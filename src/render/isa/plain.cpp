#include "render/isa/plain.h"

#include "render/isa/kernels_of.h"

namespace brisel {

const Kernels kPlainKernels = kernelsOf<Plain>("plain");

}  // namespace brisel
