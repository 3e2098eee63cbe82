// The fan of polygonal rays.
#pragma once

#include <algorithm>
#include <cmath>

#include "render/blend_kernels.h"
#include "render/ray_shape.h"
#include "render/ray_span.h"
#include "render/recolour.h"
#include "render/simd.h"
#include "render/sprites.h"

namespace brisel {

template <class Isa>
class RayPainter {
  using L = Lanes<Isa>;
  using Float = typename L::Float;

 public:
  RayPainter(Drawing& drawing, Rgb color, float value)
      : layer_(drawing.layer),
        kernels_(blendKernels<Isa>(drawing.blendRule, drawing.layer.deep)),
        highQuality_(drawing.settings.highQuality),
        rainbowOn_(drawing.state.rainbowOn),
        rainbowShift_(drawing.state.rainbowShift),
        color_(color),
        base_(rgbToHls(color)),
        value_(value),
        fullScale_(drawing.layer.fullScale()) {}

  void paint(const RayShape& ray) {
    if (liesBeside(ray)) return;
    std::int32_t leftIndex = 0;
    std::int32_t rightIndex = ray.edgeCount - 1;
    std::int32_t y = std::min(truncToInt(ray.edges[0].start.y), layer_.height - 1);
    for (; y >= 0 && static_cast<float>(y) > ray.yMin; --y) {
      const float rowY = static_cast<float>(y);
      while (leftIndex < ray.edgeCount - 1 && rowY <= ray.edges[leftIndex].end.y) ++leftIndex;
      while (rightIndex > 0 && rowY <= ray.edges[rightIndex].start.y) --rightIndex;
      const RaySpan span =
          spanOfRow(ray.edges[leftIndex], ray.edges[rightIndex], rowY, highQuality_);
      paintRow(ray, y, span);
    }
  }

 private:
  /// Whether the ray cannot touch the frame's columns. A ray that ends less than a pixel above the
  /// frame is drawn on row 0 with its edges prolonged, so its box says nothing.
  bool liesBeside(const RayShape& ray) const {
    if (ray.edges[0].start.y < 0.0f) return false;
    return ray.xMax < -4.0f || ray.xMin > static_cast<float>(layer_.width) + 4.0f;
  }

  void paintRow(const RayShape& ray, std::int32_t y, const RaySpan& span) {
    const auto firstOf = [](std::int32_t first, std::int32_t last, std::int32_t other) {
      return first <= last ? std::min(first, other) : other;
    };
    std::int32_t begin = firstOf(span.fullFirst, span.fullLast, layer_.width);
    begin = firstOf(span.leftFirst, span.leftLast, begin);
    begin = firstOf(span.rightFirst, span.rightLast, begin);
    std::int32_t last = std::max(span.fullLast, -1);
    if (span.leftFirst <= span.leftLast) last = std::max(last, span.leftLast);
    if (span.rightFirst <= span.rightLast) last = std::max(last, span.rightLast);
    begin = std::max(begin, 0);
    last = std::min(last, layer_.width - 1);

    for (std::int32_t x = begin; x <= last; x += kRunLength) {
      const std::int32_t count = std::min(last - x + 1, kRunLength);
      cover(x, y, count, span);
      shade(ray, x, static_cast<float>(y), count);
      std::uint8_t* pixels = layer_.at(x, y);
      if (rainbowOn_) {
        kernels_.withPens(pixels, count, run_);
      } else {
        kernels_.withPen(pixels, count, run_, color_);
      }
    }
  }

  void cover(std::int32_t x, std::int32_t y, std::int32_t count, const RaySpan& span) {
    const float rowY = static_cast<float>(y);
    for (std::int32_t i = 0; i < count; ++i) {
      const std::int32_t px = x + i;
      const float columnX = static_cast<float>(px);
      if (px >= span.fullFirst && px <= span.fullLast) {
        coverage_[i] = 1.0f;
      } else if (px >= span.leftFirst && px <= span.leftLast) {
        coverage_[i] = edgeCoverage(*span.leftEdge, columnX, rowY);
      } else if (px >= span.rightFirst && px <= span.rightLast) {
        coverage_[i] = edgeCoverage(*span.rightEdge, columnX, rowY);
      } else {
        coverage_[i] = 0.0f;
      }
    }
  }

  void shade(const RayShape& ray, std::int32_t x, float y, std::int32_t count) {
    const float baseY = ray.base.b * y;
    const float acrossY = ray.across.b * y;
    for (std::int32_t i = 0; i < count; i += L::kCount) {
      const Float px = L::indices(x + i);
      const Float u =
          L::absolute(ray.base.a * px + baseY + ray.base.c) / ray.base.norm / ray.length;
      const Float v = L::absolute(ray.across.a * px + acrossY + ray.across.c) / ray.across.norm /
                      ray.baseHalfWidth;
      const Float k = shape(ray.shading, u, v);
      L::store(run_.value + i, L::clampUnit(k * value_) * L::load(coverage_ + i) * fullScale_);
      if (rainbowOn_) storeRainbow(ray.shading, i, u);
    }
  }

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

  void storeRainbow(RayShading shading, std::int32_t i, Float u) {
    const float strength = std::fabs(rainbowShift_);
    const float start = 0.5f - std::min(0.5f, strength / 5000.0f);
    const Float p = L::maximum(u - start, Float{});
    const Float square = p * p;
    const float gain = shading == RayShading::Axis ? 5.0f : 2.0f;
    const Float saturation = static_cast<float>(base_.saturation) + gain * p * strength;
    Float loss;
    switch (shading) {
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
    const Float turn = shading == RayShading::Side ? p : square;
    storeRecoloured<Isa>(run_, i, L::splat(static_cast<float>(base_.hue)), turn * rainbowShift_,
                         L::maximum(lightness, L::splat(120.0f)),
                         L::minimum(saturation, L::splat(240.0f)));
  }

  const Layer& layer_;
  BlendKernels kernels_;
  bool highQuality_;
  bool rainbowOn_;
  float rainbowShift_;
  Rgb color_;
  Hls base_;
  float value_;
  float fullScale_;
  ShadedRun run_;
  alignas(64) float coverage_[ShadedRun::kCapacity] = {};
};

template <class Isa>
void paintRayStar(Drawing& drawing, StarType type, float x, float y, float size, float width,
                  float angleDegrees, float rays, Rgb color, float value) {
  if (!(rays > 0.0f) || !(size > 0.0f)) return;
  if (type < StarType::Type1 || type > StarType::Type5) return;
  RayPainter<Isa> painter(drawing, color, value);
  RayShape ray;
  const float step = 360.0f / rays;
  float angle = angleDegrees;
  for (std::int32_t i = 0; static_cast<float>(i) < rays; ++i, angle += step) {
    if (buildRay(ray, type, {x, y}, size, width, angle, drawing.state.currentRandomFactor)) {
      painter.paint(ray);
    }
  }
}

}  // namespace brisel
