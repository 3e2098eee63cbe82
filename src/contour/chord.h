// The straight line through two vertices.
#pragma once

#include <cmath>

#include "contour/vertex_set.h"

namespace brisel {

class CLine2D {
 public:
  CLine2D(const CMeshVertex& from, const CMeshVertex& to)
      : a_(to.y - from.y), b_(-(to.x - from.x)) {
    k_ = -(a_ * from.x + b_ * from.y);
    norm_ = std::sqrt(a_ * a_ + b_ * b_);
  }

  /// The signed distance of (x, y), in pixels; 0 from a line between two vertices in one place.
  double Distance(double x, double y) const {
    return kEpsilon > norm_ ? 0 : (a_ * x + b_ * y + k_) / norm_;
  }

  /// By how much the distance grows along (dx, dy), not yet divided by the distance of the two
  /// vertices. Exact for steps in coarse binary fractions.
  double Slope(double dx, double dy) const { return a_ * dx + b_ * dy; }

  /// Whether the distance grows, or at least does not fall, as y does.
  bool GrowsDownwards() const { return b_ >= 0; }

 private:
  static constexpr float kEpsilon = 0.01f;
  double a_, b_, k_, norm_;
};

}  // namespace brisel
