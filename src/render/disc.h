// The disc that glows and blics are drawn on: steps -n .. n - 1 on both axes around the centre.
#pragma once

#include <cstdint>

#include "core/numbers.h"
#include "render/pixel_grid.h"
#include "render/row_block.h"
#include "render/simd.h"

namespace brisel {

class Disc {
 public:
  /// `radius` n > 0 in pixels; (x, y) is the centre in frame pixels.
  Disc(float x, float y, std::int32_t radius)
      : x_(x),
        y_(y),
        fractionX_(fraction(x)),
        fractionY_(fraction(y)),
        steps_(radius),
        radius_(static_cast<float>(radius)) {}

  void placeOn(const MutableImageView& layer, PixelGrid& grid) const {
    grid.place(layer, {-steps_, steps_}, {y_}, {x_});
  }

  float radius() const { return radius_; }
  float fractionX() const { return fractionX_; }

  /// The squares of rows' distances from the centre.
  template <class Isa>
  typename Lanes<Isa>::Float rowSquares(typename Lanes<Isa>::Int dy) const {
    const auto fy = Lanes<Isa>::toFloat(dy) - fractionY_;
    return fy * fy;
  }

  /// The steps of rows that may lie within `distance` of the centre: all that do, and hardly any
  /// beside them.
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

  /// Steps of rows that lie closer to the centre than `distance` for certain; none, from
  /// visible.end on, in rows that have hardly any.
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

  float x_, y_;
  float fractionX_, fractionY_;
  std::int32_t steps_;
  float radius_;
};

}  // namespace brisel
