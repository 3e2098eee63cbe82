// The reference of the engine: paths, births, motion and one step of the population.
#pragma once

#include <vector>

#include "arithmetic.h"
#include "engine/particle.h"
#include "engine/render_settings.h"

namespace reference {

struct PathPoint {
  float x, y, dirX, dirY, tangentAngle;
};

/// Standard paths 1 to 5.
PathPoint emitterPoint(const brisel::RenderSettings& s, float t);

brisel::Particle bornParticle(const brisel::RenderSettings& s, Generator& random, float stepIndex,
                              float birthTime);

struct Population {
  std::vector<brisel::Particle> stars;
  std::int32_t capacity = 0;
  float emissionAccumulator = 0;
  float stepIndex = 0;
};

void simulationStep(const brisel::RenderSettings& s, Generator& random, Population& population);

}  // namespace reference
