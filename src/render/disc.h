// The disc that glows and blics are drawn on: steps -n .. n - 1 on both axes around the centre.
#pragma once

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
  std::int32_t columnOf(std::int32_t dx) const { return truncToInt(static_cast<float>(dx) + x_); }
  std::int32_t rowOf(std::int32_t dy) const { return truncToInt(static_cast<float>(dy) + y_); }

  float radius() const { return static_cast<float>(radius_); }
  float fractionX() const { return fractionX_; }

  /// The square of row dy's distance from the centre.
  float rowSquare(std::int32_t dy) const {
    const float fy = static_cast<float>(dy) - fractionY_;
    return fy * fy;
  }

  /// The steps of a row inside the disc, its rim included or not.
  IndexRange rowSpan(float rowSquare, IndexRange visible, bool includeRim) const;

  /// Steps of a row that lie closer to the centre than `distance` pixels for certain.
  IndexRange rowHole(float rowSquare, IndexRange span, float distance) const;

 private:
  float x_, y_;
  float fractionX_, fractionY_;
  std::int32_t radius_;
};

}  // namespace brisel
