// The fan of polygonal rays.
#pragma once

#include <algorithm>
#include <cmath>

#include "render/blend_kernels.h"
#include "render/edge_coverage.h"
#include "render/ray_shape.h"
#include "render/ray_span.h"
#include "render/recolour.h"
#include "render/simd.h"
#include "render/sprites.h"

namespace brisel {

/// What all rays of a star share.
struct RayLight {
  Rgb color;
  float value;
  float fullScale;
  float rainbowShift;
};

/// Shades the pixels of a ray, whose steps are the frame's columns.
template <class Isa, bool kHighQuality, bool kRainbow>
class RayShader {
  using L = Lanes<Isa>;
  using Float = typename L::Float;

 public:
  explicit RayShader(const RayLight& light) : light_(light), pens_(pensOf<Isa>(light.color)) {
    if (kRainbow) base_ = rgbToHls(light.color);
  }

  void beginRay(const RayShape& ray) {
    along_ = ray.base;
    across_ = ray.across;
    length_ = ray.length;
    baseHalfWidth_ = ray.baseHalfWidth;
    shading_ = ray.shading;
  }

  void beginEdges(const RayEdge& left, const RayEdge& right) {
    if constexpr (kHighQuality) coverage_.beginEdges(left, right);
  }

  template <class Spans>
  void beginRow(float y, const Spans& spans, int row) {
    baseY_ = along_.b * y;
    acrossY_ = across_.b * y;
    if constexpr (kHighQuality) coverage_.beginRow(y, spans, row);
  }

  Shaded<Isa> shade(std::int32_t x) const {
    const Float px = L::indices(x);
    const Float u = L::absolute(along_.a * px + baseY_ + along_.c) / along_.norm / length_;
    const Float v =
        L::absolute(across_.a * px + acrossY_ + across_.c) / across_.norm / baseHalfWidth_;
    Float value = L::clampUnit(shape(shading_, u, v) * light_.value);
    if constexpr (kHighQuality) value = value * coverage_.at(x, px);
    value = value * light_.fullScale;
    if constexpr (kRainbow) {
      if (L::any(value > 0.0f)) return {value, rainbowPens(u)};
    }
    return {value, pens_};
  }

 private:
  static Float shape(RayShading shading, Float u, Float v) {
    switch (shading) {
      case RayShading::Soft: {
        const Float spread = v * (1.0f + 0.9f * u);
        const Float across = 1.0f - L::minimum(spread * spread, L::splat(1.0f));
        const Float along = 1.0f - 0.8f * u;
        return across * across * (along * along);
      }
      case RayShading::Axis: {
        const Float along = 1.0f - 0.8f * u;
        const Float t = along * along;
        return t * L::squareRoot(v / 2.0f + 1.25f * t);
      }
      default: {
        const Float along = 1.0f - u;
        const Float t = along * along;
        return L::clampUnit((v * v + L::maximum(t * t - 0.1f, Float{})) * t);
      }
    }
  }

  Pens<Isa> rainbowPens(Float u) const {
    const float strength = std::fabs(light_.rainbowShift);
    const float start = 0.5f - std::min(0.5f, strength / 5000.0f);
    const Float p = L::maximum(u - start, Float{});
    const Float square = p * p;
    const float gain = shading_ == RayShading::Axis ? 5.0f : 2.0f;
    const Float saturation = static_cast<float>(base_.saturation) + gain * p * strength;
    Float loss;
    switch (shading_) {
      case RayShading::Soft:
        loss = 4.0f * square * strength;
        break;
      case RayShading::Axis:
        loss = 0.5f * square * strength;
        break;
      default:
        loss = 4.0f * p * strength;
        break;
    }
    const Float lightness = static_cast<float>(base_.lightness) - loss;
    const Float turn = shading_ == RayShading::Side ? p : square;
    return recoloured<Isa>(L::splat(static_cast<float>(base_.hue)), turn * light_.rainbowShift,
                           L::maximum(lightness, L::splat(120.0f)),
                           L::minimum(saturation, L::splat(240.0f)));
  }

  RayLight light_;
  Pens<Isa> pens_;
  Hls base_;
  RayLine along_, across_;
  float length_ = 0.0f, baseHalfWidth_ = 0.0f;
  RayShading shading_ = RayShading::Axis;
  float baseY_ = 0.0f, acrossY_ = 0.0f;
  EdgeCoverage<Isa> coverage_;
};

/// Whether the ray cannot touch the frame's columns. A ray that ends less than a pixel above the
/// frame is drawn on row 0 with its edges prolonged, so its box says nothing.
[[gnu::always_inline]] inline bool liesBeside(const RayShape& ray, const Layer& layer) {
  constexpr float kFarthestBand = 8.0f;
  if (ray.edges[0].start.y < 0.0f) return false;
  return ray.xMax < -kFarthestBand || ray.xMin > static_cast<float>(layer.width) + kFarthestBand;
}

template <BlendRule kRule, class Pixels, class Isa, bool kHighQuality, class Shader>
[[gnu::flatten]] void paintRay(const Layer layer, const RayShape& ray, Shader shader) {
  if (liesBeside(ray, layer)) return;
  shader.beginRay(ray);
  RaySpans<Isa> spans;
  std::int32_t leftIndex = 0;
  std::int32_t rightIndex = ray.edgeCount - 1;
  std::int32_t y = std::min(truncToInt(ray.edges[0].start.y), layer.height - 1);
  while (y >= 0 && static_cast<float>(y) > ray.yMin) {
    const float top = static_cast<float>(y);
    while (leftIndex < ray.edgeCount - 1 && top <= ray.edges[leftIndex].end.y) ++leftIndex;
    while (rightIndex > 0 && top <= ray.edges[rightIndex].start.y) --rightIndex;
    const RayEdge& left = ray.edges[leftIndex];
    const RayEdge& right = ray.edges[rightIndex];
    shader.beginEdges(left, right);
    const RayRows<Isa> rows(left, right);
    // The rows down to the next corner.
    float corner = ray.yMin;
    if (leftIndex < ray.edgeCount - 1) corner = std::max(corner, left.end.y);
    if (rightIndex > 0) corner = std::max(corner, right.start.y);
    while (y >= 0 && static_cast<float>(y) > corner) {
      rows.find(y - Lanes<Isa>::steps(0), kHighQuality, layer.width, spans);
      for (int i = 0; i < spans.kRows && y >= 0 && static_cast<float>(y) > corner; ++i, --y) {
        shader.beginRow(static_cast<float>(y), spans, i);
        plotRun<kRule, Pixels, Isa>(layer.at(spans.begin[i], y), spans.begin[i],
                                    spans.end[i] - spans.begin[i], shader);
      }
    }
  }
}

/// Whether no ray of a star can touch the frame, whatever its angle.
[[gnu::always_inline]] inline bool allLieOutside(const Layer& layer, float x, float y, float size,
                                                 float width) {
  // No corner and no band lies farther from the centre; the first corner of each ray is not above
  // it, so that only stars above the frame have rays that are prolonged to row 0.
  const float reach = 1.01f * (size + 1.5f * std::fabs(width)) + 16.0f;
  return y + reach < 0.0f || y - reach > static_cast<float>(layer.height) ||
         (y > 1.0f && (x + reach < 0.0f || x - reach > static_cast<float>(layer.width)));
}

template <class Isa, bool kHighQuality, bool kRainbow>
auto rayShader(const RayLight& light) {
  using Shader = RayShader<Isa, kHighQuality, kRainbow>;
  if constexpr (HasHalf<Isa> && !kRainbow) {
    using Narrow = RayShader<typename Isa::Half, kHighQuality, kRainbow>;
    return HalvingShader<Shader, Narrow>{Shader(light), Narrow(light)};
  } else {
    return Shader(light);
  }
}

template <class Isa>
void paintRayStar(Drawing& drawing, StarType type, float x, float y, float size, float width,
                  float angleDegrees, float rays, Rgb color, float value) {
  if (!(rays > 0.0f) || !(size > 0.0f)) return;
  if (type < StarType::Type1 || type > StarType::Type5) return;
  const Layer& layer = drawing.layer;
  if (allLieOutside(layer, x, y, size, width)) return;
  const float shift = drawing.state.rainbowShift;
  bool rainbowOn = drawing.state.rainbowOn;
  // Distances along much shorter rays overflow.
  constexpr float kShortest = 1e-6f;
  if (rainbowOn && shift == 0.0f && size > kShortest) {
    color = recolouredEvenly(color, 0);
    rainbowOn = false;
  }
  const RayLight light{color, value, layer.fullScale(), shift};
  const auto paint = [&]<bool kHighQuality>(const auto& shader) {
    RayShape ray;
    const float step = 360.0f / rays;
    float angle = angleDegrees;
    withRule<Isa>(drawing.blendRule, layer.deep, [&]<BlendRule kRule, class Pixels>() {
      for (std::int32_t i = 0; static_cast<float>(i) < rays; ++i, angle += step) {
        if (buildRay(ray, type, {x, y}, size, width, angle, drawing.state.currentRandomFactor)) {
          paintRay<kRule, Pixels, Isa, kHighQuality>(layer, ray, shader);
        }
      }
    });
  };
  if (drawing.settings.highQuality) {
    rainbowOn ? paint.template operator()<true>(rayShader<Isa, true, true>(light))
              : paint.template operator()<true>(rayShader<Isa, true, false>(light));
  } else {
    rainbowOn ? paint.template operator()<false>(rayShader<Isa, false, true>(light))
              : paint.template operator()<false>(rayShader<Isa, false, false>(light));
  }
}

}  // namespace brisel
