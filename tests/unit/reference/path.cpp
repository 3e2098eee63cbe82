#include "simulation.h"

namespace reference {
namespace {

using brisel::PointF;

PointF bezierPoint(const PointF (&k)[4], float u) {
  const float v = 1.0f - u;
  const auto at = [&](float k0, float k1, float k2, float k3) {
    return v * v * v * k0 + 3.0f * u * (v * v) * k1 + 3.0f * (u * u) * v * k2 + u * u * u * k3;
  };
  return {at(k[0].x, k[1].x, k[2].x, k[3].x), at(k[0].y, k[1].y, k[2].y, k[3].y)};
}

PointF bezierDerivative(const PointF (&k)[4], float u) {
  const auto at = [&](float k0, float k1, float k2, float k3) {
    return 3.0f * (u * u * (k3 - 3.0f * k2 + 3.0f * k1 - k0) + 2.0f * u * (k2 - 2.0f * k1 + k0) +
                   (k1 - k0));
  };
  return {at(k[0].x, k[1].x, k[2].x, k[3].x), at(k[0].y, k[1].y, k[2].y, k[3].y)};
}

float bezierLength(const PointF (&k)[4]) {
  float sum = 0;
  for (int i = 0; i < 10; ++i) {
    const PointF d = bezierDerivative(k, (real(i) + 0.5f) / 10.0f);
    sum += std::sqrt(d.x * d.x + d.y * d.y);
  }
  return sum / 10.0f;
}

float bezierParameterAt(const PointF (&k)[4], float t) {
  if (t <= 0) return 0;
  if (t >= 1) return 1;
  const float target = bezierLength(k) * t;
  float u = 0.5f;
  float step = 0.5f;
  for (int i = 0; i < 10; ++i) {
    const auto second = [&](float k0, float k1) { return k0 + u * (k1 - k0); };
    const auto third = [&](float k0, float k1, float k2) {
      return k0 + 2.0f * u * (k1 - k0) + u * u * (k2 - 2.0f * k1 + k0);
    };
    const PointF leftPart[4] = {k[0],
                                {second(k[0].x, k[1].x), second(k[0].y, k[1].y)},
                                {third(k[0].x, k[1].x, k[2].x), third(k[0].y, k[1].y, k[2].y)},
                                bezierPoint(k, u)};
    u = target > bezierLength(leftPart) ? u + step : u - step;
    step = step / 2.0f;
  }
  return u;
}

float distance(PointF a, PointF b) {
  return std::sqrt(square(b.x - a.x) + square(b.y - a.y));
}

float withCompletenessAndShift(const brisel::RenderSettings& s, float t) {
  if (s.completenessOfPath != 1.0f) {
    const float f = s.completenessFraction;
    const bool even = s.completenessParity == 0;
    if (s.completenessOfPath < 0) {
      t = even ? 1.0f - t * -f : 1.0f - (t * (f + 1.0f) - f);
    } else {
      t = even ? t * f : t * (1.0f - f) + f;
    }
  }
  if (s.shiftOfPath != 0) {
    t += s.shiftOfPath;
    if (t > 1) t -= std::trunc(t);
    if (t < 0) t = t - std::trunc(t) + 1.0f;
  }
  return t;
}

/// On the leg from a to b, which begins at the share `s` of the whole and takes the share `g`.
PathPoint onLeg(PointF a, PointF b, float t, float s, float g, float length) {
  PathPoint p{a.x, a.y, 0, 0, 0};
  if (length != 0 && g != 0) {
    p = {a.x + (t - s) * (b.x - a.x) / g, a.y + (t - s) * (b.y - a.y) / g,
         (b.x - a.x) / (g * length), (b.y - a.y) / (g * length), 0};
  }
  if (std::abs(a.x - b.x) < 0.0001f) {
    p.tangentAngle = b.y <= a.y ? -kPi / 2.0f : kPi / 2.0f;
  } else {
    p.tangentAngle = atan((b.y - a.y) / (b.x - a.x)) + (a.x > b.x ? kPi : 0.0f);
  }
  return p;
}

PathPoint onCircle(PointF centre, PointF through, float t) {
  const float radius = distance(centre, through);
  float s0 = through.x > centre.x ? 0.25f : -0.25f;
  if (!(std::abs(centre.y - through.y) < 0.0001f)) {
    s0 = atan((centre.x - through.x) / (centre.y - through.y)) / (2.0f * kPi);
    if (centre.y > through.y) s0 += 0.5f;
  }
  const float w = (t - s0) * 2.0f * kPi;
  return {centre.x - radius * sine(w), centre.y + radius * cosine(w), cosine(w), sine(w),
          (t - s0 + 0.5f) * 2.0f * kPi};
}

PathPoint onCurve(const PointF (&k)[4], float t) {
  const float u = bezierParameterAt(k, t);
  const PointF p = bezierPoint(k, u);
  const PointF d = bezierDerivative(k, u);
  if (d.x == 0 && d.y == 0) return {p.x, p.y, 0, 0, 0};
  const float angle = atan(d.y / d.x) + (d.x < 0 ? kPi : 0.0f);
  return {p.x, p.y, cosine(angle), sine(angle), angle};
}

}  // namespace

PathPoint emitterPoint(const brisel::RenderSettings& s, float t) {
  const PointF k[4] = {s.start, s.controlStart, s.end, s.controlEnd};
  t = withCompletenessAndShift(s, t);
  switch (static_cast<int>(s.standardPath)) {
    case 1:
      return {k[0].x + t * cosine(s.direction), k[0].y + t * sine(s.direction), sine(s.direction),
              -cosine(s.direction), s.direction};
    case 2:
      return onCurve(k, t);
    case 3:
      return onLeg(k[0], k[3], t, 0, 1, distance(k[0], k[3]));
    case 4: {
      const float legs[] = {distance(k[0], k[1]), distance(k[1], k[2]), distance(k[2], k[3])};
      const float length = legs[0] + legs[1] + legs[2];
      const float f1 = legs[0] / length;
      const float f2 = legs[1] / length;
      const float f3 = legs[2] / length;
      if (t < f1) return onLeg(k[0], k[1], t, 0, f1, length);
      if (t < f1 + f2) return onLeg(k[1], k[2], t, f1, f2, length);
      return onLeg(k[2], k[3], t, f1 + f2, f3, length);
    }
    default:
      return onCircle(k[0], k[1], t);
  }
}

}  // namespace reference
