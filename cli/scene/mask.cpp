#include "cli/scene/mask.h"

#include <algorithm>
#include <cmath>

namespace cli {
namespace {

PF_PathVertex between(const PF_PathVertex& a, const PF_PathVertex& b, double t) {
  return {std::lerp(a.x, b.x, t),
          std::lerp(a.y, b.y, t),
          std::lerp(a.tan_in_x, b.tan_in_x, t),
          std::lerp(a.tan_in_y, b.tan_in_y, t),
          std::lerp(a.tan_out_x, b.tan_out_x, t),
          std::lerp(a.tan_out_y, b.tan_out_y, t)};
}

}  // namespace

hostkit::MaskShape shapeAt(const Mask& mask, double frame) {
  const auto [from, to, share] = keysAround(mask.keys, frame);
  hostkit::MaskShape shape = from.value;
  std::ranges::transform(
      from.value.vertices, to.value.vertices, shape.vertices.begin(),
      [t = share](const PF_PathVertex& a, const PF_PathVertex& b) { return between(a, b, t); });
  return shape;
}

double frameAt(const hostkit::MaskTime& time, FrameRate rate) {
  // Both products are whole and below 2^53, so that a whole frame comes out exactly.
  return static_cast<double>(time.time) * rate.frames /
         (static_cast<double>(time.scale) * rate.seconds);
}

}  // namespace cli
