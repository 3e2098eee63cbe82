#include "simulation.h"

namespace reference {
namespace {

struct Source {
  float alpha;
  brisel::Rgb color;
};

Source sourceUnder(const brisel::RenderSettings& s, float startX, float startY) {
  const std::int32_t x =
      std::clamp(toInt(startX * real(s.frameWidth)), 0, std::max(0, s.frameWidth - 1));
  const std::int32_t y =
      std::clamp(toInt(startY * real(s.frameHeight)), 0, std::max(0, s.frameHeight - 1));
  if (x >= s.inputWidth || y >= s.inputHeight) return {0, {0, 0, 0}};
  const auto first = static_cast<std::ptrdiff_t>(y) * s.inputRowStride + std::ptrdiff_t{x} * 4;
  if (!s.deepColor) {
    const std::uint8_t* p = s.inputPixels + first;
    return {real(p[0]) / 255.0f, {p[1], p[2], p[3]}};
  }
  const std::uint16_t* p = s.inputPixels16 + first;
  const auto level = [](std::uint16_t channel) { return toInt(real(channel) / kLevelsPerByte); };
  return {real(p[0]) / 32768.0f, {level(p[1]), level(p[2]), level(p[3])}};
}

}  // namespace

brisel::Particle bornParticle(const brisel::RenderSettings& s, Generator& random, float stepIndex,
                              float birthTime) {
  brisel::Particle p{};
  p.birthTime = birthTime;
  p.age = stepIndex - birthTime;
  p.starType = s.type;
  if (s.type == brisel::StarType::Random) {
    p.starType = static_cast<brisel::StarType>(random.draw() % 10 + 1);
  }
  p.lifeTime = s.timeLife;
  if (s.timeLifeDispersion != 0) {
    p.lifeTime = s.timeLife + random.signedUnit() * s.timeLifeDispersion * s.timeLife;
  }
  if (p.lifeTime <= 0) p.lifeTime = 1;

  const int orientation = static_cast<int>(s.orientation);
  const PathPoint place = emitterPoint(s, real(random.draw() % 1000) / 1000.0f);
  p.startX = place.x / real(s.frameWidth);
  p.startY = place.y / real(s.frameHeight);
  float dirX = place.dirX;
  float dirY = place.dirY;
  if (orientation == 8 && s.standardPath != brisel::StandardPath::Point) {
    dirX = cosine(place.tangentAngle + s.direction);
    dirY = sine(place.tangentAngle + s.direction);
  } else if (orientation == 9) {
    dirX = random.signedUnit();
    dirY = random.signedUnit();
  }

  p.randomFactor = random.signedUnit();
  float speed = s.initialSpeed;
  if (s.speedDispersion != 0) {
    speed = (random.signedUnit() * s.speedDispersion + 1.0f) * s.initialSpeed;
  }

  const brisel::PointF along = {dirX, dirY};
  switch (orientation) {
    case 1:
      dirX = s.directionCos;
      dirY = s.directionSin;
      break;
    case 2: {
      dirX = p.startX - 0.5f;
      dirY = p.startY - 0.5f;
      const float length = std::sqrt(dirX * dirX + dirY * dirY);
      if (length != 0) {
        dirX /= length;
        dirY /= length;
      }
      break;
    }
    case 3:
      dirX = along.y;
      dirY = -along.x;
      break;
    case 4:
      dirX = -along.y;
      dirY = along.x;
      break;
    case 5: {
      const bool even = random.draw() % 2 == 0;
      dirX = even ? -along.y : along.y;
      dirY = even ? along.x : -along.x;
      break;
    }
    case 7:
      dirX = -along.x;
      dirY = -along.y;
      break;
  }

  if (s.directionDispersion != 0) {
    const float phi = random.centred() / 100.0f;
    dirX += s.directionDispersion * cosine(phi);
    dirY += s.directionDispersion * sine(phi);
  }
  p.velocityX = speed * dirX;
  p.velocityY = speed * dirY;

  const Source source = sourceUnder(s, p.startX, p.startY);
  const float k = random.centred(500) / 1000.0f;
  p.size = std::max(0.0f, s.size + s.size * k * s.sizeDispersion) / real(s.frameWidth);
  p.rayWidth = std::max(0.0f, s.width + s.width * k * s.sizeDispersion) / real(s.frameWidth);

  p.raysCount = s.raysCount + toInt(random.signedUnit() * 15.0f * s.raysCountDispersion);
  if (p.raysCount < 3) p.raysCount = s.raysCount < 3 ? std::max(p.raysCount, s.raysCount) : 3;

  p.angle = s.angle + random.centred() * 36.0f / 1000.0f * s.angleDispersion;

  if (s.sizeDependOnSource != 0) {
    const auto [red, green, blue] = source.color;
    const float factor = real(std::max({red, green, blue})) / 255.0f * source.alpha;
    p.size *= factor;
    p.rayWidth *= factor;
  }

  brisel::Rgb color = s.colorOfParticles;
  if (s.colorSchema == brisel::ColorSchema::Source) {
    const auto mixed = [&](std::int32_t from, std::int32_t own) {
      return toInt(real(from) * s.colority + real(own) * s.colorityComplement);
    };
    color = s.colority == 1.0f ? source.color
                               : brisel::Rgb{mixed(source.color.red, color.red),
                                             mixed(source.color.green, color.green),
                                             mixed(source.color.blue, color.blue)};
  }
  const auto dispersed = [&](std::int32_t channel) {
    const float shift = random.centred() * 255.0f / 1000.0f * s.colorDispersion;
    return std::clamp(toInt(real(channel) + shift), 0, 255);
  };
  p.colorR = dispersed(color.red);
  p.colorG = dispersed(color.green);
  p.colorB = dispersed(color.blue);

  p.value = std::max(0.0f, s.value + random.centred(700) / 1000.0f * s.valueDispersion);

  brisel::Rgb last = {p.colorR, p.colorG, p.colorB};
  if (s.terminateColorSchema == brisel::TerminateColorSchema::Custom) last = s.terminateColor;
  if (s.terminateColorSchema == brisel::TerminateColorSchema::Random) {
    const auto any = [&] { return toInt(127.0f + random.centred() * 127.0f / 1000.0f); };
    last.red = any();
    last.green = any();
    last.blue = any();
  }
  p.terminateColorR = last.red;
  p.terminateColorG = last.green;
  p.terminateColorB = last.blue;

  p.terminateType = s.terminateType;
  if (s.terminateType == brisel::TerminateType::Mixt) {
    p.terminateType = static_cast<brisel::TerminateType>(2 + random.draw() % 7);
  }
  return p;
}

static void moveParticle(const brisel::RenderSettings& s, float stepIndex, brisel::Particle& p) {
  p.age = stepIndex - p.birthTime;
  p.x = p.startX * real(s.frameWidth) + (p.velocityX + s.windX) * p.age;
  p.y = p.startY * real(s.frameHeight) + (p.velocityY + s.windY) * p.age +
        s.gravity * (p.age * p.age);
  const int mode = static_cast<int>(s.oscillation);
  const float k = (mode == 2 || mode == 4 ? p.randomFactor : 1.0f) * s.amplitudeOfOscillation;
  float q = p.age * s.frequencyOfOscillation;
  if (mode == 2 || mode == 3) {
    p.x += k * p.velocityY * cosine(q);
    p.y += k * -p.velocityX * cosine(q);
  } else if (mode == 4 || mode == 5) {
    if (mode == 4 && p.randomFactor < 0) q = -q;
    p.x += k * (cosine(q) + p.velocityY);
    p.y += k * (sine(q) - p.velocityX);
  }
}

void simulationStep(const brisel::RenderSettings& s, Generator& random, Population& population) {
  auto& [stars, capacity, accumulator, now] = population;
  for (std::size_t i = 0; i < stars.size();) {
    const brisel::Particle& p = stars[i];
    const bool left =
        p.y < -50 || p.y > real(s.frameHeight + 50) || p.x < -50 || p.x > real(s.frameWidth + 50);
    const bool over = p.age > p.lifeTime && static_cast<int>(p.terminateType) >= 2;
    if (left || over) {
      stars.erase(stars.begin() + static_cast<std::ptrdiff_t>(i));
      accumulator += s.intensity;
    } else {
      ++i;
    }
  }
  accumulator += s.intensity;
  const std::int32_t limit = std::min(s.maximumNumberOfStars, capacity);
  while (accumulator >= 1) {
    accumulator -= 1;
    if (static_cast<std::int32_t>(stars.size()) >= limit) {
      accumulator -= std::trunc(accumulator);
      break;
    }
    const float late = s.intensity <= 1 ? 0 : 0.75f * accumulator / s.intensity;
    stars.push_back(bornParticle(s, random, now, now + late));
  }
  for (brisel::Particle& p : stars) moveParticle(s, now, p);
}

}  // namespace reference
