// The table of kernels of one instruction set, for the file that is compiled for it.
#pragma once

#include "render/blics_star.h"
#include "render/cross_star.h"
#include "render/glow_star.h"
#include "render/isa/kernel_tables.h"
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

}  // namespace brisel
