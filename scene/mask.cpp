#include "scene/mask.h"

#include <algorithm>
#include <cmath>

namespace scene {
namespace {

MaskPoint between(MaskPoint a, MaskPoint b, double t) {
  return {std::lerp(a.x, b.x, t), std::lerp(a.y, b.y, t)};
}

brisel::PointF single(MaskPoint point) {
  return {static_cast<float>(point.x), static_cast<float>(point.y)};
}

}  // namespace

MaskShape shapeAt(const Mask& mask, double frame) {
  const auto [from, to, share] = keysAround(mask.keys, frame);
  MaskShape shape = from.value;
  std::ranges::transform(from.value.vertices, to.value.vertices, shape.vertices.begin(),
                         [t = share](const MaskShape::Vertex& a, const MaskShape::Vertex& b) {
                           return MaskShape::Vertex{between(a.point, b.point, t),
                                                    between(a.in, b.in, t),
                                                    between(a.out, b.out, t)};
                         });
  return shape;
}

brisel::MaskOutline outlineAt(const Mask& mask, double frame) {
  const MaskShape shape = shapeAt(mask, frame);
  std::vector<brisel::MaskVertex> vertices;
  for (const auto& [point, in, out] : shape.vertices) {
    vertices.push_back({single(point), single(in), single(out)});
  }
  return brisel::buildMaskOutline(std::move(vertices), !shape.closed, mask.inverted);
}

}  // namespace scene
