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

  static HlsLanes splat(const Hls& color) {
    return {L::splat(static_cast<float>(color.hue)), L::splat(static_cast<float>(color.lightness)),
            L::splat(static_cast<float>(color.saturation))};
  }

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
    hue = hue > 240.0f ? hue - 240.0f : hue;
    return {grey ? L::splat(160.0f) : hue, lightness, grey ? Float{} : saturation};
  }

  /// Any hue that is a whole number of magnitude below 2^22; lightness and saturation 0..240.
  void toRgb(Float& red, Float& green, Float& blue) const {
    const Float low = truncated((lightness * (240.0f + saturation) + 120.5f) * kPer240);
    const Float high =
        lightness + saturation - truncated((lightness * saturation + 120.5f) * kPer240);
    const Float m2 = lightness <= 120.0f ? low : high;
    const Float m1 = 2.0f * lightness - m2;
    const Float turn = hue - 240.0f * truncated(hue / 240.0f);
    const Float grey = truncated((lightness * 255.0f + 0.5f) * kPer240);
    const auto flat = saturation == 0.0f;
    const auto channel = [&](Float h) {
      h = h < 0.0f ? h + 240.0f : h;
      h = h > 240.0f ? h - 240.0f : h;
      // Rises over a sixth of the circle, holds for two, falls over one.
      const Float x = L::minimum(L::maximum(L::minimum(h, 160.0f - h), Float{}), L::splat(40.0f));
      const Float level = m1 + truncated(((m2 - m1) * x + 20.5f) * 0.025f);
      const Float value = truncated((level * 255.0f + 120.5f) * kPer240);
      return flat ? grey : value;
    };
    red = channel(turn + 80.0f);
    green = channel(turn);
    blue = channel(turn - 80.0f);
  }

 private:
  // Half a unit more in the numerator keeps a reciprocal's rounding away from the next integer.
  static constexpr float kPer240 = 1.0f / 240.0f;

  static Float truncated(Float v) { return L::truncated(v); }
};

}  // namespace brisel
