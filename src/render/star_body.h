// One copy of a star: its elements, its oscillation and jitter of the moment, and its body.
#pragma once

#include <cstdint>

#include "engine/particle.h"
#include "render/drawing.h"

namespace brisel {

/// A star's looks at the moment it is drawn.
struct StarLook {
  StarType type;
  float size;   // pixels
  float width;  // pixels
  float angle;  // degrees
  std::int32_t rays;
  Rgb color;
  float value;
};

/// Draws the star with its halo and blink at its position. The body is blended under the drawing's
/// current rule, which is kept.
void drawStar(Drawing& drawing, const Particle& star, StarLook look);

}  // namespace brisel
