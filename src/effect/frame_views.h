// What surrounds one frame: its images, and how it is to be painted.
#pragma once

#include <cstdint>

#include "core/image_view.h"

namespace brisel {

class Painter;

/// Borrowed for the call that it is given to.
struct FrameViews {
  MutableImageView output{};    // Argb8 or Argb16; color is not multiplied by alpha
  ImageView input{};            // of the output's format and of any size; may be empty
  std::int32_t layerWidth = 0;  // of the layer at full resolution, pixels; 0: the output's
  bool highQuality = true;      // smooth edges of rays
  Painter* painter = nullptr;   // null: one that paints on the calling thread alone
};

}  // namespace brisel
