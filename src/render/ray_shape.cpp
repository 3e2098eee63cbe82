#include "render/ray_shape.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "engine/trigonometry.h"
#include "render/drawing.h"

namespace brisel {
namespace {

struct HalfWidths {
  float base;
  float tip;
};

HalfWidths quadHalfWidths(StarType type, float width) {
  switch (type) {
    case StarType::Type2:
      return {width / 2.0f, width / 2.0f};
    case StarType::Type3:
      return {width / 2.0f, width / 20.0f};
    case StarType::Type4:
      return {width / 5.0f, width * 1.5f};
    default:
      return {width, width};
  }
}

RayLine lineThrough(PointF p, PointF q) {
  RayLine line;
  line.a = q.y - p.y;
  line.b = p.x - q.x;
  line.c = -line.a * p.x - line.b * p.y;
  line.norm = std::sqrt(line.a * line.a + line.b * line.b);
  if (line.norm == 0.0f) line.norm = 1.0f;
  return line;
}

RayEdge edgeBetween(PointF start, PointF end) {
  RayEdge edge;
  edge.start = start;
  edge.end = end;
  edge.line = lineThrough(start, end);
  edge.leftX = std::min(start.x, end.x);
  edge.rightX = std::max(start.x, end.x);
  const float rise = std::fabs(edge.line.a);
  const float run = std::fabs(edge.line.b);
  edge.isLevel = rise < 1.0f;
  edge.isPoint = rise == 0.0f && run == 0.0f;
  // Infinite beside a horizontal edge.
  edge.fadeReach = 2.0f * edge.line.norm / rise * 1.001f + 1.0f;
  // Less than the slope at which twice a row's shift exceeds the least width of a band.
  edge.risesSteeply = !edge.isLevel && run < 2.5f * rise;
  return edge;
}

/// Lists the edges from the one whose start corner has the greatest y, the last such one if
/// several.
void orderEdges(RayShape& ray, std::span<const RayEdge> edges) {
  std::size_t first = 0;
  ray.yMin = edges[0].start.y;
  ray.xMin = ray.xMax = edges[0].start.x;
  for (std::size_t i = 1; i < edges.size(); ++i) {
    if (edges[i].start.y >= edges[first].start.y) first = i;
    ray.yMin = std::min(ray.yMin, edges[i].start.y);
    ray.xMin = std::min(ray.xMin, edges[i].start.x);
    ray.xMax = std::max(ray.xMax, edges[i].start.x);
  }
  ray.edgeCount = static_cast<std::int32_t>(edges.size());
  for (std::size_t i = 0; i < edges.size(); ++i) {
    ray.edges[i] = edges[(first + i) % edges.size()];
  }
}

}  // namespace

bool buildRay(RayShape& ray, StarType type, PointF centre, float length, float width,
              float angleDegrees, float currentRandomFactor) {
  constexpr float kLeastHalfWidth = 0.0001f;
  const float angle = angleDegrees * kDrawingPi / 180.0f;
  const float c = cosine(angle);
  const float s = sine(angle);
  const auto placed = [&](float x, float y) {
    return PointF{x * c - y * s + centre.x, x * s + y * c + centre.y};
  };
  const auto finite = [](PointF p) { return std::isfinite(p.x) && std::isfinite(p.y); };
  ray.length = length;

  if (type == StarType::Type1) {
    const PointF corners[3] = {placed(-width, 0.0f), placed(0.0f, length), placed(width, 0.0f)};
    if (!std::all_of(corners, corners + 3, finite)) return false;
    ray.shading = RayShading::Soft;
    ray.baseHalfWidth = std::max(width, kLeastHalfWidth);
    ray.base = lineThrough(corners[0], centre);
    ray.across = lineThrough(centre, corners[1]);
    const RayEdge edges[3] = {edgeBetween(corners[0], corners[2]),
                              edgeBetween(corners[2], corners[1]),
                              edgeBetween(corners[1], corners[0])};
    orderEdges(ray, edges);
    return true;
  }

  HalfWidths half = quadHalfWidths(type, width);
  half.base = std::max(half.base, kLeastHalfWidth);
  half.tip = std::max(half.tip, kLeastHalfWidth);
  const PointF corners[4] = {placed(half.base, 0.0f), placed(half.tip, length),
                             placed(-half.tip, length), placed(-half.base, 0.0f)};
  if (!std::all_of(corners, corners + 4, finite)) return false;
  ray.baseHalfWidth = std::max(half.base, half.tip);
  ray.base = lineThrough(corners[0], centre);
  if (type == StarType::Type5) {
    ray.shading = RayShading::Side;
    ray.across = currentRandomFactor <= 0.5f ? lineThrough(corners[2], corners[3])
                                             : lineThrough(corners[0], corners[1]);
  } else {
    ray.shading = RayShading::Axis;
    ray.across = lineThrough(centre, {centre.x + length * -s, centre.y + length * c});
  }
  const RayEdge edges[4] = {
      edgeBetween(corners[0], corners[1]), edgeBetween(corners[1], corners[2]),
      edgeBetween(corners[2], corners[3]), edgeBetween(corners[3], corners[0])};
  orderEdges(ray, edges);
  return true;
}

}  // namespace brisel
