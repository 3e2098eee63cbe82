// How much of each pixel of a ray's row is covered: fully between the edges, fading beside them.
#pragma once

#include "render/ray_shape.h"
#include "render/ray_span.h"
#include "render/simd.h"

namespace brisel {

/// The band beside one edge: coverage fades over two pixels along the edge, over one around its
/// ends.
template <class Isa>
class EdgeBand {
  using L = Lanes<Isa>;
  using Float = typename L::Float;

 public:
  void beginRow(const RayEdge& edge, float y, std::int32_t first, std::int32_t last) {
    first_ = first;
    last_ = last;
    if (first > last) return;
    startX_ = edge.start.x;
    endX_ = edge.end.x;
    edgeX_ = edge.end.x - edge.start.x;
    const float edgeY = edge.end.y - edge.start.y;
    const float startY = y - edge.start.y;
    const float endY = y - edge.end.y;
    alongY_ = startY * edgeY;
    lengthSquare_ = edgeX_ * edgeX_ + edgeY * edgeY;
    startSquare_ = startY * startY;
    endSquare_ = endY * endY;
    a_ = edge.line.a;
    lineY_ = edge.line.b * y;
    c_ = edge.line.c;
    norm_ = edge.line.norm;
  }

  /// Whether some of the lanes from column `x` on lie in the band.
  bool touches(std::int32_t x) const { return x <= last_ && x + L::kCount > first_; }

  auto contains(typename L::Int columns) const { return (columns >= first_) & (columns <= last_); }

  Float coverage(Float px) const {
    const Float startX = px - startX_;
    const Float along = startX * edgeX_ + alongY_;
    const auto beside = (along >= 0.0f) & (along <= lengthSquare_);
    const Float off = L::absolute(a_ * px + lineY_ + c_) / norm_;
    const Float besideIt = L::clampUnit(1.0f - off / 2.0f);
    if (!L::any(!beside)) return besideIt;
    const Float endX = px - endX_;
    const Float nearest = L::minimum(endX * endX + endSquare_, startX * startX + startSquare_);
    return beside ? besideIt : L::clampUnit(1.0f - L::squareRoot(nearest));
  }

 private:
  std::int32_t first_ = 0, last_ = -1;
  float startX_ = 0.0f, endX_ = 0.0f, edgeX_ = 0.0f;
  float alongY_ = 0.0f, lengthSquare_ = 0.0f, startSquare_ = 0.0f, endSquare_ = 0.0f;
  float a_ = 0.0f, lineY_ = 0.0f, c_ = 0.0f, norm_ = 1.0f;
};

template <class Isa>
class EdgeCoverage {
  using L = Lanes<Isa>;
  using Float = typename L::Float;

 public:
  void beginRow(const RayEdge& left, const RayEdge& right, float y, const RaySpan& span) {
    left_.beginRow(left, y, span.leftFirst, span.leftLast);
    right_.beginRow(right, y, span.rightFirst, span.rightLast);
    fullFirst_ = span.fullFirst;
    fullLast_ = span.fullLast;
  }

  /// The coverage of the columns from `x` on, which `px` holds.
  Float at(std::int32_t x, Float px) const {
    const Float one = L::splat(1.0f);
    if (x >= fullFirst_ && x <= fullLast_ - (L::kCount - 1)) return one;
    const auto columns = L::steps(x);
    Float covered{};
    if (right_.touches(x)) covered = right_.contains(columns) ? right_.coverage(px) : covered;
    if (left_.touches(x)) covered = left_.contains(columns) ? left_.coverage(px) : covered;
    return (columns >= fullFirst_) & (columns <= fullLast_) ? one : covered;
  }

 private:
  EdgeBand<Isa> left_, right_;
  std::int32_t fullFirst_ = 0, fullLast_ = -1;
};

}  // namespace brisel
