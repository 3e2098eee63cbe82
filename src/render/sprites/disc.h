// The disc that glows and blics are painted on: steps -n .. n - 1 on both axes around the center.
#pragma once

#include <cstdint>

#include "core/geometry.h"
#include "core/numbers.h"
#include "render/raster/grid.h"
#include "render/raster/runs.h"
#include "render/simd/lanes.h"

namespace brisel {

class Disc {
 public:
  /// `radius` n > 0 in pixels.
  Disc(PointF center, std::int32_t radius)
      : fractionX_(fraction(center.x)),
        fractionY_(fraction(center.y)),
        radius_(static_cast<float>(radius)) {}

  float radius() const { return radius_; }

  /// The squares of rows' distances from the center.
  template <class Isa>
  typename Lanes<Isa>::Float rowSquares(typename Lanes<Isa>::Int dy) const {
    const auto fy = Lanes<Isa>::toFloat(dy) - fractionY_;
    return fy * fy;
  }

  /// Distances from the center in pixels.
  template <class Isa>
  typename Lanes<Isa>::Float distances(typename Lanes<Isa>::Int dx,
                                       typename Lanes<Isa>::Float rowSquares) const {
    const auto fx = Lanes<Isa>::toFloat(dx) - fractionX_;
    return Lanes<Isa>::squareRoot(fx * fx + rowSquares);
  }

  /// The steps of rows that may lie within `distance` of the center: all that do, and few
  /// others.
  template <class Isa>
  StepLanes<Isa> nearSteps(typename Lanes<Isa>::Float rowSquares, IndexRange visible,
                           float distance) const {
    constexpr float kSlack = 1.0f + 1.0f / (1 << 16);
    const auto squares = distance * distance * kSlack - rowSquares;
    const auto half = Lanes<Isa>::squareRoot(Lanes<Isa>::maximum(squares, Lanes<Isa>::splat(0.0f)));
    const auto begin = clippedSteps<Isa>(fractionX_ - half, visible);
    const auto end = clippedSteps<Isa>(fractionX_ + half + 1.0f, visible);
    return {begin, squares < 0.0f ? begin : end};
  }

  /// Steps of rows that lie closer to the center than `distance` for certain; empty, at
  /// visible.end, in rows that have few.
  template <class Isa>
  StepLanes<Isa> clearSteps(typename Lanes<Isa>::Float rowSquares, IndexRange visible,
                            float distance) const {
    constexpr float kWorthwhile = 2.0f;
    const auto reach = Lanes<Isa>::splat(distance > 0.0f ? distance * distance : 0.0f);
    const auto squares = reach - rowSquares;
    const auto half = Lanes<Isa>::squareRoot(
        Lanes<Isa>::maximum(squares, Lanes<Isa>::splat(kWorthwhile * kWorthwhile)));
    const auto isHole = squares > kWorthwhile * kWorthwhile;
    const auto none = typename Lanes<Isa>::Int{} + visible.end;
    return {isHole ? clippedSteps<Isa>(fractionX_ - half, visible) : none,
            isHole ? clippedSteps<Isa>(fractionX_ + half + 1.0f, visible) : none};
  }

 private:
  template <class Isa>
  static typename Lanes<Isa>::Int clippedSteps(typename Lanes<Isa>::Float steps, IndexRange range) {
    return Lanes<Isa>::clamp(Lanes<Isa>::toIntSaturated(steps), range.begin, range.end);
  }

  float fractionX_, fractionY_;
  float radius_;
};

}  // namespace brisel
