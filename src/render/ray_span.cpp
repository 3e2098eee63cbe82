#include "render/ray_span.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "engine/numbers.h"

namespace brisel {
namespace {

std::int32_t floorToInt(float value) {
  const std::int32_t whole = truncToInt(value);
  const bool isAbove = value < static_cast<float>(whole);
  return isAbove && whole > std::numeric_limits<std::int32_t>::min() ? whole - 1 : whole;
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

/// The width of the band beside `edge`, which crosses row `y` at `x`.
float bandWidth(const RayEdge& edge, float x, float y, float (*crossing)(const RayEdge&, float)) {
  constexpr float kLeast = 7.0f;
  if (edge.risesSteeply) return kLeast;
  return std::max(kLeast, 2.0f * std::fabs(x - crossing(edge, y - 1.0f)));
}

}  // namespace

RaySpan spanOfRow(const RayEdge& left, const RayEdge& right, float y, bool highQuality) {
  const float xl = leftCrossing(left, y);
  const float xr = rightCrossing(right, y);
  RaySpan span;
  span.fullFirst = truncToInt(highQuality ? xl + 1.0f : xl);
  span.fullLast = floorToInt(xr);
  if (!highQuality) return span;

  const float clearLeft = std::max(lowestCovered(left), xl - left.fadeReach);
  const float clearRight = std::min(highestCovered(right), xr + right.fadeReach);
  span.leftFirst =
      std::max(truncToInt(xl - bandWidth(left, xl, y, leftCrossing)), floorToInt(clearLeft));
  span.leftLast = floorToInt(xl);
  span.rightFirst = std::max(truncToInt(xr + 1.0f), span.fullFirst);
  span.rightLast = std::min(floorToInt(xr + bandWidth(right, xr, y, rightCrossing)),
                            floorToInt(clearRight + 1.0f));
  return span;
}

}  // namespace brisel
