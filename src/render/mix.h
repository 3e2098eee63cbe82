// The last step of a frame: the input under the stars.
#pragma once

#include "core/render_settings.h"
#include "render/kernels.h"

namespace brisel {

/// Mixes the input layer into the output by `mode` (Normal or Add; anything else does nothing).
/// The input counts as transparent black outside its own bounds.
inline void mixWithInput(const RenderSettings& settings, MixMode mode) {
  activeKernels().mix(settings, mode);
}

}  // namespace brisel
