// Blending the pixels of a sprite into those of the image, written once for every instruction set.
#pragma once

#include <algorithm>
#include <type_traits>

#include "core/image_view.h"
#include "render/raster/blend_rule.h"
#include "render/raster/pixels.h"
#include "render/simd/lanes.h"

namespace brisel {

template <class Isa>
using FloatOf = typename Lanes<Isa>::Float;

/// The rule's result for pixels that are plotted. `value` lies in 0..M, M being full scale.
template <BlendRule kRule, class Pixels, class Isa>
Channels<Isa> blended(const Channels<Isa>& dst, FloatOf<Isa> value, const Channels<Isa>& pen) {
  using L = Lanes<Isa>;
  const auto limited = [](FloatOf<Isa> v) { return Pixels::limited(v); };
  const auto t = value / Pixels::kFullScale;
  if constexpr (kRule == BlendRule::Over) {
    const auto replace = (dst.alpha == 0.0f) | (value == Pixels::kFullScale);
    const auto over = [&](FloatOf<Isa> d, FloatOf<Isa> c) {
      return replace ? c : t * c + (1.0f - t) * d;
    };
    return {L::maximum(dst.alpha, value), over(dst.red, pen.red), over(dst.green, pen.green),
            over(dst.blue, pen.blue)};
  } else if constexpr (kRule == BlendRule::AddScaled) {
    const auto add = [&](FloatOf<Isa> d, FloatOf<Isa> c) { return limited(d + c * t); };
    return {limited(dst.alpha + value), add(dst.red, pen.red), add(dst.green, pen.green),
            add(dst.blue, pen.blue)};
  } else if constexpr (kRule == BlendRule::AddSolid || kRule == BlendRule::AddGlow) {
    const auto add = [&](FloatOf<Isa> d, FloatOf<Isa> c) { return limited(d + c); };
    Channels<Isa> out{limited(dst.alpha + value), add(dst.red, pen.red), add(dst.green, pen.green),
                      add(dst.blue, pen.blue)};
    if constexpr (kRule == BlendRule::AddGlow) {
      out.alpha = L::maximum(dst.alpha, L::maximum(L::maximum(out.red, out.green), out.blue));
    }
    return out;
  } else {
    const auto lighten = [&](FloatOf<Isa> d, FloatOf<Isa> c) {
      return limited(L::maximum(d, c * t));
    };
    Channels<Isa> out{dst.alpha, lighten(dst.red, pen.red), lighten(dst.green, pen.green),
                      lighten(dst.blue, pen.blue)};
    const auto brightest = L::maximum(L::maximum(out.red, out.green), out.blue);
    out.alpha = L::maximum(L::maximum(dst.alpha, value), brightest);
    return out;
  }
}

/// The same for rules that add whole pens of 8 bits: the colors' bytes are added as they lie.
template <BlendRule kRule, class Isa>
Pixels8<Isa> blendedBytes(const Pixels8<Isa>& before, const Shaded<Isa>& plot) {
  using L = Lanes<Isa>;
  const auto& pens = plot.pens;
  const auto pen = L::joinBytes(typename L::Int{}, L::toInt(pens.red), L::toInt(pens.green),
                                L::toInt(pens.blue));
  const auto sum = L::addBytes(before.words, pen);
  typename L::Word alpha;
  if constexpr (kRule == BlendRule::AddGlow) {
    const auto pair = L::maximumBytes(sum, sum >> 16);
    alpha = L::maximumBytes(pair, pair >> 8) & 255u;
  } else {
    const auto added = L::toFloat(L::template byteOf<0>(before.words)) + plot.value;
    alpha = __builtin_convertvector(L::toInt(L::minimum(added, L::splat(Pixels8<Isa>::kFullScale))),
                                    typename L::Word);
  }
  return {(sum & ~255u) | alpha};
}

/// Pixels that were `before`, with `plot` blended in.
template <BlendRule kRule, class Pixels, class Isa>
Pixels plotted(const Pixels& before, const Shaded<Isa>& plot) {
  if constexpr (std::is_same_v<Pixels, Pixels8<Isa>> &&
                (kRule == BlendRule::AddSolid || kRule == BlendRule::AddGlow)) {
    return Pixels::select(plot.value > 0.0f, blendedBytes<kRule>(before, plot), before);
  }
  const Channels<Isa> pen{FloatOf<Isa>{}, Pixels::penScale(plot.pens.red),
                          Pixels::penScale(plot.pens.green), Pixels::penScale(plot.pens.blue)};
  const auto channels = blended<kRule, Pixels, Isa>(before.channels(), plot.value, pen);
  const Pixels after = Pixels::pack(channels);
  if constexpr (kRule == BlendRule::AddScaled) return after;  // a value of 0 adds 0
  return Pixels::select(plot.value > 0.0f, after, before);
}

/// Calls `paint.template operator()<rule, pixel type>()`, so that sprites choose both once.
template <BlendRule kRule, class Isa, class Paint>
void withPixels(bool deep, const Paint& paint) {
  if (deep) {
    paint.template operator()<kRule, Pixels16<Isa>>();
  } else {
    paint.template operator()<kRule, Pixels8<Isa>>();
  }
}
template <class Isa, class Paint>
void withRule(BlendRule rule, bool deep, const Paint& paint) {
  switch (rule) {
    case BlendRule::Over:
      return withPixels<BlendRule::Over, Isa>(deep, paint);
    case BlendRule::AddScaled:
      return withPixels<BlendRule::AddScaled, Isa>(deep, paint);
    case BlendRule::AddSolid:
      return withPixels<BlendRule::AddSolid, Isa>(deep, paint);
    case BlendRule::AddGlow:
      return withPixels<BlendRule::AddGlow, Isa>(deep, paint);
    default:
      return withPixels<BlendRule::Lighten, Isa>(deep, paint);
  }
}

}  // namespace brisel
