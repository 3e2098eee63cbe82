// The hue-lightness-saturation conversions of hls.h for several pixels at once. Values are whole
// numbers held as floats, where every product and quotient below is exact or truncates to the exact
// integer result; they equal the integer conversions for every colour.
#pragma once

#include "render/hls.h"
#include "render/simd.h"

namespace brisel {

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
    const Float lightness = truncated((sum * 240.0f + 255.0f) / 510.0f);
    const auto grey = delta == 0.0f;
    const Float range = lightness <= 120.0f ? sum : 510.0f - sum;
    const Float safeRange = grey ? L::splat(1.0f) : range;
    const Float saturation = truncated((delta * 240.0f + truncated(range * 0.5f)) / safeRange);

    const Float safeDelta = grey ? L::splat(1.0f) : delta;
    const Float half = truncated(delta * 0.5f);
    const auto share = [&](Float channel) {
      return truncated(((most - channel) * 40.0f + half) / safeDelta);
    };
    const Float r = share(red);
    const Float g = share(green);
    const Float b = share(blue);
    Float hue = red == most ? b - g : (green == most ? 80.0f + r - b : 160.0f + g - r);
    hue = hue < 0.0f ? hue + 240.0f : hue;
    return {grey ? L::splat(160.0f) : hue, lightness, grey ? Float{} : saturation};
  }

  /// Any hue that is a whole number of magnitude below 2^22; lightness and saturation 0..240.
  void toRgb(Float& red, Float& green, Float& blue) const {
    // The channels lie `swing` around the lightness, at most.
    const Float part = truncated((lightness * saturation + 120.5f) * kPer240);
    const Float swing = lightness <= 120.0f ? part : saturation - part;
    const Float least = lightness - swing;
    // Whole turns change nothing, and 240 is as good as 0.
    Float turn = hue - 240.0f * truncated(hue * kPer240);
    turn = turn < 0.0f ? turn + 240.0f : turn;
    const Float bias = saturation == 0.0f ? L::splat(0.5f) : L::splat(120.5f);
    const auto channel = [&](Float x) {
      // Rises over a sixth of the circle, holds for two, falls over one.
      x = L::clamp(x, 0.0f, 40.0f);
      const Float level = least + truncated((2.0f * swing * x + 20.5f) * 0.025f);
      return truncated((level * 255.0f + bias) * kPer240);
    };
    red = channel(L::maximum(80.0f - turn, turn - 160.0f));
    green = channel(80.0f - L::absolute(turn - 80.0f));
    blue = channel(80.0f - L::absolute(turn - 160.0f));
  }

 private:
  // Half a unit more in the numerator keeps a reciprocal's rounding away from the next integer.
  static constexpr float kPer240 = 1.0f / 240.0f;

  static Float truncated(Float v) { return L::truncated(v); }
};

}  // namespace brisel
