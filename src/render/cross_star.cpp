#include <algorithm>
#include <cmath>

#include "render/cross_texture.h"
#include "render/recolour.h"
#include "render/simd.h"
#include "render/sprite_painter.h"
#include "render/sprites.h"

namespace brisel {
namespace {

using L = Lanes<kBaselineLanes>;
using Float = L::Float;

/// A cross on its grid: steps 0, 1 ... while below 2r, from the corner (x - r, y - r). Normalised
/// coordinates run from -1 to 1 across the box.
class CrossShader {
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
    for (std::int32_t i = 0; i < count; i += kBaselineLanes) {
      const Float nx = left_ + L::indices(index + i) / radius_;
      L::store(run.value + i, L::clampUnit(shape(nx) * value_));
      L::store(x_ + i, nx);
    }
    if (textured_ || state_.rainbowOn) {
      shadeTextureAndRainbow(count, run);
    } else {
      for (std::int32_t i = 0; i < count; ++i) run.value[i] *= fullScale_;
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

  void shadeTextureAndRainbow(std::int32_t count, ShadedRun& run) {
    const float mix = state_.textureMix;
    for (std::int32_t i = 0; i < count; ++i) {
      if (!(run.value[i] > 0.0f)) continue;
      const float distance = distanceAt(x_[i]);
      const float texture = textured_ ? texture_.at(x_[i], rowY_, distance) : 255.0f;
      run.value[i] *= textured_ ? (texture * mix + (1.0f - mix) * 255.0f) * byteScale_ : fullScale_;
      if (!state_.rainbowOn) continue;
      const Rgb pen = rainbowPen(distance / radius_, texture);
      run.red[i] = pen.red;
      run.green[i] = pen.green;
      run.blue[i] = pen.blue;
    }
  }

  /// The distance from the centre in the units of texture and rainbow: the box's full width is 2r
  /// per unit, so its rim lies at 2r.
  float distanceAt(float nx) const {
    const float dx = 2.0f * radius_ * nx;
    const float dy = 2.0f * radius_ * rowY_;
    return std::sqrt(dx * dx + dy * dy);
  }

  Rgb rainbowPen(float p, float texture) const {
    const float q = (p / 4.0f) * (p / 4.0f);
    const float strength = std::fabs(state_.rainbowShift);
    const float saturation =
        std::min(240.0f, static_cast<float>(base_.saturation) + 2.0f * p * strength);
    const float lightness =
        std::clamp(static_cast<float>(base_.lightness) - q * strength, 120.0f, 240.0f);
    const float shift = (q + p * texture * state_.textureMix / 1000.0f) * state_.rainbowShift;
    return recolour(base_, shift, lightness, saturation);
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
  alignas(16) float x_[ShadedRun::kCapacity];
};

}  // namespace

void drawCrossStar(Drawing& drawing, float radius, float x, float y, float angleRadians, Rgb color,
                   float value) {
  if (!(radius > 0.0f)) return;
  drawing.state.rainbowOn = drawing.state.rainbowShift != 0.0f;
  CrossShader shader(drawing, radius, x, y, angleRadians, color, std::max(value, 0.0f));
  const auto rowOf = [&](std::int32_t j) { return truncToInt(static_cast<float>(j) + y - radius); };
  const auto columnOf = [&](std::int32_t i) {
    return truncToInt(static_cast<float>(i) + x - radius);
  };
  const std::int32_t steps = truncToInt(std::ceil(2.0f * radius));
  paintSprite(drawing, {0, steps}, rowOf, columnOf, shader);
}

}  // namespace brisel
