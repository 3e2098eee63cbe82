// The per-pixel "rainbow": the pen's hue turns with the distance from the sprite's centre.
#pragma once

#include <cmath>
#include <cstdint>

#include "engine/numbers.h"
#include "render/blend.h"
#include "render/hls_lanes.h"

namespace brisel {

/// Stores the pens of pixels `i`, i + 1 ... of the run: hue `baseHue` + `hueShift`, all three
/// truncated. Lightness and saturation lie in 0..240.
template <class Isa>
void storeRecoloured(ShadedRun& run, std::int32_t i, typename Lanes<Isa>::Float baseHue,
                     typename Lanes<Isa>::Float hueShift, typename Lanes<Isa>::Float lightness,
                     typename Lanes<Isa>::Float saturation) {
  using L = Lanes<Isa>;
  constexpr float kExactHue = 4194304.0f;
  const typename L::Float hue = baseHue + hueShift;
  bool exact = true;
  for (int lane = 0; lane < L::kCount; ++lane) exact &= std::fabs(hue[lane]) < kExactHue;
  if (!exact) {  // a ray far shorter than a pixel: its hue wraps thousands of times
    for (int lane = 0; lane < L::kCount; ++lane) {
      const Rgb pen = hlsToRgb(
          {truncToInt(hue[lane]), truncToInt(lightness[lane]), truncToInt(saturation[lane])});
      run.red[i + lane] = pen.red;
      run.green[i + lane] = pen.green;
      run.blue[i + lane] = pen.blue;
    }
    return;
  }
  const auto whole = [](typename L::Float v) { return L::toFloat(L::toInt(v)); };
  typename L::Int red, green, blue;
  HlsLanes<Isa>{whole(hue), whole(lightness), whole(saturation)}.toRgb(red, green, blue);
  L::store(run.red + i, red);
  L::store(run.green + i, green);
  L::store(run.blue + i, blue);
}

}  // namespace brisel
