// One ray of a ray star: a triangle or quad that points away from the star's center.
#pragma once

#include <cstdint>

#include "core/geometry.h"
#include "render/sprites/specs.h"

namespace brisel {

enum class RayShading : std::uint8_t { Soft, Axis, Side };

/// The line a x + b y + c = 0; `norm` is the length of (a, b), or 1 when that is 0.
struct RayLine {
  float a = 0.0f, b = 0.0f, c = 0.0f, norm = 1.0f;
};

RayLine lineThrough(PointF p, PointF q);

/// The edges of a ray by number, in painting order: the first starts at the corner with the
/// greatest y. Light fades beside them in bands, over two pixels along an edge, over one around its
/// ends.
struct RayEdges {
  static constexpr int kMost = 4;
  float startX[kMost], startY[kMost];
  float endX[kMost], endY[kMost];
  float alongX[kMost], alongY[kMost];  // from start to end
  float leftX[kMost], rightX[kMost];
  bool isLevel[kMost];  // within one pixel of horizontal

  // Those of smooth edges only
  float lengthSquare[kMost];
  float offset[kMost];  // alongY x - alongX y + offset = 0 on the edge's line
  float norm[kMost];    // the edge's length, or 1 when that is 0
  /// How far from the edge, along a row, the light has faded out for certain; infinite for a
  /// horizontal edge.
  float reach[kMost];
  /// The x beyond which nothing is covered for certain. An edge so short that its corners coincide
  /// covers its whole band.
  float leftEnd[kMost], rightEnd[kMost];
  /// Whether it rises so steeply that its band is the narrowest: by less than the slope at which
  /// twice a row's shift exceeds the least width.
  bool isNarrowest[kMost];
};

/// In pixels of the frame.
struct RayShape {
  float length = 0.0f;
  float baseHalfWidth = 0.0f;  // the unit of distances across the ray
  RayShading shading = RayShading::Axis;
  RayLine base;    // distances from it run along the ray
  RayLine across;  // distances from it run across the ray
  std::int32_t edgeCount = 0;
  RayEdges edges;
  float yMin = 0.0f;
  float xMin = 0.0f, xMax = 0.0f;
};

/// Builds the ray at `angleDegrees` of a fan. One with a corner that is not a finite point has no
/// edges and is not painted.
void buildRay(RayShape& ray, const RaySpec& rays, float angleDegrees);

/// The angles of a fan's rays, one after the other.
class RayAngles {
 public:
  explicit RayAngles(const RaySpec& rays)
      : count_(rays.count), step_(360.0f / rays.count), angle_(rays.angleDegrees) {}

  bool atEnd() const { return !(static_cast<float>(index_) < count_); }
  float degrees() const { return angle_; }
  std::int32_t index() const { return index_; }
  void next() {
    ++index_;
    angle_ += step_;
  }

 private:
  float count_, step_, angle_;
  std::int32_t index_ = 0;
};

}  // namespace brisel
