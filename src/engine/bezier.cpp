#include "engine/bezier.h"

#include <cmath>

namespace brisel {
namespace {

float pointAt(float k0, float k1, float k2, float k3, float u) {
  const float v = 1.0f - u;
  return v * v * v * k0 + 3.0f * u * (v * v) * k1 + 3.0f * (u * u) * v * k2 + u * u * u * k3;
}

float derivativeAt(float k0, float k1, float k2, float k3, float u) {
  return 3.0f *
         (u * u * (k3 - 3.0f * k2 + 3.0f * k1 - k0) + 2.0f * u * (k2 - 2.0f * k1 + k0) + (k1 - k0));
}

/// The part of the curve from its start to parameter `u`.
CubicBezier leftPart(const CubicBezier& c, float u) {
  const auto second = [u](float k0, float k1) { return k0 + u * (k1 - k0); };
  const auto third = [u](float k0, float k1, float k2) {
    return k0 + 2.0f * u * (k1 - k0) + u * u * (k2 - 2.0f * k1 + k0);
  };
  return {c.k0,
          {second(c.k0.x, c.k1.x), second(c.k0.y, c.k1.y)},
          {third(c.k0.x, c.k1.x, c.k2.x), third(c.k0.y, c.k1.y, c.k2.y)},
          bezierPoint(c, u)};
}

}  // namespace

PointF bezierPoint(const CubicBezier& c, float u) {
  return {pointAt(c.k0.x, c.k1.x, c.k2.x, c.k3.x, u), pointAt(c.k0.y, c.k1.y, c.k2.y, c.k3.y, u)};
}

PointF bezierDerivative(const CubicBezier& c, float u) {
  return {derivativeAt(c.k0.x, c.k1.x, c.k2.x, c.k3.x, u),
          derivativeAt(c.k0.y, c.k1.y, c.k2.y, c.k3.y, u)};
}

float bezierLength(const CubicBezier& curve) {
  float sum = 0.0f;
  for (int i = 0; i < 10; ++i) {
    const PointF d = bezierDerivative(curve, (static_cast<float>(i) + 0.5f) / 10.0f);
    sum += std::sqrt(d.x * d.x + d.y * d.y);
  }
  return sum / 10.0f;
}

float bezierParameterAt(const CubicBezier& curve, float length, float t) {
  if (t <= 0.0f) return 0.0f;
  if (t >= 1.0f) return 1.0f;
  const float target = length * t;
  float u = 0.5f;
  float step = 0.5f;
  for (int i = 0; i < 10; ++i) {
    if (target > bezierLength(leftPart(curve, u))) {
      u += step;
    } else {
      u -= step;
    }
    step = step / 2.0f;
  }
  return u;
}

}  // namespace brisel
