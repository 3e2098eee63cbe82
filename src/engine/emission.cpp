#include "engine/emission.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "core/numbers.h"
#include "core/trigonometry.h"
#include "engine/source.h"

namespace brisel {
namespace {

/// One random number, -1000..999, the raw form of RandomGenerator::signedUnit.
float signedThousandths(RandomGenerator& random) {
  return static_cast<float>(random.nextRandom() % 2000 - 1000);
}

StarType chooseStarType(const Emission& e) {
  if (e.settings.type != StarType::Random) return e.settings.type;
  return static_cast<StarType>(e.random.nextRandom() % 10 + 1);
}

float chooseLifeTime(const Emission& e) {
  const RenderSettings& s = e.settings;
  float life = s.timeLife;
  if (s.timeLifeDispersion != 0.0f) {
    life = s.timeLife + e.random.signedUnit() * s.timeLifeDispersion * s.timeLife;
  }
  return life <= 0.0f ? 1.0f : life;
}

/// Places the star on the emitter; the direction stays in the velocity until the speed is known.
void placeOnPath(const Emission& e, Particle& p) {
  const RenderSettings& s = e.settings;
  const EmitterPoint point = emitterPoint(s, e.emitter, e.random.unit());
  p.startX = point.x / static_cast<float>(s.frameWidth);
  p.startY = point.y / static_cast<float>(s.frameHeight);
  p.velocityX = point.dirX;
  p.velocityY = point.dirY;
  if (s.orientation == Orientation::AddAngle && s.standardPath != StandardPath::Point) {
    const float angle = point.tangentAngle + s.direction;
    p.velocityX = cosine(angle);
    p.velocityY = sine(angle);
  } else if (s.orientation == Orientation::RandomAllDirections) {
    p.velocityX = e.random.signedUnit();
    p.velocityY = e.random.signedUnit();
  }
}

/// Turns the emitter's direction by the orientation mode.
PointF orient(const Emission& e, const Particle& p) {
  const float x = p.velocityX;
  const float y = p.velocityY;
  switch (e.settings.orientation) {
    case Orientation::Direct:
      return {e.settings.directionCos, e.settings.directionSin};
    case Orientation::Centripetal: {
      const float dx = p.startX - 0.5f;
      const float dy = p.startY - 0.5f;
      const float length = std::sqrt(dx * dx + dy * dy);
      if (length == 0.0f) return {dx, dy};
      return {dx / length, dy / length};
    }
    case Orientation::Perpendicularly:
      return {y, -x};
    case Orientation::PerpendicularlyOpposite:
      return {-y, x};
    case Orientation::PerpendicularlyRandom:
      return e.random.nextRandom() % 2 == 0 ? PointF{-y, x} : PointF{y, -x};
    case Orientation::AlongOpposite:
      return {-x, -y};
    default:
      return {x, y};
  }
}

void chooseVelocity(const Emission& e, Particle& p) {
  const RenderSettings& s = e.settings;
  float speed = s.initialSpeed;
  if (s.speedDispersion != 0.0f) {
    speed = (e.random.signedUnit() * s.speedDispersion + 1.0f) * s.initialSpeed;
  }
  PointF direction = orient(e, p);
  if (s.directionDispersion != 0.0f) {
    const float phi = signedThousandths(e.random) / 100.0f;
    direction.x = direction.x + s.directionDispersion * cosine(phi);
    direction.y = direction.y + s.directionDispersion * sine(phi);
  }
  p.velocityX = speed * direction.x;
  p.velocityY = speed * direction.y;
}

void chooseSize(const Emission& e, Particle& p) {
  const RenderSettings& s = e.settings;
  const float k = static_cast<float>(e.random.nextRandom() % 2000 - 500) / 1000.0f;
  const float size = s.size + s.size * k * s.sizeDispersion;
  const float width = s.width + s.width * k * s.sizeDispersion;
  p.size = (size < 0.0f ? 0.0f : size) / static_cast<float>(s.frameWidth);
  p.rayWidth = (width < 0.0f ? 0.0f : width) / static_cast<float>(s.frameWidth);
}

void chooseRaysAndAngle(const Emission& e, Particle& p) {
  const RenderSettings& s = e.settings;
  p.raysCount = s.raysCount + truncToInt(e.random.signedUnit() * 15.0f * s.raysCountDispersion);
  if (p.raysCount < 3) p.raysCount = s.raysCount < 3 ? std::max(p.raysCount, s.raysCount) : 3;
  p.angle = s.angle + signedThousandths(e.random) * 36.0f / 1000.0f * s.angleDispersion;
}

/// The color channel a star starts from, before its dispersion.
std::int32_t baseChannel(const RenderSettings& s, std::int32_t source, std::int32_t solid) {
  if (s.colorSchema != ColorSchema::Source) return solid;
  if (s.colority == 1.0f) return source;
  return truncToInt(static_cast<float>(source) * s.colority +
                    static_cast<float>(solid) * s.colorityComplement);
}

std::int32_t disperseChannel(const Emission& e, std::int32_t channel) {
  const float offset = signedThousandths(e.random) * 255.0f / 1000.0f * e.settings.colorDispersion;
  return std::clamp(truncToInt(static_cast<float>(channel) + offset), 0, 255);
}

void chooseColor(const Emission& e, const SourcePixel& source, Particle& p) {
  const RenderSettings& s = e.settings;
  const Rgb solid = s.colorOfParticles;
  p.colorR = disperseChannel(e, baseChannel(s, source.color.red, solid.red));
  p.colorG = disperseChannel(e, baseChannel(s, source.color.green, solid.green));
  p.colorB = disperseChannel(e, baseChannel(s, source.color.blue, solid.blue));
}

void chooseValue(const Emission& e, Particle& p) {
  const float k = static_cast<float>(e.random.nextRandom() % 2000 - 700) / 1000.0f;
  const float value = e.settings.value + k * e.settings.valueDispersion;
  p.value = value < 0.0f ? 0.0f : value;
}

std::int32_t chooseTerminateChannel(RandomGenerator& random) {
  return truncToInt(127.0f + signedThousandths(random) * 127.0f / 1000.0f);
}

void chooseTerminateColor(const Emission& e, Particle& p) {
  Rgb color{p.colorR, p.colorG, p.colorB};
  if (e.settings.terminateColorSchema == TerminateColorSchema::Custom) {
    color = e.settings.terminateColor;
  } else if (e.settings.terminateColorSchema == TerminateColorSchema::Random) {
    color.red = chooseTerminateChannel(e.random);
    color.green = chooseTerminateChannel(e.random);
    color.blue = chooseTerminateChannel(e.random);
  }
  p.terminateColorR = color.red;
  p.terminateColorG = color.green;
  p.terminateColorB = color.blue;
}

/// Whether the input shows anything where the star stands.
bool isOnSource(const Emission& e, const Particle& p) {
  const RenderSettings& s = e.settings;
  const std::int32_t column = truncToInt(p.startX * static_cast<float>(s.frameWidth));
  const std::int32_t row = truncToInt(p.startY * static_cast<float>(s.frameHeight));
  return e.emitter.sourceIntensityMap[std::ptrdiff_t{row} * s.frameWidth + column] != 0.0f;
}

void tryInitialize(const Emission& e, Particle& p, float birthTime);

/// Places the star anywhere in the frame. With the source as raster mask, a star that misses the
/// source is born again in the same record, up to ten times. Each attempt returns into the one
/// before it, which goes on with what it has left to do.
void placeInField(const Emission& e, Particle& p) {
  constexpr std::uint8_t kMostRetries = 10;
  p.velocityX = e.random.signedUnit();
  p.velocityY = e.random.signedUnit();
  p.startX = e.random.unit();
  p.startY = e.random.unit();
  if (e.settings.standardPath != StandardPath::SourceAsRasterMask) return;
  if (isOnSource(e, p)) {
    p.placementRetries = 0;
    return;
  }
  p.lifeTime = kFailedPlacement;
  if (p.placementRetries < kMostRetries) {
    ++p.placementRetries;
    tryInitialize(e, p, p.birthTime);
  } else {
    p.placementRetries = 0;
  }
}

TerminateType chooseTerminateType(const Emission& e) {
  if (e.settings.terminateType != TerminateType::Mixt) return e.settings.terminateType;
  return static_cast<TerminateType>(2 + e.random.nextRandom() % 7);
}

void tryInitialize(const Emission& e, Particle& p, float birthTime) {
  const RenderSettings& s = e.settings;
  p.birthTime = birthTime;
  p.age = e.stepIndex - birthTime;
  p.starType = chooseStarType(e);
  p.lifeTime = chooseLifeTime(e);
  if (s.standardPath == StandardPath::SourceAsRasterMask ||
      s.standardPath == StandardPath::WholeField) {
    placeInField(e, p);
  } else {
    placeOnPath(e, p);
  }
  p.randomFactor = e.random.signedUnit();
  chooseVelocity(e, p);
  const SourcePixel source = sourcePixelAt(e.emitter.source, s, p.startX, p.startY);
  chooseSize(e, p);
  chooseRaysAndAngle(e, p);
  if (s.sizeDependOnSource != 0.0f) {
    const float factor = source.brightest() * source.alpha;
    p.size = p.size * factor;
    p.rayWidth = p.rayWidth * factor;
  }
  chooseColor(e, source, p);
  chooseValue(e, p);
  chooseTerminateColor(e, p);
  p.terminateType = chooseTerminateType(e);
}

}  // namespace

bool canEmit(const RenderSettings& settings, const Emitter& emitter) {
  return settings.standardPath != StandardPath::SourceAsRasterMask ||
         emitter.sourceIntensityMap != nullptr;
}

void initialiseParticle(const Emission& e, Particle& p, float birthTime) {
  p.placementRetries = 0;
  tryInitialize(e, p, birthTime);
}

}  // namespace brisel
