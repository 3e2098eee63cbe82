// The table of kernels of one instruction set, for the file that is compiled for it.
#pragma once

#include "render/kernels.h"
#include "render/raster/mix.h"
#include "render/raster/runs.h"
#include "render/sprites/blics.h"
#include "render/sprites/cross.h"
#include "render/sprites/glow.h"
#include "render/sprites/rays.h"

namespace brisel {

template <class Isa>
constexpr Kernels kernelTable(const char* name) {
  static_assert(Isa::kLanes <= kMostLanes);
  return {name,           Isa::kLanes,   paintGlow<Isa>,   paintBlics<Isa>, paintCross<Isa>,
          paintRays<Isa>, paintRun<Isa>, mixWithInput<Isa>};
}

}  // namespace brisel
