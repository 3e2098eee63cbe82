#include "render/sprites/ray_shape.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

#include "core/numbers.h"
#include "core/trigonometry.h"
#include "render/simd/lanes.h"

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

/// Derives all else from where the edges start and end, for all of them at once, so that the
/// compiler makes vectors of it.
void deriveEdges(RayEdges& edges) {
  for (int i = 0; i < RayEdges::kMost; ++i) {
    const float startX = edges.startX[i];
    const float endX = edges.endX[i];
    edges.alongX[i] = endX - startX;
    edges.alongY[i] = edges.endY[i] - edges.startY[i];
    edges.leftX[i] = startX < endX ? startX : endX;
    edges.rightX[i] = startX < endX ? endX : startX;
  }
  for (int i = 0; i < RayEdges::kMost; ++i) edges.isLevel[i] = std::fabs(edges.alongY[i]) < 1.0f;
}

/// The same for what the bands of smooth edges need.
void deriveBands(RayEdges& edges) {
  constexpr float kEverywhere = std::numeric_limits<float>::infinity();
  for (int i = 0; i < RayEdges::kMost; ++i) {
    const float startX = edges.startX[i];
    const float startY = edges.startY[i];
    const float alongX = edges.alongX[i];
    const float alongY = edges.alongY[i];
    const float lengthSquare = alongX * alongX + alongY * alongY;
    const float length = std::sqrt(lengthSquare);
    const float norm = length == 0.0f ? 1.0f : length;
    edges.lengthSquare[i] = lengthSquare;
    edges.offset[i] = alongX * startY - alongY * startX;
    edges.norm[i] = norm;
    // Two pixels, and the rounding of distances, which grows with the coordinates.
    const float extent =
        std::fabs(startX) + std::fabs(startY) + std::fabs(edges.endX[i]) + std::fabs(edges.endY[i]);
    const float fadeOut = 2.01f + extent * 0x1p-18f;
    const bool isPoint = std::fabs(alongX) + std::fabs(alongY) == 0.0f;
    edges.reach[i] = fadeOut * norm / std::fabs(alongY) + 0.05f;
    edges.leftEnd[i] = isPoint ? -kEverywhere : edges.leftX[i] - fadeOut;
    edges.rightEnd[i] = isPoint ? kEverywhere : edges.rightX[i] + fadeOut;
  }
  for (int i = 0; i < RayEdges::kMost; ++i) {
    const float rise = std::fabs(edges.alongY[i]);
    edges.isNarrowest[i] = (rise >= 1.0f) & (std::fabs(edges.alongX[i]) < 2.5f * rise);
  }
}

using Four = VectorOf<float, RayEdges::kMost>::Type;
using FourMask = VectorOf<std::int32_t, RayEdges::kMost>::Type;

/// One coordinate of each corner, from the next one on. A triangle's first corner is there twice.
template <std::size_t kCount>
Four fromNext(Four v) {
  if constexpr (kCount == 3) return Four{v[1], v[2], v[0], v[1]};
  return Four{v[1], v[2], v[3], v[0]};
}

/// The same from corner `first` on. Which one it is differs from ray to ray, so neither a branch
/// nor a vector read from memory that was written by pieces is in the way.
template <std::size_t kCount>
Four fromCorner(Four v, std::int32_t first) {
  const auto isSet = [&](std::int32_t bit) { return (FourMask{} + (first & bit)) != 0; };
  const Four even = isSet(2) ? fromNext<kCount>(fromNext<kCount>(v)) : v;
  return isSet(1) ? fromNext<kCount>(even) : even;
}

/// Lists the edges around `corners` from the corner with the greatest y on, the last such one if
/// several.
template <std::size_t kCount>
void listEdges(RayShape& ray, const std::array<PointF, kCount>& corners, bool isSmooth) {
  std::int32_t top = 0;
  float yMax = corners[0].y;
  ray.yMin = corners[0].y;
  ray.xMin = ray.xMax = corners[0].x;
  for (std::size_t i = 1; i < kCount; ++i) {
    top = corners[i].y >= yMax ? static_cast<std::int32_t>(i) : top;
    yMax = std::max(yMax, corners[i].y);
    ray.yMin = std::min(ray.yMin, corners[i].y);
    ray.xMin = std::min(ray.xMin, corners[i].x);
    ray.xMax = std::max(ray.xMax, corners[i].x);
  }
  ray.edgeCount = static_cast<std::int32_t>(kCount);
  constexpr std::size_t kFourth = 3 % kCount;
  const auto place = [&](Four v, float* starts, float* ends) {
    const Four start = fromCorner<kCount>(v, top);
    const Four end = fromNext<kCount>(start);
    std::memcpy(starts, &start, sizeof start);
    std::memcpy(ends, &end, sizeof end);
  };
  place(Four{corners[0].x, corners[1].x, corners[2].x, corners[kFourth].x}, ray.edges.startX,
        ray.edges.endX);
  place(Four{corners[0].y, corners[1].y, corners[2].y, corners[kFourth].y}, ray.edges.startY,
        ray.edges.endY);
  deriveEdges(ray.edges);
  if (isSmooth) deriveBands(ray.edges);
}

}  // namespace

RayLine lineThrough(PointF p, PointF q) {
  RayLine line;
  line.a = q.y - p.y;
  line.b = p.x - q.x;
  line.c = -line.a * p.x - line.b * p.y;
  line.norm = std::sqrt(line.a * line.a + line.b * line.b);
  if (line.norm == 0.0f) line.norm = 1.0f;
  return line;
}

void buildRay(RayShape& ray, const RaySpec& rays, float angleDegrees) {
  constexpr float kLeastHalfWidth = 0.0001f;
  const PointF center = rays.center;
  const float length = rays.length;
  const float width = rays.width;
  const float angle = angleDegrees * kShortPi / 180.0f;
  const float c = cosine(angle);
  const float s = sine(angle);
  const auto placed = [&](float x, float y) {
    return PointF{x * c - y * s + center.x, x * s + y * c + center.y};
  };
  const auto finite = [](PointF p) { return std::isfinite(p.x) && std::isfinite(p.y); };
  ray.length = length;
  ray.edgeCount = 0;

  if (rays.type == StarType::Type1) {
    const PointF corners[3] = {placed(-width, 0.0f), placed(0.0f, length), placed(width, 0.0f)};
    if (!std::all_of(corners, corners + 3, finite)) return;
    ray.shading = RayShading::Soft;
    ray.baseHalfWidth = std::max(width, kLeastHalfWidth);
    ray.base = lineThrough(corners[0], center);
    ray.across = lineThrough(center, corners[1]);
    listEdges(ray, std::array{corners[0], corners[2], corners[1]}, rays.isSmooth);
    return;
  }

  HalfWidths half = quadHalfWidths(rays.type, width);
  half.base = std::max(half.base, kLeastHalfWidth);
  half.tip = std::max(half.tip, kLeastHalfWidth);
  const std::array corners{placed(half.base, 0.0f), placed(half.tip, length),
                           placed(-half.tip, length), placed(-half.base, 0.0f)};
  if (!std::ranges::all_of(corners, finite)) return;
  ray.baseHalfWidth = std::max(half.base, half.tip);
  ray.base = lineThrough(corners[0], center);
  if (rays.type == StarType::Type5) {
    ray.shading = RayShading::Side;
    ray.across = rays.isDarkOnLeft ? lineThrough(corners[2], corners[3])
                                   : lineThrough(corners[0], corners[1]);
  } else {
    ray.shading = RayShading::Axis;
    ray.across = lineThrough(center, {center.x + length * -s, center.y + length * c});
  }
  listEdges(ray, corners, rays.isSmooth);
}

}  // namespace brisel
