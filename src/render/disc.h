// The disc that glows and blics are drawn on: steps -n .. n - 1 on both axes around the centre.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "engine/numbers.h"
#include "render/pixel_grid.h"

namespace brisel {

class Disc {
 public:
  /// `radius` n > 0 in pixels; (x, y) is the centre in frame pixels.
  Disc(float x, float y, std::int32_t radius)
      : x_(x), y_(y), fractionX_(fraction(x)), fractionY_(fraction(y)), radius_(radius) {}

  IndexRange steps() const { return {-radius_, radius_}; }
  StepMap columns() const { return {x_}; }
  StepMap rows() const { return {y_}; }

  float radius() const { return static_cast<float>(radius_); }
  float fractionX() const { return fractionX_; }

  /// The square of row dy's distance from the centre.
  float rowSquare(std::int32_t dy) const {
    const float fy = static_cast<float>(dy) - fractionY_;
    return fy * fy;
  }

  /// The steps of a row that may lie within `distance` of the centre: all that do, and hardly any
  /// beside them.
  [[gnu::always_inline]] IndexRange nearSteps(float rowSquare, IndexRange visible,
                                              float distance) const {
    constexpr float kSlack = 1.0f + 1.0f / (1 << 16);
    const float square = distance * distance * kSlack - rowSquare;
    if (!(square >= 0.0f)) return {};
    const float half = std::sqrt(square);
    return {clippedStep(fractionX_ - half, visible),
            clippedStep(fractionX_ + half + 1.0f, visible)};
  }

  /// Steps of a row that lie closer to the centre than `distance` for certain; none when there are
  /// hardly any.
  [[gnu::always_inline]] IndexRange clearSteps(float rowSquare, IndexRange span,
                                               float distance) const {
    constexpr float kWorthwhile = 8.0f;
    const float square = distance * distance - rowSquare;
    if (!(distance > 0.0f && square > kWorthwhile * kWorthwhile)) return {span.end, span.end};
    const float half = std::sqrt(square) - 1.0f;
    return {clippedStep(fractionX_ - half, span), clippedStep(fractionX_ + half, span)};
  }

 private:
  static std::int32_t clippedStep(float step, IndexRange range) {
    return std::clamp(truncToInt(step), range.begin, range.end);
  }

  float x_, y_;
  float fractionX_, fractionY_;
  std::int32_t radius_;
};

}  // namespace brisel
