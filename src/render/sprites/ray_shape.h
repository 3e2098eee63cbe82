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

struct RayEdge {
  PointF start;
  PointF end;
  float alongX, alongY;  // from start to end
  float lengthSquare;
  float leftX, rightX;
  bool isLevel;  // within one pixel of horizontal
};

/// Built anew for each ray, in pixels of the layer.
struct RayShape {
  float length = 0.0f;
  float baseHalfWidth = 0.0f;  // the unit of distances across the ray
  RayShading shading = RayShading::Axis;
  RayLine base;    // distances from it run along the ray
  RayLine across;  // distances from it run across the ray
  std::int32_t edgeCount = 0;
  RayEdge edges[4];  // in painting order: the first starts at the corner with the greatest y
  float yMin = 0.0f;
  float xMin = 0.0f, xMax = 0.0f;
};

/// Builds the ray at `angleDegrees` of a fan. Returns false when a corner is not a finite point;
/// such a ray is not painted.
bool buildRay(RayShape& ray, const RaySpec& rays, float angleDegrees);

}  // namespace brisel
