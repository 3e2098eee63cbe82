#include <algorithm>

#include "core/numbers.h"
#include "core/trigonometry.h"
#include "render/stars/compose.h"

namespace brisel {
namespace {

/// One random number: -0.5 to 0.4995.
float nextJitter(RandomGenerator& random) {
  return static_cast<float>(random.nextRandom() % 2000 - 1000) / 2000.0f;
}

/// As many random numbers as jitterAngle, varySize and varyColor take.
void skipJitter(const Composition& composition) {
  const RenderSettings& s = composition.settings;
  composition.random.skip((s.angleJittering != 0.0f ? 1 : 0) + (s.sizeJittering != 0.0f ? 1 : 0) +
                          (s.colorJittering != 0.0f ? 3 : 0));
}

void oscillateAngle(const RenderSettings& s, const Particle& p, float& angle) {
  const float amplitude = s.angleAmplitudeOfOscillation;
  if (amplitude == 0.0f) return;
  const float phase = p.age * s.angleFrequencyOfOscillation;
  switch (s.angleOscillation) {
    case Oscillation::Swing:
      angle += cosine(phase) * p.randomFactor * amplitude;
      return;
    case Oscillation::SwingSynchronous:
      angle += cosine(phase) * amplitude;
      return;
    case Oscillation::Round:
      angle += phase * p.randomFactor * amplitude;
      return;
    case Oscillation::RoundSynchronous:
      angle += phase * amplitude;
      return;
    default:
      return;
  }
}

void jitterAngle(const Composition& composition, float& angle) {
  const float jitter = composition.settings.angleJittering;
  if (jitter != 0.0f) angle += nextJitter(composition.random) * jitter;
}

/// Their sprites leave nothing to later ones.
bool isOfRays(StarType type) {
  return type < StarType::Type6 || type > StarType::Blics;
}

void varySize(const Composition& composition, const Particle& p, float& size) {
  const RenderSettings& s = composition.settings;
  if (s.sizeAmplitudeOfOscillation != 0.0f) {
    size *= 1.0f + p.randomFactor * s.sizeAmplitudeOfOscillation *
                       cosine(p.age * s.sizeFrequencyOfOscillation);
  }
  if (s.sizeJittering != 0.0f) {
    const float factor = 1.0f + nextJitter(composition.random) * s.sizeJittering;
    size *= std::max(factor, 0.1f);
  }
}

std::int32_t toChannel(float value) {
  return std::clamp(truncToInt(value), 0, 255);
}

void varyColor(const Composition& composition, const Particle& p, Rgb& color) {
  const RenderSettings& s = composition.settings;
  if (s.colorAmplitudeOfOscillation != 0.0f && composition.isPainted()) {
    const float k = p.randomFactor * s.colorAmplitudeOfOscillation;
    const float f = s.colorFrequencyOfOscillation;
    color.red = toChannel(static_cast<float>(color.red) + k * cosine(p.age * f));
    color.green = toChannel(static_cast<float>(color.green) - k * sine(p.age * 1.5f * f));
    color.blue = toChannel(static_cast<float>(color.blue) + k * sine(-p.age * 0.75f * f));
  }
  if (s.colorJittering != 0.0f) {
    for (std::int32_t* channel : {&color.red, &color.green, &color.blue}) {
      const float jitter = nextJitter(composition.random) * s.colorJittering;
      *channel = toChannel(static_cast<float>(*channel) + jitter);
    }
  }
}

/// What of a look its star varies from moment to moment. A star that nobody sees takes its random
/// numbers, and its size decides what its sprite leaves to later ones; all else is left out.
struct Moment {
  float angle;
  float size;
  Rgb color;
};

void drawBody(const Composition& composition, const Particle& p, const StarLook& look,
              const Moment& now) {
  SpriteState& state = composition.state;
  if (!isOfRays(look.type)) {
    const bool textured = look.type == StarType::Type7;
    state.crossVariant = textured ? kTexturedCross : kPlainCross;
    state.textureScale = textured ? -0.5f : 0.0f;
    state.textureMix = textured ? 0.75f : 0.0f;
  }
  const SpriteLook sprite{{p.x, p.y}, now.size, now.color, look.value, look.rule};
  switch (look.type) {
    case StarType::Type6:
    case StarType::Type7:
      return drawCrossStar(composition, sprite, now.angle * kShortPi / 180.0f);
    case StarType::Glow1:
    case StarType::Glow2:
      state.glowScale = look.type == StarType::Glow1 ? 1.25f : 0.75f;
      return drawGlowStar(composition, sprite, GlowProfile::Full);
    case StarType::Blics:
      return drawBlicsStar(composition, sprite, BlicsProfile::Disc);
    default:
      return drawRayStar(composition, sprite,
                         {look.type, look.width, now.angle, static_cast<float>(look.rays)});
  }
}

}  // namespace

bool passUnseen(const Composition& composition, const Particle& star) {
  const RenderSettings& s = composition.settings;
  const bool hasElements = s.typeOfHalo > HaloType::None || s.typeOfBlink > BlinkType::None;
  if (composition.isPainted() || hasElements || !isOfRays(star.starType)) return false;
  composition.state.currentRandomFactor = star.randomFactor;
  skipJitter(composition);
  return true;
}

void drawStar(const Composition& composition, const Particle& star, const StarLook& look) {
  composition.state.currentRandomFactor = star.randomFactor;
  drawAdditionalElements(composition, {{star.x, star.y},
                                       look.size,
                                       look.angle,
                                       look.color,
                                       look.value,
                                       truncToInt(star.randomFactor * 131.131f)});
  if (!composition.isPainted() && isOfRays(look.type)) return skipJitter(composition);
  Moment now{look.angle, look.size, look.color};
  if (composition.isPainted()) oscillateAngle(composition.settings, star, now.angle);
  jitterAngle(composition, now.angle);
  varySize(composition, star, now.size);
  varyColor(composition, star, now.color);
  drawBody(composition, star, look, now);
}

}  // namespace brisel
