#include "engine/mask_outline.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/numbers.h"
#include "core/trigonometry.h"

namespace brisel {
namespace {

/// A closed outline keeps its first vertex in place, an open one swaps its ends.
std::vector<MaskVertex> reversed(const std::vector<MaskVertex>& vertices, bool isOpen) {
  const std::size_t count = vertices.size();
  std::vector<MaskVertex> result(count);
  for (std::size_t i = 0; i < count; ++i) {
    const MaskVertex& v = vertices[i];
    result[(count - i - (isOpen ? 1 : 0)) % count] = {v.point, v.out, v.in};
  }
  return result;
}

EmitterPoint pointWithTangent(PointF point, PointF tangent) {
  float angle = kPi / 2.0f;
  if (tangent.x != 0.0f) {
    angle = arcTangent(tangent.y / tangent.x);
    if (tangent.x < 0.0f) angle += kPi;
  }
  return {point.x, point.y, cosine(angle), sine(angle), angle};
}

/// The first segment whose end is not before `t`, or the number of segments when there is no such
/// segment. The search ends at a share that is not a number, as a walk along the shares would.
std::size_t segmentAt(const MaskOutline& outline, float t) {
  const auto begin = outline.shareBefore.begin() + 1;
  const auto end = std::partition_point(begin, outline.shareBefore.end(),
                                        [](float sum) { return !std::isnan(sum); });
  const auto found = std::lower_bound(begin, end, t);
  return found == end ? outline.vertexCount() : static_cast<std::size_t>(found - begin);
}

}  // namespace

CubicBezier MaskOutline::segment(std::size_t k) const {
  const MaskVertex& from = vertices[k];
  const MaskVertex& to = vertices[(k + 1) % vertices.size()];
  return {from.point, from.out, to.in, to.point};
}

MaskOutline buildMaskOutline(std::vector<MaskVertex> vertices, bool isOpen, bool isInverted) {
  constexpr float kDegenerateLength = 0.00001f;
  constexpr float kDegenerateStandIn = 0.01f;
  MaskOutline outline;
  isOpen = isOpen || vertices.size() == 1;
  outline.isOpen = isOpen;
  outline.vertices = isInverted ? reversed(vertices, isOpen) : std::move(vertices);
  const std::size_t count = outline.vertexCount();
  if (count == 0) return outline;

  outline.segmentLength.resize(count);
  const std::size_t segments = isOpen ? count - 1 : count;
  for (std::size_t k = 0; k < segments; ++k) {
    outline.segmentLength[k] = bezierLength(outline.segment(k));
    outline.outlineLength += outline.segmentLength[k];
  }
  outline.segmentShare = outline.segmentLength;
  if (outline.outlineLength < kDegenerateLength) {
    outline.isDegenerate = true;
    outline.outlineLength = kDegenerateStandIn;
    outline.segmentShare[0] = kDegenerateStandIn;
  }
  outline.shareBefore.resize(count + 1);
  for (std::size_t k = 0; k < count; ++k) {
    outline.segmentShare[k] = outline.segmentShare[k] / outline.outlineLength;
    outline.shareBefore[k + 1] = outline.shareBefore[k] + outline.segmentShare[k];
  }
  return outline;
}

EmitterPoint evaluateMaskOutline(const MaskOutline& outline, float t) {
  if (!outline.isOpen) t = fraction(t);
  const MaskVertex& first = outline.vertices.front();
  const MaskVertex& last = outline.vertices.back();
  if (t >= 1.0f) {
    return pointWithTangent(last.point, {last.in.x - last.point.x, last.in.y - last.point.y});
  }
  if (outline.isDegenerate || t <= 0.0f) {
    return pointWithTangent(first.point,
                            {first.out.x - first.point.x, first.out.y - first.point.y});
  }

  std::size_t k = segmentAt(outline, t);
  float before = outline.shareBefore.back();
  if (k == outline.vertexCount()) {
    k = 0;
  } else {
    before = outline.shareBefore[k];
  }
  const float local = (t - before) / outline.segmentShare[k];
  const CubicBezier curve = outline.segment(k);
  const float u = bezierParameterAt(curve, outline.segmentLength[k], local);
  return pointWithTangent(bezierPoint(curve, u), bezierDerivative(curve, u));
}

}  // namespace brisel
