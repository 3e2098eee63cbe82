// The "rainbow": the color of a pixel is turned in the hue-lightness-saturation model, by a measure
// that grows with the distance from the sprite's center. Hue, lightness and saturation run from 0
// to 240, red, green and blue from 0 to 255, all as whole numbers.
#pragma once

#include <cstdint>

#include "core/color.h"
#include "core/numbers.h"
#include "render/raster/pixels.h"
#include "render/simd/lanes.h"

namespace brisel {

struct Hls {
  std::int32_t hue = 0;
  std::int32_t lightness = 0;
  std::int32_t saturation = 0;
};

Hls rgbToHls(Rgb color);

/// The hue may lie outside 0..240 and is folded back.
Rgb hlsToRgb(Hls color);

/// The one color of a sprite that is recolored without a shift of hue: at least half light, and of
/// at least `leastSaturation`.
Rgb recoloredEvenly(Rgb color, std::int32_t leastSaturation);

/// One channel of hlsToRgb between the bounds `m1` and `m2`, 0..240.
std::int32_t hueToChannel(std::int32_t m1, std::int32_t m2, std::int32_t hue);

/// The same conversions for several pixels at once. Values are whole numbers held as floats, where
/// every quotient below truncates to the exact integer result; they equal the integer conversions
/// for every color.
template <class Isa>
struct HlsLanes {
  using L = Lanes<Isa>;
  using Float = typename L::Float;

  Float hue, lightness, saturation;

  static HlsLanes fromRgb(Float red, Float green, Float blue) {
    const Float most = L::maximum(L::maximum(red, green), blue);
    const Float least = L::minimum(L::minimum(red, green), blue);
    const Float sum = most + least;
    const Float delta = most - least;
    const Float lightness = scaled(sum, 240.0f / 510.0f, L::splat(255.5f / 510.0f));
    const auto gray = delta == 0.0f;
    const Float range = lightness <= 120.0f ? sum : 510.0f - sum;
    const Float safeRange = gray ? L::splat(1.0f) : range;
    const Float saturation =
        L::truncated(L::fused(range, L::splat(0.5f), delta * 240.0f) / safeRange);

    const Float perDelta = 1.0f / (gray ? L::splat(1.0f) : delta);
    const Float fortieth = 40.0f * perDelta;
    const Float half = L::fused(delta, L::splat(0.5f), L::splat(0.25f)) * perDelta;
    const auto share = [&](Float channel) { return scaled(most - channel, fortieth, half); };
    const Float r = share(red);
    const Float g = share(green);
    const Float b = share(blue);
    Float hue = red == most ? b - g : (green == most ? 80.0f + r - b : 160.0f + g - r);
    hue = hue < 0.0f ? hue + 240.0f : hue;
    return {gray ? L::splat(160.0f) : hue, lightness, gray ? Float{} : saturation};
  }

  /// Any hue that is a whole number of magnitude below 2^22; lightness and saturation 0..240.
  void toRgb(Float& red, Float& green, Float& blue) const {
    // The channels lie `swing` around the lightness, at most.
    const Float part = scaled(lightness * saturation, kPer240, L::splat(120.5f * kPer240));
    const Float swing = lightness <= 120.0f ? part : saturation - part;
    // Whole turns change nothing, and 240 is as good as 0.
    const Float turn = L::fused(L::splat(-240.0f), L::floored(hue * kPer240), hue);
    const Float bias = saturation == 0.0f ? L::splat(0.5f * kPer240) : L::splat(120.5f * kPer240);
    constexpr float kPerLevel = 255.0f / 240.0f;
    const Float least = L::fused(lightness - swing, L::splat(kPerLevel), bias);
    const Float slope = 2.0f / 40.0f * swing;
    const auto channel = [&](Float x) {
      // Rises over a sixth of the circle, holds for two, falls over one.
      const Float level = scaled(L::clamp(x, 0.0f, 40.0f), slope, L::splat(20.5f / 40.0f));
      return scaled(level, kPerLevel, least);
    };
    red = channel(L::absolute(turn - 120.0f) - 40.0f);
    green = channel(80.0f - L::absolute(turn - 80.0f));
    blue = channel(80.0f - L::absolute(turn - 160.0f));
  }

 private:
  static constexpr float kPer240 = 1.0f / 240.0f;

  /// A quotient of integers, of which half the last unit or so is added to the numerator: so it is
  /// far enough from the next integer for a reciprocal's rounding, and for a fused multiply-add.
  static Float scaled(Float v, Float factor, Float offset) {
    return L::truncated(L::fused(v, factor, offset));
  }
  static Float scaled(Float v, float factor, Float offset) {
    return scaled(v, L::splat(factor), offset);
  }
};

/// A color for each lane in the model, before truncation: any hue, the others 0..240.
template <class Isa>
struct Turned {
  typename Lanes<Isa>::Float hue, lightness, saturation;
};

/// What shading of a recolored pixel begins with.
template <class Isa>
struct TurnedShade {
  typename Lanes<Isa>::Float value;
  Turned<Isa> color;
};

/// recolored() for hues that wrap thousands of times: those of a ray far shorter than a pixel.
template <class Isa>
[[gnu::noinline, gnu::cold]] Pens<Isa> recoloredSlowly(Turned<Isa> color) {
  Pens<Isa> pens;
  for (int lane = 0; lane < Lanes<Isa>::kCount; ++lane) {
    const Rgb pen = hlsToRgb({truncToInt(color.hue[lane]), truncToInt(color.lightness[lane]),
                              truncToInt(color.saturation[lane])});
    pens.red[lane] = static_cast<float>(pen.red);
    pens.green[lane] = static_cast<float>(pen.green);
    pens.blue[lane] = static_cast<float>(pen.blue);
  }
  return pens;
}

/// The pens of a color whose hue, lightness and saturation are truncated first. Not inlined: the
/// loops that call it exist once for each rule and depth.
template <class Isa>
[[gnu::noinline]] Pens<Isa> recolored(const Turned<Isa>& color) {
  using L = Lanes<Isa>;
  constexpr float kExactHue = 4194304.0f;
  if (L::anyNotBelow(L::absolute(color.hue), L::splat(kExactHue))) {
    return recoloredSlowly<Isa>(color);
  }
  Pens<Isa> pens;
  HlsLanes<Isa>{L::truncated(color.hue), L::truncated(color.lightness),
                L::truncated(color.saturation)}
      .toRgb(pens.red, pens.green, pens.blue);
  return pens;
}

}  // namespace brisel
