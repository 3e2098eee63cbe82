#include "render/ray_span.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "engine/numbers.h"

namespace brisel {
namespace {

std::int32_t floorToInt(float value) {
  return truncToInt(std::floor(value));
}

/// An edge so short that its corners coincide covers its whole band.
bool isPoint(const RayEdge& edge) {
  return edge.line.a == 0.0f && edge.line.b == 0.0f;
}

/// Of a band beside `edge`, the x beyond which nothing is covered: two pixels from the edge's box.
float lowestCovered(const RayEdge& edge) {
  if (isPoint(edge)) return -std::numeric_limits<float>::infinity();
  return std::min(edge.start.x, edge.end.x) - 2.0f;
}
float highestCovered(const RayEdge& edge) {
  if (isPoint(edge)) return std::numeric_limits<float>::infinity();
  return std::max(edge.start.x, edge.end.x) + 2.0f;
}

/// Of a band beside an edge, the distance along the row at which the coverage has faded out for
/// certain; infinite beside a horizontal edge.
float fadeReach(const RayEdge& edge) {
  return 2.0f * edge.line.norm / std::fabs(edge.line.a) * 1.001f + 1.0f;
}

}  // namespace

RaySpan spanOfRow(const RayEdge& left, const RayEdge& right, float y, bool highQuality) {
  const float xl = leftCrossing(left, y);
  const float xr = rightCrossing(right, y);
  RaySpan span;
  span.leftEdge = &left;
  span.rightEdge = &right;
  span.fullFirst = truncToInt(highQuality ? xl + 1.0f : xl);
  span.fullLast = floorToInt(xr);
  if (!highQuality) return span;

  const float bandLeft = std::max(7.0f, 2.0f * std::fabs(xl - leftCrossing(left, y - 1.0f)));
  const float bandRight = std::max(7.0f, 2.0f * std::fabs(xr - rightCrossing(right, y - 1.0f)));
  const float clearLeft = std::max(lowestCovered(left), xl - fadeReach(left));
  const float clearRight = std::min(highestCovered(right), xr + fadeReach(right));
  span.leftFirst = std::max(truncToInt(xl - bandLeft), floorToInt(clearLeft));
  span.leftLast = floorToInt(xl);
  span.rightFirst = std::max(truncToInt(xr + 1.0f), span.fullFirst);
  span.rightLast = std::min(floorToInt(xr + bandRight), floorToInt(clearRight + 1.0f));
  return span;
}

}  // namespace brisel
