#include "random_settings.h"

#include <cmath>

namespace unit {

brisel::RenderSettings anyEmitter(Dice& dice, Frame& input) {
  const auto sometimes = [&](float most) { return dice.coin() ? 0.0f : dice.real(0.0f, most); };
  const auto point = [&] {
    return brisel::PointF{static_cast<float>(dice.integer(-20, input.width() + 20)),
                          static_cast<float>(dice.integer(-20, input.height() + 20))};
  };
  brisel::RenderSettings s;
  input.becomeOutputOf(s);
  input.becomeInputOf(s);
  if (dice.coin()) s.inputWidth /= 2;
  s.standardPath = static_cast<brisel::StandardPath>(dice.integer(1, 5));
  s.start = point();
  s.controlStart = point();
  s.end = point();
  s.controlEnd = point();
  s.orientation = static_cast<brisel::Orientation>(dice.integer(1, 9));
  s.direction = dice.real(-7.0f, 7.0f);
  s.directionCos = reference::cosine(s.direction);
  s.directionSin = reference::sine(s.direction);
  s.directionDispersion = sometimes(1.0f);
  s.completenessOfPath = dice.oneOf({1.0f, 1.0f, 0.5f, -0.3f, -1.6f, 1.5f, 2.25f, 0.0f});
  if (s.completenessOfPath != 1.0f) {
    s.completenessFraction = reference::frac(s.completenessOfPath);
    s.completenessParity = static_cast<int>(s.completenessOfPath) % 2;
  }
  s.shiftOfPath = dice.oneOf({0.0f, 0.25f, -1.25f, 7.9f, dice.real(-1.0f, 1.0f)});
  s.intensity = dice.oneOf({0.4f, 1.0f, 2.5f, 20.0f});
  s.maximumNumberOfStars = dice.integer(1, 60);
  s.initialSpeed = dice.real(-8.0f, 20.0f);
  s.speedDispersion = sometimes(1.5f);
  s.type = static_cast<brisel::StarType>(dice.integer(0, 11));
  s.terminateType = static_cast<brisel::TerminateType>(dice.integer(1, 9));
  s.timeLife = dice.oneOf({0.0f, 3.0f, 12.5f});
  s.timeLifeDispersion = sometimes(2.0f);
  s.terminateColorSchema = static_cast<brisel::TerminateColorSchema>(dice.integer(1, 3));
  s.terminateColor = dice.color();
  s.gravity = sometimes(1.0f);
  s.windX = sometimes(3.0f);
  s.windY = -sometimes(3.0f);
  s.oscillation = static_cast<brisel::Oscillation>(dice.integer(1, 5));
  s.amplitudeOfOscillation = dice.real(-4.0f, 4.0f);
  s.frequencyOfOscillation = dice.real(-2.0f, 2.0f);
  s.size = dice.real(0.0f, 40.0f);
  s.width = dice.real(0.0f, 8.0f);
  s.sizeDependOnSource = dice.coin() ? 1.0f : 0.0f;
  s.sizeDispersion = sometimes(4.0f);
  s.raysCount = dice.integer(0, 8);
  s.raysCountDispersion = sometimes(1.0f);
  s.angle = dice.real(-360.0f, 360.0f);
  s.angleDispersion = sometimes(1.0f);
  s.value = dice.real(-0.5f, 1.0f);
  s.valueDispersion = sometimes(1.0f);
  s.colorSchema = static_cast<brisel::ColorSchema>(dice.integer(1, 2));
  s.colority = dice.oneOf({1.0f, 0.0f, 0.6f, 2.5f});
  s.colorityComplement = 1.0f - s.colority;
  s.colorDispersion = sometimes(1.0f);
  s.colorOfParticles = dice.color();
  return s;
}

}  // namespace unit
