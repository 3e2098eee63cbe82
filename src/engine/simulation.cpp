#include "engine/simulation.h"

#include <algorithm>
#include <cmath>

#include "engine/emission.h"
#include "engine/motion.h"

namespace brisel {
namespace {

/// Closes the gaps of the dead, oldest first; every death earns one more step's worth of emission.
void removeDead(const RenderSettings& s, StarPopulation& population) {
  std::int32_t kept = 0;
  for (std::int32_t i = 0; i < population.starCount; ++i) {
    const Particle& star = population.stars[i];
    if (isDead(s, star)) {
      population.emissionAccumulator += s.intensity;
    } else {
      if (kept != i) population.stars[kept] = star;
      ++kept;
    }
  }
  population.starCount = kept;
}

void emitStars(const Emission& emission, StarPopulation& population) {
  const RenderSettings& s = emission.settings;
  const std::int32_t limit = std::min(s.maximumNumberOfStars, population.capacity);
  float& owed = population.emissionAccumulator;
  while (owed >= 1.0f) {
    owed -= 1.0f;
    if (population.starCount >= limit) {
      owed -= std::trunc(owed);
      return;
    }
    // The stars of one step are spread over three quarters of it.
    const float birthTime =
        s.intensity <= 1.0f ? emission.stepIndex : emission.stepIndex + 0.75f * owed / s.intensity;
    initialiseParticle(emission, population.stars[population.starCount], birthTime);
    ++population.starCount;
  }
}

}  // namespace

bool isDead(const RenderSettings& s, const Particle& p) {
  constexpr float kMargin = 50.0f;
  return p.y < -kMargin || p.y > static_cast<float>(s.frameHeight) + kMargin || p.x < -kMargin ||
         p.x > static_cast<float>(s.frameWidth) + kMargin ||
         (p.age > p.lifeTime && p.terminateType >= TerminateType::TimeLimited);
}

void simulationStep(const RenderSettings& settings, const Emitter& emitter, RandomGenerator& random,
                    StarPopulation& population) {
  removeDead(settings, population);
  population.emissionAccumulator += settings.intensity;
  if (canEmit(settings, emitter)) {
    emitStars({settings, emitter, random, population.stepIndex}, population);
  }
  for (std::int32_t i = 0; i < population.starCount; ++i) {
    updateParticle(settings, population.stepIndex, population.stars[i]);
  }
}

}  // namespace brisel
