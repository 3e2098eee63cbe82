#include "render/isa/avx2.h"

#include "render/isa/kernels_of.h"

namespace brisel {

const Kernels kAvx2Kernels = kernelsOf<Avx2>("avx2");

}  // namespace brisel
