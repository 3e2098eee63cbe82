// How much of the pixels beside a ray's edge is covered.
#pragma once

#include <algorithm>
#include <cmath>

#include "render/ray_shape.h"
#include "render/simd.h"

namespace brisel {

/// The band beside one edge: coverage fades over two pixels along the edge, over one around its
/// ends.
class EdgeBand {
 public:
  EdgeBand() = default;
  explicit EdgeBand(const RayEdge& edge)
      : start_(edge.start),
        end_(edge.end),
        line_(lineThrough(edge.start, edge.end)),
        alongX_(edge.end.x - edge.start.x),
        alongY_(edge.end.y - edge.start.y),
        lengthSquare_(alongX_ * alongX_ + alongY_ * alongY_) {}

  template <class Isa>
  typename Lanes<Isa>::Float coverage(typename Lanes<Isa>::Float x,
                                      typename Lanes<Isa>::Float y) const {
    using L = Lanes<Isa>;
    const auto startX = x - start_.x;
    const auto startY = y - start_.y;
    const auto along = startX * alongX_ + startY * alongY_;
    const auto beside = (along >= 0.0f) & (along <= lengthSquare_);
    const auto off = L::absolute(line_.a * x + line_.b * y + line_.c) / line_.norm;
    const auto besideIt = L::clampUnit(1.0f - off / 2.0f);
    if (!L::any(!beside)) return besideIt;
    const auto endX = x - end_.x;
    const auto endY = y - end_.y;
    const auto nearest = L::minimum(endX * endX + endY * endY, startX * startX + startY * startY);
    return beside ? besideIt : L::clampUnit(1.0f - L::squareRoot(nearest));
  }

  /// How far from the edge, along a row, coverage has faded out for certain; infinite beside a
  /// horizontal edge.
  float reach() const {
    // The rounding of distances grows with the coordinates.
    const float slack =
        (std::fabs(start_.x) + std::fabs(start_.y) + std::fabs(end_.x) + std::fabs(end_.y)) *
        0x1p-18f;
    return (2.002f + slack) * line_.norm / std::fabs(alongY_) + 0.05f + slack;
  }

  bool isPoint() const { return alongX_ == 0.0f && alongY_ == 0.0f; }

  /// Whether the edge rises so steeply that its band is the narrowest: by less than the slope at
  /// which twice a row's shift exceeds the least width.
  bool isNarrowest() const {
    const float rise = std::fabs(alongY_);
    return rise >= 1.0f && std::fabs(alongX_) < 2.5f * rise;
  }

 private:
  PointF start_, end_;
  RayLine line_;
  float alongX_ = 0.0f, alongY_ = 0.0f, lengthSquare_ = 0.0f;
};

}  // namespace brisel
