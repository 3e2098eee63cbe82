// Where a star is: its position follows from its birth values and its age, never by integration.
#pragma once

#include "core/render_settings.h"
#include "engine/particle.h"

namespace brisel {

/// Recomputes the star's age and position for the step `stepIndex`.
void updateParticle(const RenderSettings& settings, float stepIndex, Particle& particle);

}  // namespace brisel
