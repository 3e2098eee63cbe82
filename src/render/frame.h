// One frame of stars.
#pragma once

#include <cstdint>

#include "engine/particle.h"
#include "render/drawing.h"

namespace brisel {

/// Draws the first `count` records of `stars`, oldest first. A star that explodes or flashes may
/// change its type for good.
void drawAllStars(Drawing& drawing, Particle* stars, std::int32_t count);

}  // namespace brisel
