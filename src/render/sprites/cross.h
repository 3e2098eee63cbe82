// The four-pointed star with concave sides, plain or with a spiral texture.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

#include "core/numbers.h"
#include "render/raster/recolor.h"
#include "render/raster/runs.h"
#include "render/simd/arc_tangent.h"
#include "render/simd/lanes.h"
#include "render/sprites/specs.h"

namespace brisel {

/// Two families of curved stripes, one winding each way, brightest where a stripe passes.
class CrossTexture {
 public:
  explicit CrossTexture(float textureScale) : textureScale_(textureScale) {
    const std::int32_t wholeDegrees = 360 / std::max(50, truncToInt(200.0f * textureScale));
    sector_ = static_cast<float>(wholeDegrees);
    perSector_ = 1.0f / sector_;
  }

  /// Where the stripes lie: angles from 0 to 2 pi of normalized coordinates (nx, ny), `distance`
  /// pixels from the center.
  template <class Isa>
  static typename Lanes<Isa>::Float angles(typename Lanes<Isa>::Float nx,
                                           typename Lanes<Isa>::Float ny,
                                           typename Lanes<Isa>::Float distance) {
    using Float = typename Lanes<Isa>::Float;
    const Float angle = distance == 0.0f ? Float{} : arcTangents<Isa>(ny, nx);
    return angle < 0.0f ? angle + 2.0f * kPi : angle;
  }

  /// The texture's brightness there, 127.5 to 382.5.
  template <class Isa>
  typename Lanes<Isa>::Float at(typename Lanes<Isa>::Float angle,
                                typename Lanes<Isa>::Float distance) const {
    using L = Lanes<Isa>;
    using Float = typename L::Float;
    const Float degrees = withinSector<Isa>(angle * 180.0f / kShortPi);
    // One family has wound by as much as the other, the other way.
    const Float wound = L::absolute(distance / 2.0f * textureScale_);
    const Float back = wound > 0.0f ? 360.0f - wound : Float{};
    Float w = L::minimum(fromStripe<Isa>(wound, degrees), fromStripe<Isa>(back, degrees));
    w = distance > 0.0f ? w * distance : w;
    return 25.5f * (5.0f + L::maximum(10.0f - w, Float{}));
  }

 private:
  template <class Isa>
  typename Lanes<Isa>::Float withinSector(typename Lanes<Isa>::Float a) const {
    const auto turns = Lanes<Isa>::quotient(a, sector_, perSector_);
    return a - sector_ * Lanes<Isa>::truncatedAny(turns);
  }

  /// A tenth of the degrees between an angle within the sector and the stripe that has wound by so
  /// many.
  template <class Isa>
  typename Lanes<Isa>::Float fromStripe(typename Lanes<Isa>::Float degrees,
                                        typename Lanes<Isa>::Float angle) const {
    using Float = typename Lanes<Isa>::Float;
    const Float wound = withinSector<Isa>(degrees);
    const float half = sector_ / 2.0f;
    const auto angleAhead = (wound < half) & (half < angle);
    const auto stripeAhead = (angle < half) & (half < wound);
    const Float from = angleAhead ? angle - sector_ : angle;
    const Float to = stripeAhead ? wound - sector_ : wound;
    return 0.1f * Lanes<Isa>::absolute(to - from);
  }

  float textureScale_;
  float sector_;  // degrees between stripes
  float perSector_;
};

/// A cross on its grid: steps 0, 1 ... while below 2r, from the corner (x - r, y - r). Normalized
/// coordinates run from -1 to 1 across the box.
template <class Isa, bool kTextured, bool kRainbow>
class CrossShader {
  using L = Lanes<Isa>;
  using Float = typename L::Float;
  using Int = typename L::Int;

 public:
  CrossShader(const CrossSpec& spec, float fullScale)
      : radius_(spec.radius),
        left_(-1.0f - fraction(spec.center.x - spec.radius) / spec.radius),
        top_(-1.0f - fraction(spec.center.y - spec.radius) / spec.radius),
        cos_(spec.cos),
        sin_(spec.sin),
        pen_(spec.color),
        value_(spec.value),
        fullScale_(fullScale),
        byteScale_(fullScale == kDeepFullScale ? kDeepPerByte : 1.0f),
        rainbowShift_(spec.rainbowShift),
        textureMix_(spec.textureMix),
        texture_(spec.textureScale),
        gaps_{gapAt(1.0f, 1.0f), gapAt(1.0f, -1.0f), gapAt(-1.0f, 1.0f), gapAt(-1.0f, -1.0f)} {
    if (kRainbow) base_ = rgbToHls(spec.color);
    // By hand: a library's sort would be compiled out of line, for the wide sets as well.
    for (int i = 1; i < kGaps; ++i) {
      for (int j = i; j > 0 && gaps_[j].x < gaps_[j - 1].x; --j) std::swap(gaps_[j], gaps_[j - 1]);
    }
  }

  static constexpr int kStretches = 5;
  // Finding four gaps in each row costs as much as shading a vector or two.
  static constexpr int kNarrowShare = kTextured || kRainbow ? 2 : 1;
  Float rowValues(Int rows) const { return top_ + L::toFloat(rows) / radius_; }
  void findStretches(Float ny, IndexRange visible, RowBlock<Isa>& block) const {
    // The star lies in the unit circle, less four unit circles around the corners of a square. The
    // slack covers the rounding of a pixel's own test.
    constexpr float kSlack = 0.0001f;
    const Float square = 1.0f + kSlack - ny * ny;
    const Float half = L::squareRoot(L::maximum(square, Float{}));
    Int begin = stepsAt(-half, visible);
    const Int end = square < 0.0f ? begin : stepsAfter(half, visible);
    for (int i = 0; i < kGaps; ++i) {
      const Float dy = ny - gaps_[i].y;
      const Float gapSquare = 1.0f - kSlack - dy * dy;
      const Float gapHalf = L::squareRoot(L::maximum(gapSquare, Float{}));
      const Int gapBegin = stepsAfter(gaps_[i].x - gapHalf, visible);
      const Int gapEnd = stepsAfter(gaps_[i].x + gapHalf, visible);
      const Int isGap = (gapSquare > 0.0f) & (gapEnd - gapBegin >= kLeastGap);
      block.setStretch(i, {begin, isGap ? L::lesser(gapBegin, end) : begin});
      begin = isGap ? L::greater(gapEnd, begin) : begin;
    }
    block.setStretch(kGaps, {begin, end});
  }

  Shaded<Isa> shade(Int steps, Float ny) const requires(!kTextured && !kRainbow) {
    return {brightness(columns(steps), ny) * fullScale_, pen_.template inAllLanes<Isa>()};
  }

  struct Prepared {
    Float k, distance, angle;
  };
  Prepared prepare(Int steps, Float ny) const requires(kTextured || kRainbow) {
    const Float nx = columns(steps);
    const Float distance = distances(nx, ny);
    Float angle{};
    if constexpr (kTextured) angle = CrossTexture::angles<Isa>(nx, ny, distance);
    return {brightness(nx, ny), distance, angle};
  }
  Shaded<Isa> shade(const Prepared& at) const {
    Float texture = L::splat(255.0f);
    Float amplitude = L::splat(fullScale_);
    if constexpr (kTextured) {
      texture = texture_.template at<Isa>(at.angle, at.distance);
      amplitude = (texture * textureMix_ + (1.0f - textureMix_) * 255.0f) * byteScale_;
    }
    // Where a stripe passes, the texture is brighter than full scale.
    const Float value = L::minimum(at.k * amplitude, L::splat(fullScale_));
    if constexpr (kRainbow) {
      return {value, recolored<Isa>(turned(at.distance / radius_, texture))};
    }
    return {value, pen_.template inAllLanes<Isa>()};
  }

 private:
  static constexpr int kGaps = 4;
  static constexpr std::int32_t kLeastGap =
      4;  // a gap of fewer pixels is not worth another stretch

  /// The unrotated place of (u, v).
  PointF gapAt(float u, float v) const { return {u * cos_ + v * sin_, v * cos_ - u * sin_}; }

  Int stepsAt(Float nx, IndexRange visible) const {
    return clippedSteps((nx - left_) * radius_, visible);
  }
  /// The first steps beyond. Adding a pixel's 1 / radius to `nx` instead would lose it where the
  /// cross is smaller than a millionth of one.
  Int stepsAfter(Float nx, IndexRange visible) const {
    return clippedSteps((nx - left_) * radius_ + 1.0f, visible);
  }
  static Int clippedSteps(Float steps, IndexRange range) {
    return L::clamp(L::toIntSaturated(steps), range.begin, range.end);
  }

  Float columns(Int steps) const { return left_ + L::toFloat(steps) / radius_; }

  /// Without texture, as a share of full scale.
  Float brightness(Float nx, Float ny) const {
    const Float u = nx * cos_ - ny * sin_;
    const Float v = nx * sin_ + ny * cos_;
    const Float a = L::absolute(u) - 1.0f;
    const Float b = L::absolute(v) - 1.0f;
    const Float k = a * a + b * b - 1.0f;
    return L::clampUnit(L::clampUnit(u * u + v * v > 1.0f ? Float{} : k) * value_);
  }

  /// Distances from the center in the units of texture and rainbow: the box's full width is 2r per
  /// unit, so its rim lies at 2r.
  Float distances(Float nx, Float ny) const {
    const Float dx = 2.0f * radius_ * nx;
    const Float dy = 2.0f * radius_ * ny;
    return L::squareRoot(dx * dx + dy * dy);
  }

  Turned<Isa> turned(Float p, Float texture) const {
    const Float q = (p / 4.0f) * (p / 4.0f);
    const float strength = std::fabs(rainbowShift_);
    const Float saturation =
        L::minimum(static_cast<float>(base_.saturation) + 2.0f * p * strength, L::splat(240.0f));
    const Float lightness =
        L::clamp(static_cast<float>(base_.lightness) - q * strength, 120.0f, 240.0f);
    const Float shift = (q + p * texture * textureMix_ / 1000.0f) * rainbowShift_;
    return {static_cast<float>(base_.hue) + shift, lightness, saturation};
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
  PointF gaps_[kGaps];  // centers, from left to right
};

template <class Isa>
void paintCross(const MutableImageView& image, const PixelGrid& grid, const CrossSpec& cross) {
  const auto paint = [&]<bool kTextured, bool kRainbow>() {
    const CrossShader<Isa, kTextured, kRainbow> shader(cross, image.fullScale());
    paintSprite<Isa>(image, grid, cross.rule, shader);
  };
  const bool isRecolored = cross.rainbowShift != 0.0f;
  if (cross.isTextured) {
    isRecolored ? paint.template operator()<true, true>()
                : paint.template operator()<true, false>();
  } else {
    isRecolored ? paint.template operator()<false, true>()
                : paint.template operator()<false, false>();
  }
}

}  // namespace brisel
