// The integer hue-lightness-saturation model of the rainbow recolouring: hue, lightness and
// saturation run from 0 to 240, red, green and blue from 0 to 255.
#pragma once

#include <cstdint>

#include "core/color.h"

namespace brisel {

struct Hls {
  std::int32_t hue = 0;
  std::int32_t lightness = 0;
  std::int32_t saturation = 0;
};

Hls rgbToHls(Rgb color);

/// The hue may lie outside 0..240 and is folded back.
Rgb hlsToRgb(Hls color);

/// The one pen of a sprite that is recoloured without a shift of hue: at least half light, and of
/// at least `leastSaturation`.
Rgb recolouredEvenly(Rgb color, std::int32_t leastSaturation);

/// One channel of hlsToRgb between the bounds `m1` and `m2`, 0..240.
std::int32_t hueToChannel(std::int32_t m1, std::int32_t m2, std::int32_t hue);

}  // namespace brisel
