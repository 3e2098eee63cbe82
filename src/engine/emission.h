// Birth of a star: place, direction, speed, looks and fate, in a fixed order of random numbers.
#pragma once

#include "core/random.h"
#include "core/render_settings.h"
#include "engine/emitter.h"
#include "engine/particle.h"

namespace brisel {

/// What a birth reads, and the generator it takes random numbers from. Borrowed for one step.
struct Emission {
  const RenderSettings& settings;
  const Emitter& emitter;
  RandomGenerator& random;
  float stepIndex;  // now, in steps since the last reset
};

/// Whether the chosen emitter can place stars: the source as raster mask needs its map.
bool canEmit(const RenderSettings& settings, const Emitter& emitter);

/// Fills every field of `particle` for a star born at `birthTime` (steps), except the position,
/// which the update of the same step computes.
void initialiseParticle(const Emission& emission, Particle& particle, float birthTime);

}  // namespace brisel
