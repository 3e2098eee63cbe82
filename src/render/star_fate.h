// How a star's life shows: growth with age, fading, and the explosion or flash at its end.
#pragma once

#include "engine/particle.h"
#include "render/drawing.h"

namespace brisel {

/// Draws the star as its age and terminate type have it: not at all when its time is over, four
/// times while it explodes, else once. An explosion or flash may change the star's type for good.
void drawStarWithTermination(Drawing& drawing, Particle& star);

}  // namespace brisel
