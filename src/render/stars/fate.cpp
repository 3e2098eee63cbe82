#include <algorithm>
#include <cmath>

#include "core/numbers.h"
#include "core/trigonometry.h"
#include "render/stars/compose.h"

namespace brisel {
namespace {

bool isOver(const Particle& p) {
  return p.terminateType != TerminateType::Infinity && p.age > p.lifeTime;
}

BlendRule bodyRule(AddMode mode, StarType type) {
  const bool glow = type == StarType::Glow1 || type == StarType::Glow2;
  return glow ? ruleFor(mode, BlendRule::AddGlow, BlendRule::AddSolid)
              : ruleFor(mode, BlendRule::Over, BlendRule::AddScaled);
}

StarLook baseLook(const RenderSettings& s, const Particle& p) {
  const float frameWidth = static_cast<float>(s.frameWidth);
  return {p.starType,
          p.size * frameWidth,
          p.rayWidth * frameWidth,
          p.angle,
          p.raysCount,
          {p.colorR, p.colorG, p.colorB},
          p.value,
          bodyRule(s.addMode, p.starType)};
}

void grow(const RenderSettings& s, const Particle& p, StarLook& look) {
  if (s.growUp == 0.0f) return;
  const float g = p.age / p.lifeTime * std::fabs(s.growUp);
  if (s.growUp > 0.0f) {
    look.size *= 1.0f + g;
    look.width *= 1.0f + g / 2.0f;
  } else {
    look.size *= std::max(1.0f - g, 0.0f);
    look.width *= std::max(1.0f - g / 2.0f, 0.0f);
  }
}

/// How far the star's life has run, and how much of its brightness is left.
struct Life {
  float run;
  float left;
};

Life lifeOf(const RenderSettings& s, const Particle& p) {
  Life life;
  if (s.timeFade < 0.0f) {
    life.run = p.age / p.lifeTime;
    life.left = life.run;
  } else {
    life.left = (p.lifeTime - p.age) / p.lifeTime;
    life.run = 1.0f - life.left;
  }
  life.left = std::min(1.0f, life.left + 1.0f - std::fabs(s.timeFade));
  return life;
}

/// The share of a life after which the star explodes or flashes.
float finaleStart(const RenderSettings& s) {
  return std::clamp(std::fabs(s.timeOfExplode) * 0.5f + 0.25f, 0.01f, 0.99f);
}

Rgb terminateColor(const Particle& p) {
  return {p.terminateColorR, p.terminateColorG, p.terminateColorB};
}

/// Turns the star into a glow for the rest of its life.
void becomeGlow(Particle& p, StarLook& look) {
  p.starType = StarType::Glow1;
  look.type = StarType::Glow1;
  look.size *= 1.5f;
  look.value = look.value / 2.0f + 0.25f;
}

void drawFading(const Composition& composition, const Particle& p, Life life, StarLook& look) {
  look.value *= life.left;
  drawStar(composition, p, look);
}

void drawFlash(const Composition& composition, Particle& p, Life life, StarLook& look) {
  const float start = finaleStart(composition.settings);
  look.rule = BlendRule::AddSolid;
  look.color = terminateColor(p);
  const float h = 1.0f - (life.run - start) / (1.0f - start);
  look.value *= h + 1.0f;
  look.width *= h + 1.0f;
  look.size *= 0.75f;
  if (p.terminateType == TerminateType::FlashGlow) becomeGlow(p, look);
  drawStar(composition, p, look);
}

void drawExplosion(const Composition& composition, Particle& p, Life life, StarLook& look) {
  const RenderSettings& s = composition.settings;
  const float start = finaleStart(s);
  look.rule = BlendRule::AddSolid;
  look.color = terminateColor(p);
  const float h = (life.run - start) / (1.0f - start);
  look.value = look.value * (1.1f - h) * 1.5f;
  look.size = look.size * (1.75f - h) * 0.35f;
  if (p.terminateType == TerminateType::ExplodeGlow) {
    becomeGlow(p, look);
  } else if (p.terminateType == TerminateType::ExplodeSparks) {
    p.starType = StarType::Type1;
    look.type = StarType::Type1;
    look.value /= 1.5f;
    look.size *= 0.9f;
    look.rays = truncToInt(static_cast<float>(look.rays) * (1.0f + std::fabs(p.randomFactor)));
  }

  const float distance = h * 2.0f * s.halfSize;
  const float c = cosine(p.randomFactor) * distance;
  const float sn = sine(p.randomFactor) * distance;
  const PointF offsets[] = {{c, sn}, {-c, sn}, {sn, -c}, {-c, -sn}};
  for (const PointF offset : offsets) {
    Particle copy = p;
    copy.x = p.x + offset.x;
    copy.y = p.y + offset.y;
    drawStar(composition, copy, look);
  }
}

bool hasFinale(TerminateType type) {
  return type != TerminateType::Infinity && type != TerminateType::TimeLimited &&
         type != TerminateType::Fade;
}

void drawStarWithTermination(const Composition& composition, Particle& p) {
  const RenderSettings& s = composition.settings;
  if (isOver(p)) return;
  if (!hasFinale(p.terminateType) && passUnseen(composition, p)) return;
  StarLook look = baseLook(s, p);
  grow(s, p, look);
  const Life life = lifeOf(s, p);
  const bool finale = life.run >= finaleStart(s);
  switch (p.terminateType) {
    case TerminateType::Fade:
      return drawFading(composition, p, life, look);
    case TerminateType::Explode:
    case TerminateType::ExplodeGlow:
    case TerminateType::ExplodeSparks:
      return finale ? drawExplosion(composition, p, life, look)
                    : drawFading(composition, p, life, look);
    case TerminateType::Flash:
    case TerminateType::FlashGlow:
      return finale ? drawFlash(composition, p, life, look)
                    : drawFading(composition, p, life, look);
    default:
      return drawStar(composition, p, look);
  }
}

}  // namespace

void drawAllStars(const Composition& composition, std::span<Particle> stars) {
  const bool dots = composition.settings.type == StarType::Dots;
  for (Particle& star : stars) {
    if (star.lifeTime == kFailedPlacement) continue;
    if (dots) {
      composition.add(DotSpec{truncToInt(star.x), truncToInt(star.y)});
    } else {
      drawStarWithTermination(composition, star);
    }
  }
}

}  // namespace brisel
