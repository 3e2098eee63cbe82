// How a sprite's color comes into the pixels under it.
#pragma once

#include <cstdint>

#include "core/color.h"

namespace brisel {

/// With c the sprite's color, v its value at the pixel on the scale of the image, t = v / full
/// scale, and d what the pixel was. All stop at full scale.
enum class BlendRule : std::uint8_t {
  Over,       // colors c t + d (1 - t), or c where alpha was 0; alpha the greater of v and its own
  AddScaled,  // colors d + c t, alpha the sum
  AddSolid,   // colors d + c, alpha the sum
  AddGlow,    // colors d + c, alpha at least the brightest color
  Lighten     // colors the greater of d and c t, alpha at least the brightest color
};

/// Neighboring pixels of one color: `values` holds the intensity of each, up to the image's full
/// scale, for a whole number of lanes. The pixels lie within the image.
struct RunSpec {
  BlendRule rule;
  Rgb color;
  std::int32_t x, y, count;
  const float* values;
};

}  // namespace brisel
