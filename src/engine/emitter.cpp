#include "engine/emitter.h"

#include <cmath>

#include "core/numbers.h"
#include "core/trigonometry.h"
#include "engine/contour_emitter.h"
#include "engine/mask_outline.h"

namespace brisel {
namespace {

float distance(PointF a, PointF b) {
  const float dx = b.x - a.x;
  const float dy = b.y - a.y;
  return std::sqrt(dx * dx + dy * dy);
}

/// The phase, in turns, that puts parameter 0 of a circle around `center` on `onCircle`.
float circleStartPhase(PointF center, PointF onCircle) {
  const float dy = center.y - onCircle.y;
  if (std::fabs(dy) < 0.0001f) return onCircle.x > center.x ? 0.25f : -0.25f;
  const float phase = arcTangent((center.x - onCircle.x) / dy) / (2.0f * kPi);
  return center.y > onCircle.y ? phase + 0.5f : phase;
}

/// Confines the parameter to the part of the path that emits: positive completeness grows from the
/// start of the path, negative from its end, and odd hundreds shrink the part from the other side.
float applyCompleteness(const RenderSettings& s, float t) {
  if (s.completenessOfPath == 1.0f) return t;
  const float f = s.completenessFraction;
  const bool even = s.completenessParity == 0;
  if (s.completenessOfPath < 0.0f) {
    return even ? 1.0f - t * -f : 1.0f - (t * (f + 1.0f) - f);
  }
  return even ? t * f : t * (1.0f - f) + f;
}

/// Moves the parameter along the path, wrapping at its ends.
float applyShift(const RenderSettings& s, float t) {
  if (s.shiftOfPath == 0.0f) return t;
  t += s.shiftOfPath;
  if (t > 1.0f) t -= std::trunc(t);
  if (t < 0.0f) t = t - std::trunc(t) + 1.0f;
  return t;
}

/// A point on the straight leg from `a` to `b`, which covers the share `share` of a path of
/// `length` pixels from parameter `begin` on.
EmitterPoint legPoint(PointF a, PointF b, float begin, float share, float length, float t) {
  EmitterPoint p;
  if (length == 0.0f || share == 0.0f) {
    p.x = a.x;
    p.y = a.y;
  } else {
    p.x = a.x + (t - begin) * (b.x - a.x) / share;
    p.y = a.y + (t - begin) * (b.y - a.y) / share;
    p.dirX = (b.x - a.x) / (share * length);
    p.dirY = (b.y - a.y) / (share * length);
  }
  if (std::fabs(a.x - b.x) < 0.0001f) {
    p.tangentAngle = b.y <= a.y ? -kPi / 2.0f : kPi / 2.0f;
  } else {
    p.tangentAngle = arcTangent((b.y - a.y) / (b.x - a.x));
    if (a.x > b.x) p.tangentAngle += kPi;
  }
  return p;
}

EmitterPoint polylinePoint(const RenderSettings& s, const Emitter& e, float t) {
  if (t < e.share1) return legPoint(s.start, s.controlStart, 0.0f, e.share1, e.length, t);
  const float second = e.share1 + e.share2;
  if (t < second) return legPoint(s.controlStart, s.end, e.share1, e.share2, e.length, t);
  return legPoint(s.end, s.controlEnd, second, e.share3, e.length, t);
}

EmitterPoint circlePoint(const RenderSettings& s, const Emitter& e, float t) {
  const float w = (t - e.startPhase) * 2.0f * kPi;
  return {s.start.x - e.radius * sine(w), s.start.y + e.radius * cosine(w), cosine(w), sine(w),
          (t - e.startPhase + 0.5f) * 2.0f * kPi};
}

EmitterPoint bezierCurvePoint(const Emitter& e, float t) {
  const float u = bezierParameterAt(e.curve, e.length, t);
  const PointF point = bezierPoint(e.curve, u);
  const PointF d = bezierDerivative(e.curve, u);
  if (d.x == 0.0f && d.y == 0.0f) return {point.x, point.y, 0.0f, 0.0f, 0.0f};
  float angle = arcTangent(d.y / d.x);
  if (d.x < 0.0f) angle += kPi;
  return {point.x, point.y, cosine(angle), sine(angle), angle};
}

}  // namespace

Emitter prepareEmitter(const RenderSettings& s) {
  Emitter e;
  switch (s.standardPath) {
    case StandardPath::Bezier:
      e.curve = {s.start, s.controlStart, s.end, s.controlEnd};
      e.length = bezierLength(e.curve);
      break;
    case StandardPath::Line:
      e.length = distance(s.start, s.controlEnd);
      break;
    case StandardPath::Polyline: {
      const float first = distance(s.start, s.controlStart);
      const float second = distance(s.controlStart, s.end);
      const float third = distance(s.end, s.controlEnd);
      e.length = first + second + third;
      if (e.length == 0.0f) break;
      e.share1 = first / e.length;
      e.share2 = second / e.length;
      e.share3 = third / e.length;
      break;
    }
    case StandardPath::Circle:
      e.radius = distance(s.start, s.controlStart);
      e.startPhase = circleStartPhase(s.start, s.controlStart);
      break;
    default:
      break;
  }
  return e;
}

EmitterPoint emitterPoint(const RenderSettings& s, const Emitter& e, float t) {
  t = applyShift(s, applyCompleteness(s, t));
  if (e.maskOutline != nullptr) return evaluateMaskOutline(*e.maskOutline, t);
  switch (s.standardPath) {
    case StandardPath::Point:
      return {s.start.x + t * s.directionCos, s.start.y + t * s.directionSin, s.directionSin,
              -s.directionCos, s.direction};
    case StandardPath::Bezier:
      return bezierCurvePoint(e, t);
    case StandardPath::Line:
      return legPoint(s.start, s.controlEnd, 0.0f, 1.0f, e.length, t);
    case StandardPath::Polyline:
      return polylinePoint(s, e, t);
    case StandardPath::Circle:
      return circlePoint(s, e, t);
    case StandardPath::ContourAlphaChannel:
      return e.contour == nullptr ? EmitterPoint{} : evaluateContour(*e.contour, t);
    default:
      return {};
  }
}

}  // namespace brisel
