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
  void beginEdge(const RayEdge& edge) {
    start_ = edge.start;
    end_ = edge.end;
    edgeX_ = edge.end.x - edge.start.x;
    edgeY_ = edge.end.y - edge.start.y;
    lengthSquare_ = edgeX_ * edgeX_ + edgeY_ * edgeY_;
    line_ = edge.line;
  }

  void beginRow(float y, std::int32_t first, std::int32_t last) {
    first_ = first;
    last_ = last;
    const float startY = y - start_.y;
    const float endY = y - end_.y;
    alongY_ = startY * edgeY_;
    startSquare_ = startY * startY;
    endSquare_ = endY * endY;
    lineY_ = line_.b * y;
  }

  /// Whether some of the lanes from column `x` on lie in the band.
  bool touches(std::int32_t x) const { return x <= last_ && x + L::kCount > first_; }

  auto contains(typename L::Int columns) const { return (columns >= first_) & (columns <= last_); }

  Float coverage(Float px) const {
    const Float startX = px - start_.x;
    const Float along = startX * edgeX_ + alongY_;
    const auto beside = (along >= 0.0f) & (along <= lengthSquare_);
    const Float off = L::absolute(line_.a * px + lineY_ + line_.c) / line_.norm;
    const Float besideIt = L::clampUnit(1.0f - off / 2.0f);
    if (!L::any(!beside)) return besideIt;
    const Float endX = px - end_.x;
    const Float nearest = L::minimum(endX * endX + endSquare_, startX * startX + startSquare_);
    return beside ? besideIt : L::clampUnit(1.0f - L::squareRoot(nearest));
  }

 private:
  std::int32_t first_ = 0, last_ = -1;
  PointF start_, end_;
  RayLine line_;
  float edgeX_ = 0.0f, edgeY_ = 0.0f, lengthSquare_ = 0.0f;
  float alongY_ = 0.0f, startSquare_ = 0.0f, endSquare_ = 0.0f, lineY_ = 0.0f;
};

template <class Isa>
class EdgeCoverage {
  using L = Lanes<Isa>;
  using Float = typename L::Float;

 public:
  void beginEdges(const RayEdge& left, const RayEdge& right) {
    left_.beginEdge(left);
    right_.beginEdge(right);
  }

  template <class Spans>
  void beginRow(float y, const Spans& spans, int row) {
    left_.beginRow(y, spans.leftFirst[row], spans.leftLast[row]);
    right_.beginRow(y, spans.rightFirst[row], spans.rightLast[row]);
    fullFirst_ = spans.fullFirst[row];
    fullLast_ = spans.fullLast[row];
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
