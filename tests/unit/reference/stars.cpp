#include "plotter.h"

namespace reference {

using brisel::BlendRule;
using brisel::Rgb;

BlendRule Plotter::ruleOf(BlendRule mode1, BlendRule mode2) const {
  if (settings.addMode == brisel::AddMode::Mode1) return mode1;
  if (settings.addMode == brisel::AddMode::Mode2) return mode2;
  return BlendRule::Lighten;
}

void Plotter::drawAdditionalElements(float x, float y, float size, float angleDegrees, Rgb color,
                                     float value, std::int32_t seed) {
  using enum BlendRule;
  const auto offset = [&](std::int32_t k) { return real(seed * k % 2000 - 1000); };
  const auto pick = [&](std::int32_t k) { return seed * k % 3 + 2; };
  const auto tinted = [&](std::int32_t channel, std::int32_t k) {
    const float shift = offset(k) * 0.255f * settings.colorDispersionOfElements;
    return toInt(std::clamp(real(channel) + shift, 0.0f, 255.0f));
  };
  const Rgb tint = {tinted(color.red, 1234), tinted(color.green, 3234), tinted(color.blue, 12234)};
  const float volume =
      value * (1.0f + offset(45134) / 1000.0f * settings.volumeDispersionOfElements);
  const float extent = size * (1.0f + offset(34334) / 1000.0f * settings.sizeDispersionOfElements);

  if (int halo = static_cast<int>(settings.typeOfHalo); halo > 1) {
    state.rainbowShift = settings.colorRainbow;
    state.textureMix = 0;
    if (halo == 5) halo = pick(67443);
    const float haloSize = settings.sizeOfHalo * extent;
    const float haloValue = volume * settings.volumeOfHalo;
    if (halo == 2) {
      rule = ruleOf(Over, AddScaled);
      drawGlowStar(x, y, haloSize, tint, haloValue, 2);
    } else if (halo == 3) {
      rule = ruleOf(AddSolid, AddSolid);
      state.glowScale = 1.25f;
      drawGlowStar(x, y, haloSize, tint, haloValue, 4);
    } else if (halo == 4) {
      rule = ruleOf(AddSolid, AddSolid);
      drawCrossStar(haloSize, x, y, -angleDegrees * kShortPi / 180.0f, tint, haloValue);
    }
  }

  if (int blink = static_cast<int>(settings.typeOfBlink); blink > 1) {
    if (blink == 5) blink = pick(343457);
    if (blink < 2 || blink > 4) return;
    state.rainbowOn = true;
    state.textureMix = 0;
    rule = ruleOf(blink == 3 ? AddSolid : Over, AddSolid);
    state.rainbowShift = blink == 3 ? -50.0f : -250.0f;
    drawBlicsStar(x, y, settings.sizeOfBlink * extent, tint, volume * settings.volumeOfBlink,
                  blink == 2 ? 4 : 0, 0.1f);
  }
}

void Plotter::drawStar(const brisel::Particle& star, float x, float y, float size, float width,
                       float angle, std::int32_t rays, Rgb color, float value) {
  const float factor = star.randomFactor;
  const BlendRule bodyRule = rule;
  state.currentRandomFactor = factor;
  drawAdditionalElements(x, y, size, angle, color, value, toInt(factor * 131.131f));
  rule = bodyRule;

  if (const float amplitude = settings.angleAmplitudeOfOscillation; amplitude != 0) {
    const float frequency = settings.angleFrequencyOfOscillation;
    switch (static_cast<int>(settings.angleOscillation)) {
      case 2:
        angle += cosine(star.age * frequency) * factor * amplitude;
        break;
      case 3:
        angle += cosine(star.age * frequency) * amplitude;
        break;
      case 4:
        angle += star.age * frequency * factor * amplitude;
        break;
      case 5:
        angle += star.age * frequency * amplitude;
        break;
    }
  }
  if (settings.angleJittering != 0) angle += jitter() * settings.angleJittering;
  if (const float amplitude = settings.sizeAmplitudeOfOscillation; amplitude != 0) {
    size *= 1.0f + factor * amplitude * cosine(star.age * settings.sizeFrequencyOfOscillation);
  }
  if (settings.sizeJittering != 0) {
    const float m = 1.0f + jitter() * settings.sizeJittering;
    size *= m <= 0.1f ? 0.1f : m;
  }
  const auto level = [](float v) { return std::clamp(toInt(v), 0, 255); };
  if (settings.colorAmplitudeOfOscillation != 0) {
    const float k = factor * settings.colorAmplitudeOfOscillation;
    const float frequency = settings.colorFrequencyOfOscillation;
    color = {level(real(color.red) + k * cosine(star.age * frequency)),
             level(real(color.green) - k * sine(star.age * 1.5f * frequency)),
             level(real(color.blue) + k * sine(-star.age * 0.75f * frequency))};
  }
  if (const float amount = settings.colorJittering; amount != 0) {
    color.red = level(real(color.red) + jitter() * amount);
    color.green = level(real(color.green) + jitter() * amount);
    color.blue = level(real(color.blue) + jitter() * amount);
  }

  const int type = static_cast<int>(star.starType);
  if (type >= 6 && type <= 10) {
    state.crossVariant = type == 7 ? 3 : 1;
    state.textureScale = type == 7 ? -0.5f : 0.0f;
    state.textureMix = type == 7 ? 0.75f : 0.0f;
  }
  if (type <= 5) {
    drawRayStar(type, x, y, size, width, angle, real(rays), color, value);
  } else if (type <= 7) {
    drawCrossStar(size, x, y, angle * kShortPi / 180.0f, color, value);
  } else if (type <= 9) {
    state.glowScale = type == 8 ? 1.25f : 0.75f;
    drawGlowStar(x, y, size, color, value, 4);
  } else if (type == 10) {
    drawBlicsStar(x, y, size, color, value, 0, 0.1f);
  }
}

void Plotter::drawStarWithTermination(brisel::Particle& star) {
  using enum brisel::TerminateType;
  using brisel::StarType;
  const brisel::TerminateType fate = star.terminateType;
  if (fate != Infinity && star.age > star.lifeTime) return;

  float size = star.size * real(settings.frameWidth);
  float width = star.rayWidth * real(settings.frameWidth);
  float value = star.value;
  std::int32_t rays = star.raysCount;
  Rgb color = {star.colorR, star.colorG, star.colorB};

  const float growth = star.age / star.lifeTime * std::abs(settings.growUp);
  if (settings.growUp > 0) {
    size *= 1.0f + growth;
    width *= 1.0f + growth / 2.0f;
  } else if (settings.growUp < 0) {
    size *= std::max(0.0f, 1.0f - growth);
    width *= std::max(0.0f, 1.0f - growth / 2.0f);
  }

  using enum BlendRule;
  const bool glows = star.starType == StarType::Glow1 || star.starType == StarType::Glow2;
  rule = glows ? ruleOf(AddGlow, AddSolid) : ruleOf(Over, AddScaled);

  const float fade = settings.timeFade;
  float a = star.age / star.lifeTime;
  float r = a;
  if (!(fade < 0)) {
    r = (star.lifeTime - star.age) / star.lifeTime;
    a = 1.0f - r;
  }
  r = std::min(1.0f, r + 1.0f - std::abs(fade));
  const float e = std::clamp(std::abs(settings.timeOfExplode) * 0.5f + 0.25f, 0.01f, 0.99f);

  const bool flashes = fate == Flash || fate == FlashGlow;
  const bool explodes = fate == Explode || fate == ExplodeGlow || fate == ExplodeSparks;
  if (fate == Fade || ((flashes || explodes) && a < e)) {
    value *= r;
  } else if (flashes || explodes) {
    rule = AddSolid;
    color = {star.terminateColorR, star.terminateColorG, star.terminateColorB};
    const float h = flashes ? 1.0f - (a - e) / (1.0f - e) : (a - e) / (1.0f - e);
    if (flashes) {
      value *= h + 1.0f;
      width *= h + 1.0f;
      size *= 0.75f;
    } else {
      value = value * (1.1f - h) * 1.5f;
      size = size * (1.75f - h) * 0.35f;
    }
    if (fate == FlashGlow || fate == ExplodeGlow) {
      star.starType = StarType::Glow1;
      size *= 1.5f;
      value = value / 2.0f + 0.25f;
    } else if (fate == ExplodeSparks) {
      star.starType = StarType::Type1;
      value /= 1.5f;
      size *= 0.9f;
      rays = toInt(real(rays) * (1.0f + std::abs(star.randomFactor)));
    }
    if (explodes) {
      const float d = h * 2.0f * settings.halfSize;
      const float c = cosine(star.randomFactor) * d;
      const float s = sine(star.randomFactor) * d;
      for (const auto& [x, y] : {brisel::PointF{star.x + c, star.y + s},
                                 {star.x - c, star.y + s},
                                 {star.x + s, star.y - c},
                                 {star.x - c, star.y - s}}) {
        drawStar(star, x, y, size, width, star.angle, rays, color, value);
      }
      return;
    }
  }
  drawStar(star, star.x, star.y, size, width, star.angle, rays, color, value);
}

void Plotter::drawAllStars(brisel::Particle* stars, std::int32_t count) {
  for (std::int32_t i = 0; i < count; ++i) {
    if (stars[i].lifeTime == -1.0f) continue;
    if (settings.type == brisel::StarType::Dots) {
      pen = {255, 255, 255};
      rule = BlendRule::Over;
      plotPixel(toInt(stars[i].x), toInt(stars[i].y), fullScale());
    } else {
      drawStarWithTermination(stars[i]);
    }
  }
}

}  // namespace reference
