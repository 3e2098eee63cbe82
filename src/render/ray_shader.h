// The light of a ray's pixels: by distance along and across it, beside its edges by coverage.
#pragma once

#include <algorithm>
#include <cmath>

#include "render/edge_coverage.h"
#include "render/hls.h"
#include "render/pixel_lanes.h"
#include "render/ray_shape.h"
#include "render/recolour.h"
#include "render/simd.h"

namespace brisel {

/// What all rays of a star share.
struct RayLight {
  Rgb color;
  float value;
  float fullScale;
  float rainbowShift;
};

/// Shades the pixels of a ray, whose steps are the frame's columns and whose rows are the frame's.
template <class Isa, bool kRainbow>
class RayShader {
  using L = Lanes<Isa>;
  using Float = typename L::Float;

 public:
  explicit RayShader(const RayLight& light) : light_(light), pen_(light.color) {
    if (kRainbow) base_ = rgbToHls(light.color);
  }

  /// The ray to shade from now on, which is borrowed.
  void setRay(const RayShape& ray) { ray_ = &ray; }

  Shaded<Isa> shade(typename L::Int columns, Float y) const {
    return shade(L::toFloat(columns), y, L::splat(1.0f));
  }

  Shaded<Isa> shade(Float x, Float y, Float coverage) const {
    const Float u = distance(ray_->base, x, y) / ray_->length;
    const Float v = distance(ray_->across, x, y) / ray_->baseHalfWidth;
    const Float shaped = L::clampUnit(shape(ray_->shading, u, v) * light_.value);
    const Float value = shaped * coverage * light_.fullScale;
    if constexpr (kRainbow) {
      if (L::any(value > 0.0f)) return {value, rainbowPens(u)};
    }
    return {value, pen_.template inAllLanes<Isa>()};
  }

 private:
  static Float distance(const RayLine& line, Float x, Float y) {
    return L::absolute(line.a * x + line.b * y + line.c) / line.norm;
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

  Pens<Isa> rainbowPens(Float u) const {
    const float strength = std::fabs(light_.rainbowShift);
    const float start = 0.5f - std::min(0.5f, strength / 5000.0f);
    const Float p = L::maximum(u - start, Float{});
    const Float square = p * p;
    const float gain = ray_->shading == RayShading::Axis ? 5.0f : 2.0f;
    const Float saturation = static_cast<float>(base_.saturation) + gain * p * strength;
    Float loss;
    switch (ray_->shading) {
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
    const Float turn = ray_->shading == RayShading::Side ? p : square;
    return recoloured<Isa>(L::splat(static_cast<float>(base_.hue)), turn * light_.rainbowShift,
                           L::maximum(lightness, L::splat(120.0f)),
                           L::minimum(saturation, L::splat(240.0f)));
  }

  RayLight light_;
  Pen pen_;
  Hls base_;
  const RayShape* ray_ = nullptr;
};

/// Shades the pixels beside an edge of a ray.
template <class Isa, class FullShader>
class RayBandShader {
 public:
  explicit RayBandShader(const FullShader& ray) : ray_(ray) {}

  void setBand(const EdgeBand& band) { band_ = &band; }

  Shaded<Isa> shade(typename Lanes<Isa>::Int columns, typename Lanes<Isa>::Float y) const {
    const auto x = Lanes<Isa>::toFloat(columns);
    return ray_.shade(x, y, band_->coverage<Isa>(x, y));
  }

 private:
  const FullShader& ray_;
  const EdgeBand* band_ = nullptr;
};

}  // namespace brisel
