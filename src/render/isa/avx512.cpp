#include "render/isa/avx512.h"

#include "render/isa/kernels_of.h"

namespace brisel {

const Kernels kAvx512Kernels = kernelsOf<Avx512>("avx512");

}  // namespace brisel
