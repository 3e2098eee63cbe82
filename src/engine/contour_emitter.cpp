#include "engine/contour_emitter.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <span>

#include "contour/mesh_builder.h"
#include "core/numbers.h"
#include "core/trigonometry.h"
#include "platform/page_array.h"

namespace brisel {
namespace {

/// The tracer's result for one mask.
struct TracedOutlines {
  std::int32_t pointCount = 0;
  std::int32_t segmentCount = 0;
  PageArray<ContourPoint> points;
  PageArray<ContourSegment> segments;
};

template <class T>
PageArray<T> takePages(T* records, std::int32_t count) {
  return PageArray<T>(records, PageRelease{static_cast<std::size_t>(count) * sizeof(T)});
}

TracedOutlines trace(const ImageView& mask, float resolutionScale) {
  constexpr float kTolerance = 1.0f;
  constexpr float kLongestSegment = 30.0f;
  TracedOutlines traced;
  ContourPoint* points = nullptr;
  ContourSegment* segments = nullptr;
  try {
    CMeshBuilder builder;
    const bool hadMemory =
        builder.LoadMask(mask.width, mask.height, static_cast<std::int32_t>(mask.rowBytes),
                         mask.bytes, kTolerance, truncToInt(kLongestSegment / resolutionScale),
                         traced.pointCount, traced.segmentCount, points, segments);
    if (!hadMemory) throw std::bad_alloc();
  } catch (const ContourError&) {
    traced.pointCount = 0;  // as for a mask without outlines
  }
  traced.points = takePages(points, traced.pointCount);
  traced.segments = takePages(segments, traced.segmentCount);
  return traced;
}

/// The frame's border: its lengths are the full frame sizes, its normals point inwards.
ContourEmitter frameBorder(std::int32_t width, std::int32_t height) {
  const float w = static_cast<float>(width);
  const float h = static_cast<float>(height);
  return {{{0.0f, 0.0f, 0.5f, 0.5f, true},
           {w - 1.0f, 0.0f, -0.5f, 0.5f, true},
           {w - 1.0f, h - 1.0f, -0.5f, -0.5f, true},
           {0.0f, h - 1.0f, 0.5f, -0.5f, true}},
          {{0, 1, 0.0f, -1.0f, w},
           {1, 2, 1.0f, 0.0f, h},
           {2, 3, 0.0f, 1.0f, w},
           {3, 0, -1.0f, 0.0f, h}},
          {}};
}

ContourEdge edgeBetween(const std::vector<ContourVertex>& vertices, const ContourSegment& s) {
  ContourEdge edge;
  edge.first = static_cast<std::int32_t>(s.first);
  edge.second = static_cast<std::int32_t>(s.second);
  const ContourVertex& a = vertices[s.first];
  const ContourVertex& b = vertices[s.second];
  edge.normalX = b.y - a.y;
  edge.normalY = a.x - b.x;
  edge.length = std::sqrt(edge.normalX * edge.normalX + edge.normalY * edge.normalY);
  if (edge.length != 0.0f) {
    edge.normalX = edge.normalX / edge.length;
    edge.normalY = edge.normalY / edge.length;
  }
  return edge;
}

/// Takes one more edge's normal into the vertex's running average.
void addNormal(ContourVertex& vertex, const ContourEdge& edge) {
  if (!vertex.hasNormal) {
    vertex.normalX = edge.normalX;
    vertex.normalY = edge.normalY;
    vertex.hasNormal = true;
    return;
  }
  vertex.normalX = (vertex.normalX + edge.normalX) / 2.0f;
  vertex.normalY = (vertex.normalY + edge.normalY) / 2.0f;
}

ContourEmitter emitterFrom(const TracedOutlines& traced) {
  ContourEmitter contour;
  contour.vertices.reserve(static_cast<std::size_t>(traced.pointCount));
  for (const ContourPoint& p : std::span(traced.points.get(), traced.pointCount)) {
    contour.vertices.push_back({p.x, p.y});
  }
  contour.edges.reserve(static_cast<std::size_t>(traced.segmentCount));
  for (const ContourSegment& s : std::span(traced.segments.get(), traced.segmentCount)) {
    const ContourEdge& edge = contour.edges.emplace_back(edgeBetween(contour.vertices, s));
    addNormal(contour.vertices[s.first], edge);
    addNormal(contour.vertices[s.second], edge);
  }
  return contour;
}

void sumLengths(ContourEmitter& contour) {
  float sum = 0.0f;
  contour.lengthBefore = {sum};
  contour.lengthBefore.reserve(contour.edges.size() + 1);
  for (const ContourEdge& edge : contour.edges) {
    sum += edge.length;
    contour.lengthBefore.push_back(sum);
  }
}

}  // namespace

ContourEmitter buildContourEmitter(const ImageView& mask, float resolutionScale) {
  if (mask.bytes == nullptr) return {};
  const TracedOutlines traced = trace(mask, resolutionScale);
  if (traced.pointCount > 0 && traced.segmentCount == 0) return {};
  ContourEmitter contour =
      traced.pointCount == 0 ? frameBorder(mask.width, mask.height) : emitterFrom(traced);
  sumLengths(contour);
  return contour;
}

EmitterPoint evaluateContour(const ContourEmitter& contour, float t) {
  if (contour.edges.empty()) return {};
  const float target = t * contour.lengthBefore.back();
  // The edges passed until their lengths reach the target: a search, since the sums never fall.
  const auto reached =
      std::lower_bound(contour.lengthBefore.begin(), contour.lengthBefore.end(), target);
  const std::size_t taken = std::min(
      static_cast<std::size_t>(reached - contour.lengthBefore.begin()), contour.edges.size());
  const ContourEdge& edge = contour.edges[taken == 0 ? 0 : taken - 1];

  float ahead = 1.0f;  // the share of the edge still ahead of the point
  if (taken > 0) {
    ahead = edge.length == 0.0f ? 0.0f : (contour.lengthBefore[taken] - target) / edge.length;
    if (ahead < 0.0f || ahead > 1.0f) ahead = 1.0f;
  }
  const ContourVertex& a = contour.vertices[static_cast<std::size_t>(edge.first)];
  const ContourVertex& b = contour.vertices[static_cast<std::size_t>(edge.second)];
  const auto between = [&](float from, float to) { return ahead * from + (1.0f - ahead) * to; };
  const float normalX = between(a.normalX, b.normalX);
  const float normalY = between(a.normalY, b.normalY);
  float angle = normalY < 0.0f ? -kPi / 2.0f : kPi / 2.0f;
  if (normalX != 0.0f) {
    angle = arcTangent(normalY / normalX);
    if (normalX < 0.0f) angle += kPi;
  }
  const float tangentAngle = angle + kPi / 2.0f;
  return {between(a.x, b.x), between(a.y, b.y), cosine(tangentAngle), sine(tangentAngle),
          tangentAngle};
}

}  // namespace brisel
