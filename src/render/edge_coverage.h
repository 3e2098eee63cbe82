// How much of the pixels beside a ray's edge is covered.
#pragma once

#include <cmath>
#include <limits>

#include "render/ray_shape.h"
#include "render/simd.h"

namespace brisel {

/// The band beside one edge: coverage fades over two pixels along the edge, over one around its
/// ends.
class EdgeBand {
 public:
  /// The edge is borrowed.
  void setEdge(const RayEdge& edge) {
    edge_ = &edge;
    line_ = lineThrough(edge.start, edge.end);
    // Two pixels, and what distances are rounded by, which grows with the coordinates.
    const float extent = std::fabs(edge.start.x) + std::fabs(edge.start.y) + std::fabs(edge.end.x) +
                         std::fabs(edge.end.y);
    const float fadeOut = 2.01f + extent * 0x1p-18f;
    const float rise = std::fabs(edge.alongY);
    constexpr float kEverywhere = std::numeric_limits<float>::infinity();
    const bool isPoint = edge.alongX == 0.0f && edge.alongY == 0.0f;
    reach_ = fadeOut * line_.norm / rise + 0.05f;
    leftEnd_ = isPoint ? -kEverywhere : edge.leftX - fadeOut;
    rightEnd_ = isPoint ? kEverywhere : edge.rightX + fadeOut;
    isNarrowest_ = rise >= 1.0f && std::fabs(edge.alongX) < 2.5f * rise;
  }

  template <class Isa>
  typename Lanes<Isa>::Float coverage(typename Lanes<Isa>::Float x,
                                      typename Lanes<Isa>::Float y) const {
    using L = Lanes<Isa>;
    const auto startX = x - edge_->start.x;
    const auto startY = y - edge_->start.y;
    const auto along = startX * edge_->alongX + startY * edge_->alongY;
    const auto beside = (along >= 0.0f) & (along <= edge_->lengthSquare);
    const auto off = L::absolute(line_.a * x + line_.b * y + line_.c) / line_.norm;
    const auto besideIt = L::clampUnit(1.0f - off / 2.0f);
    if (!L::any(!beside)) return besideIt;
    const auto endX = x - edge_->end.x;
    const auto endY = y - edge_->end.y;
    const auto nearest = L::minimum(endX * endX + endY * endY, startX * startX + startY * startY);
    return beside ? besideIt : L::clampUnit(1.0f - L::squareRoot(nearest));
  }

  /// How far from the edge, along a row, coverage has faded out for certain; infinite beside a
  /// horizontal edge.
  float reach() const { return reach_; }

  /// The x beyond which nothing is covered for certain. An edge so short that its corners coincide
  /// covers its whole band.
  float leftEnd() const { return leftEnd_; }
  float rightEnd() const { return rightEnd_; }

  /// Whether the edge rises so steeply that its band is the narrowest: by less than the slope at
  /// which twice a row's shift exceeds the least width.
  bool isNarrowest() const { return isNarrowest_; }

 private:
  const RayEdge* edge_ = nullptr;
  RayLine line_;
  float reach_ = 0.0f, leftEnd_ = 0.0f, rightEnd_ = 0.0f;
  bool isNarrowest_ = false;
};

}  // namespace brisel
