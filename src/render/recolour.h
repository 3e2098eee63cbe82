// The per-pixel "rainbow": the pen's hue turns with the distance from the sprite's centre.
#pragma once

#include "engine/numbers.h"
#include "render/hls.h"

namespace brisel {

/// The pen for a pixel whose hue is the base hue plus `hueShift`.
inline Rgb recolour(const Hls& base, float hueShift, float lightness, float saturation) {
  return hlsToRgb({truncToInt(static_cast<float>(base.hue) + hueShift), truncToInt(lightness),
                   truncToInt(saturation)});
}

}  // namespace brisel
