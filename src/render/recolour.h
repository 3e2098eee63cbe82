// The per-pixel "rainbow": the pen's hue turns with the distance from the sprite's centre.
#pragma once

#include "core/numbers.h"
#include "render/hls_lanes.h"
#include "render/pixel_lanes.h"

namespace brisel {

/// The pens of hue `baseHue` + `hueShift`, `lightness` and `saturation`, all three truncated.
/// Lightness and saturation lie in 0..240. Kept out of the loops it is called from, which there is
/// one of for each rule and depth.
template <class Isa>
[[gnu::noinline]] Pens<Isa> recoloured(typename Lanes<Isa>::Float baseHue,
                                       typename Lanes<Isa>::Float hueShift,
                                       typename Lanes<Isa>::Float lightness,
                                       typename Lanes<Isa>::Float saturation) {
  using L = Lanes<Isa>;
  constexpr float kExactHue = 4194304.0f;
  const typename L::Float hue = baseHue + hueShift;
  Pens<Isa> pens;
  if (L::any(!(L::absolute(hue) < kExactHue))) {
    // A ray far shorter than a pixel: its hue wraps thousands of times.
    for (int lane = 0; lane < L::kCount; ++lane) {
      const Rgb pen = hlsToRgb(
          {truncToInt(hue[lane]), truncToInt(lightness[lane]), truncToInt(saturation[lane])});
      pens.red[lane] = static_cast<float>(pen.red);
      pens.green[lane] = static_cast<float>(pen.green);
      pens.blue[lane] = static_cast<float>(pen.blue);
    }
    return pens;
  }
  HlsLanes<Isa>{L::truncated(hue), L::truncated(lightness), L::truncated(saturation)}.toRgb(
      pens.red, pens.green, pens.blue);
  return pens;
}

}  // namespace brisel
