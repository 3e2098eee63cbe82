#include "render/blend.h"

#include <algorithm>

#include "render/pixel_lanes.h"
#include "render/simd.h"

namespace brisel {
namespace {

template <int kLanes>
using Float = typename Lanes<kLanes>::Float;

/// The rule's result for pixels that are plotted. `value` lies in (0, M], M being full scale.
template <BlendRule kRule, class Pixels, int kLanes>
Channels<kLanes> blended(const Channels<kLanes>& dst, Float<kLanes> value,
                         const Channels<kLanes>& pen) {
  using L = Lanes<kLanes>;
  const auto full = L::splat(Pixels::kFullScale);
  const auto t = value / Pixels::kFullScale;
  if constexpr (kRule == BlendRule::Over) {
    const auto replace = (dst.alpha == 0.0f) | (value == Pixels::kFullScale);
    const auto over = [&](Float<kLanes> d, Float<kLanes> c) {
      return replace ? c : t * c + (1.0f - t) * d;
    };
    return {L::maximum(dst.alpha, value), over(dst.red, pen.red), over(dst.green, pen.green),
            over(dst.blue, pen.blue)};
  } else if constexpr (kRule == BlendRule::AddScaled) {
    const auto add = [&](Float<kLanes> d, Float<kLanes> c) { return L::minimum(d + c * t, full); };
    return {L::minimum(dst.alpha + value, full), add(dst.red, pen.red), add(dst.green, pen.green),
            add(dst.blue, pen.blue)};
  } else if constexpr (kRule == BlendRule::AddSolid || kRule == BlendRule::AddGlow) {
    const auto add = [&](Float<kLanes> d, Float<kLanes> c) { return L::minimum(d + c, full); };
    Channels<kLanes> out{L::minimum(dst.alpha + value, full), add(dst.red, pen.red),
                         add(dst.green, pen.green), add(dst.blue, pen.blue)};
    if constexpr (kRule == BlendRule::AddGlow) {
      out.alpha = L::maximum(dst.alpha, L::maximum(L::maximum(out.red, out.green), out.blue));
    }
    return out;
  } else {
    const auto lighten = [&](Float<kLanes> d, Float<kLanes> c) {
      return L::minimum(L::maximum(d, c * t), full);
    };
    Channels<kLanes> out{dst.alpha, lighten(dst.red, pen.red), lighten(dst.green, pen.green),
                         lighten(dst.blue, pen.blue)};
    const auto brightest = L::maximum(L::maximum(out.red, out.green), out.blue);
    out.alpha = L::maximum(L::maximum(dst.alpha, value), brightest);
    return out;
  }
}

template <BlendRule kRule, template <int> class PixelsT, int kLanes>
void blendLanes(std::uint8_t* pixels, Float<kLanes> value, const Channels<kLanes>& pen) {
  using Pixels = PixelsT<kLanes>;
  using L = Lanes<kLanes>;
  const Pixels before = Pixels::load(pixels);
  // Lanes that are not plotted get a harmless value, so that all of them convert within range.
  const auto safe = L::maximum(value, Float<kLanes>{});
  const Pixels after = Pixels::pack(blended<kRule, Pixels, kLanes>(before.channels(), safe, pen));
  if constexpr (kRule == BlendRule::AddScaled) {
    after.store(pixels);  // nothing, scaled, adds nothing
  } else {
    Pixels::select(value > 0.0f, after, before).store(pixels);
  }
}

template <template <int> class PixelsT, int kLanes>
Channels<kLanes> penChannels(Float<kLanes> red, Float<kLanes> green, Float<kLanes> blue) {
  using Pixels = PixelsT<kLanes>;
  return {Float<kLanes>{}, Pixels::penScale(red), Pixels::penScale(green), Pixels::penScale(blue)};
}

template <template <int> class PixelsT, int kLanes>
Channels<kLanes> penChannels(Rgb pen) {
  const auto splat = [](std::int32_t channel) {
    return Lanes<kLanes>::splat(static_cast<float>(channel));
  };
  return penChannels<PixelsT, kLanes>(splat(pen.red), splat(pen.green), splat(pen.blue));
}

template <template <int> class PixelsT, int kLanes>
Channels<kLanes> penChannels(const ShadedRun& run, std::int32_t i) {
  using L = Lanes<kLanes>;
  return penChannels<PixelsT, kLanes>(L::toFloat(L::load(run.red + i)),
                                      L::toFloat(L::load(run.green + i)),
                                      L::toFloat(L::load(run.blue + i)));
}

/// Calls `blendAt` for whole vectors of pixels, then for the pixels left over one by one.
template <class BlendWide, class BlendOne>
void forRun(std::int32_t count, BlendWide blendWide, BlendOne blendOne) {
  std::int32_t i = 0;
  for (; i + kBaselineLanes <= count; i += kBaselineLanes) blendWide(i);
  for (; i < count; ++i) blendOne(i);
}

template <BlendRule kRule, template <int> class PixelsT>
void blendWithPen(std::uint8_t* pixels, std::int32_t count, const ShadedRun& run, Rgb pen) {
  constexpr int kBytes = PixelsT<1>::kBytes;
  const auto widePen = penChannels<PixelsT, kBaselineLanes>(pen);
  const auto onePen = penChannels<PixelsT, 1>(pen);
  forRun(
      count,
      [&](std::int32_t i) {
        blendLanes<kRule, PixelsT, kBaselineLanes>(
            pixels + i * kBytes, Lanes<kBaselineLanes>::load(run.value + i), widePen);
      },
      [&](std::int32_t i) {
        blendLanes<kRule, PixelsT, 1>(pixels + i * kBytes, Lanes<1>::load(run.value + i), onePen);
      });
}

template <BlendRule kRule, template <int> class PixelsT>
void blendWithPens(std::uint8_t* pixels, std::int32_t count, const ShadedRun& run) {
  constexpr int kBytes = PixelsT<1>::kBytes;
  forRun(
      count,
      [&](std::int32_t i) {
        blendLanes<kRule, PixelsT, kBaselineLanes>(pixels + i * kBytes,
                                                   Lanes<kBaselineLanes>::load(run.value + i),
                                                   penChannels<PixelsT, kBaselineLanes>(run, i));
      },
      [&](std::int32_t i) {
        blendLanes<kRule, PixelsT, 1>(pixels + i * kBytes, Lanes<1>::load(run.value + i),
                                      penChannels<PixelsT, 1>(run, i));
      });
}

template <BlendRule kRule>
BlendKernels kernelsOf(bool deep) {
  if (deep) return {blendWithPen<kRule, Pixels16>, blendWithPens<kRule, Pixels16>};
  return {blendWithPen<kRule, Pixels8>, blendWithPens<kRule, Pixels8>};
}

}  // namespace

BlendKernels blendKernels(BlendRule rule, bool deep) {
  switch (rule) {
    case BlendRule::Over:
      return kernelsOf<BlendRule::Over>(deep);
    case BlendRule::AddScaled:
      return kernelsOf<BlendRule::AddScaled>(deep);
    case BlendRule::AddSolid:
      return kernelsOf<BlendRule::AddSolid>(deep);
    case BlendRule::AddGlow:
      return kernelsOf<BlendRule::AddGlow>(deep);
    default:
      return kernelsOf<BlendRule::Lighten>(deep);
  }
}

void plotPixel(const Layer& layer, BlendRule rule, Rgb pen, std::int32_t x, std::int32_t y,
               float value) {
  if (x < 0 || y < 0 || x >= layer.width || y >= layer.height) return;
  ShadedRun run;
  run.value[0] = std::min(value, layer.fullScale());
  blendKernels(rule, layer.deep).withPen(layer.at(x, y), 1, run, pen);
}

}  // namespace brisel
