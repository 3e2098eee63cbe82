// Cubic Bézier curves: points, derivatives, approximate length and arc-length parameters.
#pragma once

#include "core/geometry.h"

namespace brisel {

/// Runs from k0 to k3 with k1 and k2 as inner control points. Pixels.
struct CubicBezier {
  PointF k0, k1, k2, k3;
};

/// The point at parameter `u` in [0, 1].
PointF bezierPoint(const CubicBezier& curve, float u);

/// The derivative by the parameter at `u` in [0, 1].
PointF bezierDerivative(const CubicBezier& curve, float u);

/// The curve's length in pixels by the midpoint rule with ten samples.
float bezierLength(const CubicBezier& curve);

/// The parameter at which the share `t` of the curve's length is covered, by ten bisections.
/// `length` is bezierLength(curve), which callers know already.
float bezierParameterAt(const CubicBezier& curve, float length, float t);

}  // namespace brisel
