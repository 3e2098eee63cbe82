// One step of the star population: the dead leave, new stars are born, all of them move.
#pragma once

#include "core/random.h"
#include "core/render_settings.h"
#include "engine/emitter.h"
#include "engine/particle.h"

namespace brisel {

/// Advances `population` by one step. Births stop at the smaller of the array's capacity and the
/// "Maximum number of stars".
void simulationStep(const RenderSettings& settings, const Emitter& emitter, RandomGenerator& random,
                    StarPopulation& population);

/// Whether the star has left the frame by more than 50 pixels or outlived its time.
bool isDead(const RenderSettings& settings, const Particle& particle);

/// Where a star is: its position follows from its birth values and its age, never by integration.
/// Recomputes both for the step `stepIndex`.
void updateParticle(const RenderSettings& settings, float stepIndex, Particle& particle);

}  // namespace brisel
