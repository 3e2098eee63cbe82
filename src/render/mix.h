// The last step of a frame: the input under the stars.
#pragma once

#include "render/kernels.h"

namespace brisel {

/// Mixes the input into the output by `mode` (Normal or Add; anything else does nothing). Both are
/// of the output's format. The input counts as transparent black outside its own bounds.
inline void mixWithInput(const MutableImageView& output, const ImageView& input, MixMode mode) {
  activeKernels().mix(output, input, mode);
}

}  // namespace brisel
