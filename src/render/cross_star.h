// The four-pointed star with concave sides, plain or with a spiral texture.
#pragma once

#include <cmath>
#include <utility>

#include "core/trigonometry.h"
#include "render/cross_texture.h"
#include "render/recolour.h"
#include "render/simd.h"
#include "render/sprite_painter.h"
#include "render/sprites.h"

namespace brisel {

/// A cross on its grid: steps 0, 1 ... while below 2r, from the corner (x - r, y - r). Normalised
/// coordinates run from -1 to 1 across the box.
template <class Isa, bool kTextured, bool kRainbow>
class CrossShader {
  using L = Lanes<Isa>;
  using Float = typename L::Float;
  using Int = typename L::Int;

 public:
  CrossShader(const Drawing& drawing, float radius, float x, float y, float angle, Rgb color,
              float value)
      : radius_(radius),
        left_(-1.0f - fraction(x - radius) / radius),
        top_(-1.0f - fraction(y - radius) / radius),
        cos_(cosine(angle)),
        sin_(sine(angle)),
        pen_(color),
        value_(value),
        fullScale_(drawing.layer.fullScale()),
        byteScale_(drawing.layer.isDeep() ? kDeepPerByte : 1.0f),
        rainbowShift_(drawing.state.rainbowShift),
        textureMix_(drawing.state.textureMix),
        texture_(drawing.state.textureScale),
        gaps_{gapAt(1.0f, 1.0f), gapAt(1.0f, -1.0f), gapAt(-1.0f, 1.0f), gapAt(-1.0f, -1.0f)} {
    if (kRainbow) base_ = rgbToHls(color);
    // By hand: a library's sort would be compiled out of line, for the wide sets as well.
    for (int i = 1; i < kGaps; ++i) {
      for (int j = i; j > 0 && gaps_[j].x < gaps_[j - 1].x; --j) std::swap(gaps_[j], gaps_[j - 1]);
    }
  }

  static constexpr int kStretches = 5;
  void findRows(Int rows, IndexRange visible, RowBlock<Isa>& block) const {
    const Float ny = top_ + L::toFloat(rows) / radius_;
    L::store(block.row, ny);
    // The star lies in the unit circle, less four unit circles around the corners of a square. The
    // slack covers the rounding of a pixel's own test.
    constexpr float kSlack = 0.0001f;
    const Float square = 1.0f + kSlack - ny * ny;
    const Float half = L::squareRoot(L::maximum(square, Float{}));
    Int begin = stepsAt(-half, visible);
    const Int end = square < 0.0f ? begin : stepsAt(half + 1.0f / radius_, visible);
    for (int i = 0; i < kGaps; ++i) {
      const Float dy = ny - gaps_[i].y;
      const Float gapSquare = 1.0f - kSlack - dy * dy;
      const Float gapHalf = L::squareRoot(L::maximum(gapSquare, Float{}));
      const Int gapBegin = stepsAt(gaps_[i].x - gapHalf + 1.0f / radius_, visible);
      const Int gapEnd = stepsAt(gaps_[i].x + gapHalf + 1.0f / radius_, visible);
      const Int isGap = (gapSquare > 0.0f) & (gapEnd - gapBegin >= kLeastGap);
      block.setStretch(i, {begin, isGap ? L::lesser(gapBegin, end) : begin});
      begin = isGap ? L::greater(gapEnd, begin) : begin;
    }
    block.setStretch(kGaps, {begin, end});
  }

  Shaded<Isa> shade(Int steps, Float ny) const {
    const Float nx = left_ + L::toFloat(steps) / radius_;
    const Float k = L::clampUnit(shape(nx, ny) * value_);
    if constexpr (!kTextured && !kRainbow) return {k * fullScale_, pen_.template inAllLanes<Isa>()};
    const Float distance = distances(nx, ny);
    Float texture = L::splat(255.0f);
    Float amplitude = L::splat(fullScale_);
    if constexpr (kTextured) {
      texture = texture_.template at<Isa>(nx, ny, distance);
      amplitude = (texture * textureMix_ + (1.0f - textureMix_) * 255.0f) * byteScale_;
    }
    // Where a stripe passes, the texture is brighter than full scale.
    const Float value = L::minimum(k * amplitude, L::splat(fullScale_));
    if constexpr (kRainbow) return {value, rainbowPens(distance / radius_, texture)};
    return {value, pen_.template inAllLanes<Isa>()};
  }

 private:
  static constexpr int kGaps = 4;
  static constexpr std::int32_t kLeastGap = 4;  // pixels that are worth a stretch more

  /// The unrotated place of (u, v).
  PointF gapAt(float u, float v) const { return {u * cos_ + v * sin_, v * cos_ - u * sin_}; }

  Int stepsAt(Float nx, IndexRange visible) const {
    return L::clamp(L::toIntSaturated((nx - left_) * radius_), visible.begin, visible.end);
  }

  Float shape(Float nx, Float ny) const {
    const Float u = nx * cos_ - ny * sin_;
    const Float v = nx * sin_ + ny * cos_;
    const Float a = L::absolute(u) - 1.0f;
    const Float b = L::absolute(v) - 1.0f;
    const Float k = a * a + b * b - 1.0f;
    return L::clampUnit(u * u + v * v > 1.0f ? Float{} : k);
  }

  /// Distances from the centre in the units of texture and rainbow: the box's full width is 2r per
  /// unit, so its rim lies at 2r.
  Float distances(Float nx, Float ny) const {
    const Float dx = 2.0f * radius_ * nx;
    const Float dy = 2.0f * radius_ * ny;
    return L::squareRoot(dx * dx + dy * dy);
  }

  Pens<Isa> rainbowPens(Float p, Float texture) const {
    const Float q = (p / 4.0f) * (p / 4.0f);
    const float strength = std::fabs(rainbowShift_);
    const Float saturation =
        L::minimum(static_cast<float>(base_.saturation) + 2.0f * p * strength, L::splat(240.0f));
    const Float lightness =
        L::clamp(static_cast<float>(base_.lightness) - q * strength, 120.0f, 240.0f);
    const Float shift = (q + p * texture * textureMix_ / 1000.0f) * rainbowShift_;
    return recoloured<Isa>(L::splat(static_cast<float>(base_.hue)), shift, lightness, saturation);
  }

  float radius_;
  float left_, top_;
  float cos_, sin_;
  Pen pen_;
  Hls base_;
  float value_;
  float fullScale_;
  float byteScale_;
  float rainbowShift_;
  float textureMix_;
  CrossTexture texture_;
  PointF gaps_[kGaps];  // centres, from left to right
};

template <class Isa>
void paintCrossStar(Drawing& drawing, float radius, float x, float y, float angleRadians, Rgb color,
                    float value) {
  if (!(radius > 0.0f)) return;
  DrawingState& state = drawing.state;
  state.rainbowOn = state.rainbowShift != 0.0f;
  if (!(value > 0.0f)) return;
  // So far out, rounding would fold billions of steps of a star as large onto single pixels.
  constexpr float kFarthest = 2147483648.0f;
  if (!(std::fabs(x) < kFarthest && std::fabs(y) < kFarthest)) return;
  const IndexRange steps{0, truncToInt(std::ceil(2.0f * radius))};
  drawing.grid.place(drawing.layer, steps, {y, radius}, {x, radius});
  if (drawing.grid.empty()) return;
  const auto paint = [&]<bool kTextured, bool kRainbow>() {
    const CrossShader<Isa, kTextured, kRainbow> shader(drawing, radius, x, y, angleRadians, color,
                                                       value);
    paintSprite<Isa>(drawing, shader);
  };
  if (state.crossVariant == kTexturedCross && state.textureMix != 0.0f) {
    state.rainbowOn ? paint.template operator()<true, true>()
                    : paint.template operator()<true, false>();
  } else {
    state.rainbowOn ? paint.template operator()<false, true>()
                    : paint.template operator()<false, false>();
  }
}

}  // namespace brisel
