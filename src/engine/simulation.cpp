#include "engine/simulation.h"

#include <algorithm>
#include <cmath>

#include "core/trigonometry.h"
#include "engine/emission.h"

namespace brisel {
namespace {

/// Closes the gaps of the dead, oldest first; every death adds one more step's worth of emission.
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

/// Swings the star across its own initial velocity.
void swing(float amplitude, float phase, Particle& p) {
  const float c = cosine(phase);
  p.x += amplitude * p.velocityY * c;
  p.y += amplitude * -p.velocityX * c;
}

/// Moves the star on a circle of radius `amplitude` around its path.
void circle(float amplitude, float phase, Particle& p) {
  p.x += amplitude * (cosine(phase) + p.velocityY);
  p.y += amplitude * (sine(phase) - p.velocityX);
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

void updateParticle(const RenderSettings& s, float stepIndex, Particle& p) {
  p.age = stepIndex - p.birthTime;
  p.x = p.startX * static_cast<float>(s.frameWidth) + (p.velocityX + s.windX) * p.age;
  p.y = p.startY * static_cast<float>(s.frameHeight) + (p.velocityY + s.windY) * p.age +
        s.gravity * (p.age * p.age);

  const float phase = p.age * s.frequencyOfOscillation;
  const float amplitude = s.amplitudeOfOscillation;
  switch (s.oscillation) {
    case Oscillation::Swing:
      return swing(p.randomFactor * amplitude, phase, p);
    case Oscillation::SwingSynchronous:
      return swing(amplitude, phase, p);
    case Oscillation::Round:
      // Stars with a negative factor circle the other way.
      return circle(p.randomFactor * amplitude, p.randomFactor < 0.0f ? -phase : phase, p);
    case Oscillation::RoundSynchronous:
      return circle(amplitude, phase, p);
    default:
      return;
  }
}

}  // namespace brisel
