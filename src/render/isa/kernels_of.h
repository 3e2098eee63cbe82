// The table of kernels of one instruction set, for the file that is compiled for it.
#pragma once

#include "render/blics_star.h"
#include "render/cross_star.h"
#include "render/glow_star.h"
#include "render/kernels.h"
#include "render/mix_kernels.h"
#include "render/ray_star.h"

namespace brisel {

template <class Isa>
constexpr Kernels kernelsOf(const char* name) {
  return {name,
          Isa::kLanes,
          paintRayStar<Isa>,
          paintCrossStar<Isa>,
          paintGlowStar<Isa>,
          paintBlicsStar<Isa>,
          plotValues<Isa>,
          mixLayers<Isa>};
}

extern const Kernels kPlainKernels;
extern const Kernels kSse2Kernels;
extern const Kernels kAvx2Kernels;
extern const Kernels kAvx512Kernels;

}  // namespace brisel
