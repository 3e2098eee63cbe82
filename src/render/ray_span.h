// What one row of a ray covers.
#pragma once

#include <cstdint>

#include "render/ray_shape.h"

namespace brisel {

/// The pixels of one row of a ray: full ones, and on either side the band in which the edge's
/// coverage fades. Ranges include both ends and are empty when first > last; they never overlap.
struct RaySpan {
  std::int32_t leftFirst = 0, leftLast = -1;
  std::int32_t fullFirst = 0, fullLast = -1;
  std::int32_t rightFirst = 0, rightLast = -1;
};

/// The row `y` of a ray between the edges that it crosses.
RaySpan spanOfRow(const RayEdge& left, const RayEdge& right, float y, bool highQuality);

}  // namespace brisel
