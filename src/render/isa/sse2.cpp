#include "render/isa/sse2.h"

#include "render/isa/kernels_of.h"

namespace brisel {

const Kernels kSse2Kernels = kernelsOf<Sse2>("sse2");

}  // namespace brisel
