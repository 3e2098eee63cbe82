// The four-pointed star with concave sides, plain or with a spiral texture.
#pragma once

#include <algorithm>
#include <cmath>

#include "engine/trigonometry.h"
#include "render/cross_texture.h"
#include "render/recolour.h"
#include "render/simd.h"
#include "render/sprite_painter.h"
#include "render/sprites.h"

namespace brisel {

/// A cross on its grid: steps 0, 1 ... while below 2r, from the corner (x - r, y - r). Normalised
/// coordinates run from -1 to 1 across the box.
template <class Isa>
class CrossShader {
  using L = Lanes<Isa>;
  using Float = typename L::Float;

 public:
  CrossShader(const Drawing& drawing, float radius, float x, float y, float angle, Rgb color,
              float value)
      : state_(drawing.state),
        radius_(radius),
        left_(-1.0f - fraction(x - radius) / radius),
        top_(-1.0f - fraction(y - radius) / radius),
        cos_(cosine(angle)),
        sin_(sine(angle)),
        color_(color),
        base_(rgbToHls(color)),
        value_(value),
        fullScale_(drawing.layer.fullScale()),
        byteScale_(drawing.layer.deep ? kDeepPerByte : 1.0f),
        textured_(state_.crossVariant == kTexturedCross && state_.textureMix != 0.0f),
        texture_(state_.textureScale) {}

  bool variesPen() const { return state_.rainbowOn; }
  Rgb pen() const { return color_; }

  RowSpans beginRow(std::int32_t row, IndexRange visible) {
    rowY_ = top_ + static_cast<float>(row) / radius_;
    // The star lies in the unit circle; the slack covers the rounding of a pixel's own test.
    const double square = 1.00001 - static_cast<double>(rowY_) * rowY_;
    if (square <= 0.0) return {};
    const double half = std::sqrt(square);
    const auto step = [&](double nx) {
      return std::clamp((nx - left_) * radius_, static_cast<double>(visible.begin),
                        static_cast<double>(visible.end));
    };
    return {{static_cast<std::int32_t>(step(-half)),
             static_cast<std::int32_t>(std::ceil(step(half + 1.0 / radius_)))},
            {}};
  }

  void shade(std::int32_t index, std::int32_t count, ShadedRun& run) {
    for (std::int32_t i = 0; i < count; i += L::kCount) {
      const Float nx = left_ + L::indices(index + i) / radius_;
      const Float k = L::clampUnit(shape(nx) * value_);
      if (!textured_ && !state_.rainbowOn) {
        L::store(run.value + i, k * fullScale_);
        continue;
      }
      const Float distance = distances(nx);
      Float texture = L::splat(255.0f);
      Float amplitude = L::splat(fullScale_);
      if (textured_) {
        texture = textureAt(nx, distance, k);
        amplitude =
            (texture * state_.textureMix + (1.0f - state_.textureMix) * 255.0f) * byteScale_;
      }
      // Where a stripe passes, the texture is brighter than full scale.
      L::store(run.value + i, L::minimum(k * amplitude, L::splat(fullScale_)));
      if (state_.rainbowOn) storeRainbow(run, i, distance / radius_, texture);
    }
  }

 private:
  Float shape(Float nx) const {
    const Float u = nx * cos_ - rowY_ * sin_;
    const Float v = nx * sin_ + rowY_ * cos_;
    const Float a = L::absolute(u) - 1.0f;
    const Float b = L::absolute(v) - 1.0f;
    const Float k = a * a + b * b - 1.0f;
    return L::clampUnit(u * u + v * v > 1.0f ? Float{} : k);
  }

  /// Distances from the centre in the units of texture and rainbow: the box's full width is 2r per
  /// unit, so its rim lies at 2r.
  Float distances(Float nx) const {
    const Float dx = 2.0f * radius_ * nx;
    const float dy = 2.0f * radius_ * rowY_;
    return L::squareRoot(dx * dx + dy * dy);
  }

  /// The texture where something is drawn, which is not everywhere in the box.
  Float textureAt(Float nx, Float distance, Float k) const {
    Float texture{};
    for (int lane = 0; lane < L::kCount; ++lane) {
      if (k[lane] > 0.0f) texture[lane] = texture_.at(nx[lane], rowY_, distance[lane]);
    }
    return texture;
  }

  void storeRainbow(ShadedRun& run, std::int32_t i, Float p, Float texture) const {
    const Float q = (p / 4.0f) * (p / 4.0f);
    const float strength = std::fabs(state_.rainbowShift);
    const Float saturation =
        L::minimum(static_cast<float>(base_.saturation) + 2.0f * p * strength, L::splat(240.0f));
    const Float lightness =
        L::clamp(static_cast<float>(base_.lightness) - q * strength, 120.0f, 240.0f);
    const Float shift = (q + p * texture * state_.textureMix / 1000.0f) * state_.rainbowShift;
    storeRecoloured<Isa>(run, i, L::splat(static_cast<float>(base_.hue)), shift, lightness,
                         saturation);
  }

  const DrawingState& state_;
  float radius_;
  float left_, top_;
  float cos_, sin_;
  Rgb color_;
  Hls base_;
  float value_;
  float fullScale_;
  float byteScale_;
  bool textured_;
  CrossTexture texture_;
  float rowY_ = 0.0f;
};

template <class Isa>
void paintCrossStar(Drawing& drawing, float radius, float x, float y, float angleRadians, Rgb color,
                    float value) {
  if (!(radius > 0.0f)) return;
  drawing.state.rainbowOn = drawing.state.rainbowShift != 0.0f;
  // So far out, rounding would fold billions of steps of a star as large onto single pixels.
  constexpr float kFarthest = 2147483648.0f;
  if (!(std::fabs(x) < kFarthest && std::fabs(y) < kFarthest)) return;
  CrossShader<Isa> shader(drawing, radius, x, y, angleRadians, color, std::max(value, 0.0f));
  const auto rowOf = [&](std::int32_t j) { return truncToInt(static_cast<float>(j) + y - radius); };
  const auto columnOf = [&](std::int32_t i) {
    return truncToInt(static_cast<float>(i) + x - radius);
  };
  const std::int32_t steps = truncToInt(std::ceil(2.0f * radius));
  paintSprite<Isa>(drawing, {0, steps}, rowOf, columnOf, shader);
}

}  // namespace brisel
