#include "engine/motion.h"

#include "core/trigonometry.h"

namespace brisel {
namespace {

/// Swings the star across its own initial velocity.
void swing(float amplitude, float phase, Particle& p) {
  const float c = cosine(phase);
  p.x += amplitude * p.velocityY * c;
  p.y += amplitude * -p.velocityX * c;
}

/// Moves the star on a circle of radius `amplitude` beside its path.
void circle(float amplitude, float phase, Particle& p) {
  p.x += amplitude * (cosine(phase) + p.velocityY);
  p.y += amplitude * (sine(phase) - p.velocityX);
}

}  // namespace

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
