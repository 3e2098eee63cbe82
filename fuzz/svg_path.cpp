// SVG path data, and the outline that the effect makes of it.
#include "scene/svg_path.h"

#include <cmath>

#include "scene/mask.h"
#include "target.h"

namespace {

bool isWithinReach(scene::MaskPoint point) {
  return std::abs(point.x) <= scene::kMaxMaskCoordinate &&
         std::abs(point.y) <= scene::kMaxMaskCoordinate;
}

}  // namespace

void fuzz::runInput(std::span<const std::uint8_t> input) {
  scene::Mask mask;
  try {
    mask.keys.push_back({{0},
                         scene::maskShapeFromPathData(
                             {reinterpret_cast<const char*>(input.data()), input.size()})});
  } catch (const scene::PathDataError&) {
    return;
  }
  const scene::MaskShape& shape = mask.keys.front().value;
  require(!shape.vertices.empty(), "an outline has vertices");
  for (const auto& [point, in, out] : shape.vertices) {
    require(isWithinReach(point) && isWithinReach(in), "no vertex is out of reach");
  }
  for (const bool inverted : {false, true}) {
    mask.inverted = inverted;
    const brisel::MaskOutline outline = scene::outlineAt(mask, 0);
    for (const float t : {0.0f, 0.1f, 0.5f, 0.99f, 1.0f}) {
      const brisel::EmitterPoint place = brisel::evaluateMaskOutline(outline, t);
      require(std::isfinite(place.x) && std::isfinite(place.y), "an outline is somewhere");
    }
  }
}
