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

/// Plots into the first `count` pixels.
template <BlendRule kRule, class Pixels, class Isa>
void plotLanes(std::uint8_t* pixels, int count, const Shaded<Isa>& plot) {
  using L = Lanes<Isa>;
  const Pixels before = Pixels::load(pixels, count);
  // Lanes that are not plotted get a harmless value, so that all of them convert within range.
  const auto safe = L::maximum(plot.value, FloatOf<Isa>{});
  const Channels<Isa> pen{FloatOf<Isa>{}, Pixels::penScale(plot.pens.red),
                          Pixels::penScale(plot.pens.green), Pixels::penScale(plot.pens.blue)};
  const Pixels after = Pixels::pack(blended<kRule, Pixels, Isa>(before.channels(), safe, pen));
  if constexpr (kRule == BlendRule::AddScaled) {
    after.store(pixels, count);  // nothing, scaled, adds nothing
  } else {
    Pixels::select(plot.value > 0.0f, after, before).store(pixels, count);
  }
}

/// A pen of one colour, as in every lane.
template <class Isa>
Pens<Isa> pensOf(Rgb color) {
  const auto splat = [](std::int32_t channel) {
    return Lanes<Isa>::splat(static_cast<float>(channel));
  };
  return {splat(color.red), splat(color.green), splat(color.blue)};
}

/// A shader beside one for lanes of half the width.
template <class Wide, class Narrow>
struct HalvingShader : Wide {
  Narrow narrow;

  template <class... Arguments>
  void beginRow(const Arguments&... arguments) {
    Wide::beginRow(arguments...);
    narrow.beginRow(arguments...);
  }
  template <class... Arguments>
  void beginRay(const Arguments&... arguments) {
    Wide::beginRay(arguments...);
    narrow.beginRay(arguments...);
  }
  template <class... Arguments>
  void beginEdges(const Arguments&... arguments) {
    Wide::beginEdges(arguments...);
    narrow.beginEdges(arguments...);
  }
};

/// Plots `count` neighbouring pixels from step `index` of the shader on, which offers
///   Shaded<Isa> shade(std::int32_t index)   kLanes steps from `index` on
template <BlendRule kRule, class Pixels, class Isa, class Shader>
void plotRun(std::uint8_t* pixels, std::int32_t index, std::int32_t count, const Shader& shader) {
  constexpr int kLanes = Lanes<Isa>::kCount;
  for (; count > 0; count -= kLanes) {
    if constexpr (requires { shader.narrow; }) {
      if (count <= kLanes / 2) {
        using Half = typename Isa::Half;
        plotLanes<kRule, typename Pixels::template With<Half>, Half>(pixels, count,
                                                                     shader.narrow.shade(index));
        return;
      }
    }
    plotLanes<kRule, Pixels, Isa>(pixels, std::min(count, kLanes), shader.shade(index));
    pixels += kLanes * Pixels::kBytes;
    index += kLanes;
  }
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

/// Plots the same pen with the values given.
template <class Isa>
struct ValuesShader {
  const float* values;  // up to a whole number of lanes
  Pens<Isa> pens;
  Shaded<Isa> shade(std::int32_t index) const { return {Lanes<Isa>::load(values + index), pens}; }
};

template <class Isa>
void plotValues(const Layer& layer, BlendRule rule, Rgb pen, std::int32_t x, std::int32_t y,
                std::int32_t count, const float* values) {
  const ValuesShader<Isa> shader{values, pensOf<Isa>(pen)};
  withRule<Isa>(rule, layer.deep, [&]<BlendRule kRule, class Pixels>() {
    plotRun<kRule, Pixels, Isa>(layer.at(x, y), 0, count, shader);
  });
}

}  // namespace brisel
