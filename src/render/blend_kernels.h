// The blend rules, written once for every instruction set.
#pragma once

#include "render/blend.h"
#include "render/pixel_lanes.h"
#include "render/simd.h"

namespace brisel {

template <class Isa>
using FloatOf = typename Lanes<Isa>::Float;

/// The rule's result for pixels that are plotted. `value` lies in (0, M], M being full scale.
template <BlendRule kRule, class Pixels, class Isa>
Channels<Isa> blended(const Channels<Isa>& dst, FloatOf<Isa> value, const Channels<Isa>& pen) {
  using L = Lanes<Isa>;
  const auto full = L::splat(Pixels::kFullScale);
  const auto t = value / Pixels::kFullScale;
  if constexpr (kRule == BlendRule::Over) {
    const auto replace = (dst.alpha == 0.0f) | (value == Pixels::kFullScale);
    const auto over = [&](FloatOf<Isa> d, FloatOf<Isa> c) {
      return replace ? c : t * c + (1.0f - t) * d;
    };
    return {L::maximum(dst.alpha, value), over(dst.red, pen.red), over(dst.green, pen.green),
            over(dst.blue, pen.blue)};
  } else if constexpr (kRule == BlendRule::AddScaled) {
    const auto add = [&](FloatOf<Isa> d, FloatOf<Isa> c) { return L::minimum(d + c * t, full); };
    return {L::minimum(dst.alpha + value, full), add(dst.red, pen.red), add(dst.green, pen.green),
            add(dst.blue, pen.blue)};
  } else if constexpr (kRule == BlendRule::AddSolid || kRule == BlendRule::AddGlow) {
    const auto add = [&](FloatOf<Isa> d, FloatOf<Isa> c) { return L::minimum(d + c, full); };
    Channels<Isa> out{L::minimum(dst.alpha + value, full), add(dst.red, pen.red),
                      add(dst.green, pen.green), add(dst.blue, pen.blue)};
    if constexpr (kRule == BlendRule::AddGlow) {
      out.alpha = L::maximum(dst.alpha, L::maximum(L::maximum(out.red, out.green), out.blue));
    }
    return out;
  } else {
    const auto lighten = [&](FloatOf<Isa> d, FloatOf<Isa> c) {
      return L::minimum(L::maximum(d, c * t), full);
    };
    Channels<Isa> out{dst.alpha, lighten(dst.red, pen.red), lighten(dst.green, pen.green),
                      lighten(dst.blue, pen.blue)};
    const auto brightest = L::maximum(L::maximum(out.red, out.green), out.blue);
    out.alpha = L::maximum(L::maximum(dst.alpha, value), brightest);
    return out;
  }
}

/// Blends the first `count` lanes into the pixels.
template <BlendRule kRule, class Pixels, class Isa>
void blendLanes(std::uint8_t* pixels, int count, FloatOf<Isa> value, const Channels<Isa>& pen) {
  using L = Lanes<Isa>;
  const Pixels before = Pixels::load(pixels, count);
  // Lanes that are not plotted get a harmless value, so that all of them convert within range.
  const auto safe = L::maximum(value, FloatOf<Isa>{});
  const Pixels after = Pixels::pack(blended<kRule, Pixels, Isa>(before.channels(), safe, pen));
  if constexpr (kRule == BlendRule::AddScaled) {
    after.store(pixels, count);  // nothing, scaled, adds nothing
  } else {
    Pixels::select(value > 0.0f, after, before).store(pixels, count);
  }
}

template <class Pixels, class Isa>
Channels<Isa> penChannels(FloatOf<Isa> red, FloatOf<Isa> green, FloatOf<Isa> blue) {
  return {FloatOf<Isa>{}, Pixels::penScale(red), Pixels::penScale(green), Pixels::penScale(blue)};
}

/// Calls `blend(i, lanes)` for all pixels of a run, whole vectors first.
template <class Isa, class Blend>
void forRun(std::int32_t count, Blend blend) {
  constexpr int kLanes = Lanes<Isa>::kCount;
  std::int32_t i = 0;
  for (; i + kLanes <= count; i += kLanes) blend(i, kLanes);
  if constexpr (kLanes > 1) {
    if (i < count) blend(i, count - i);
  }
}

template <BlendRule kRule, class Pixels, class Isa>
void blendWithPen(std::uint8_t* pixels, std::int32_t count, const ShadedRun& run, Rgb pen) {
  using L = Lanes<Isa>;
  const auto splat = [](std::int32_t channel) { return L::splat(static_cast<float>(channel)); };
  const auto channels = penChannels<Pixels, Isa>(splat(pen.red), splat(pen.green), splat(pen.blue));
  forRun<Isa>(count, [&](std::int32_t i, int lanes) {
    blendLanes<kRule, Pixels, Isa>(pixels + i * Pixels::kBytes, lanes, L::load(run.value + i),
                                   channels);
  });
}

template <BlendRule kRule, class Pixels, class Isa>
void blendWithPens(std::uint8_t* pixels, std::int32_t count, const ShadedRun& run) {
  using L = Lanes<Isa>;
  forRun<Isa>(count, [&](std::int32_t i, int lanes) {
    const auto channels = penChannels<Pixels, Isa>(L::toFloat(L::load(run.red + i)),
                                                   L::toFloat(L::load(run.green + i)),
                                                   L::toFloat(L::load(run.blue + i)));
    blendLanes<kRule, Pixels, Isa>(pixels + i * Pixels::kBytes, lanes, L::load(run.value + i),
                                   channels);
  });
}

template <BlendRule kRule, class Isa>
BlendKernels blendKernelsOf(bool deep) {
  using Shallow = Pixels8<Isa>;
  using Deep = Pixels16<Isa>;
  if (deep) return {blendWithPen<kRule, Deep, Isa>, blendWithPens<kRule, Deep, Isa>};
  return {blendWithPen<kRule, Shallow, Isa>, blendWithPens<kRule, Shallow, Isa>};
}

template <class Isa>
BlendKernels blendKernels(BlendRule rule, bool deep) {
  switch (rule) {
    case BlendRule::Over:
      return blendKernelsOf<BlendRule::Over, Isa>(deep);
    case BlendRule::AddScaled:
      return blendKernelsOf<BlendRule::AddScaled, Isa>(deep);
    case BlendRule::AddSolid:
      return blendKernelsOf<BlendRule::AddSolid, Isa>(deep);
    case BlendRule::AddGlow:
      return blendKernelsOf<BlendRule::AddGlow, Isa>(deep);
    default:
      return blendKernelsOf<BlendRule::Lighten, Isa>(deep);
  }
}

}  // namespace brisel
