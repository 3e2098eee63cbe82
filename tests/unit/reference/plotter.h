// The reference of the drawing: every sprite goes over its whole box and plots pixel by pixel.
#pragma once

#include "arithmetic.h"
#include "engine/particle.h"
#include "engine/render_settings.h"
#include "render/drawing.h"

namespace reference {

struct Hls {
  std::int32_t hue, lightness, saturation;
};

Hls toHls(brisel::Rgb color);
brisel::Rgb toRgb(Hls color);

void mixWithInput(const brisel::RenderSettings& settings, int mode);

struct Plotter {
  const brisel::RenderSettings& settings;
  Generator random{};
  brisel::DrawingState state{};
  brisel::BlendRule rule = brisel::BlendRule::Over;
  brisel::Rgb pen{};

  void plotPixel(std::int32_t x, std::int32_t y, float value);

  void drawRayStar(int type, float x, float y, float size, float width, float angleDegrees,
                   float rays, brisel::Rgb color, float value);
  void drawCrossStar(float radius, float x, float y, float angle, brisel::Rgb color, float value);
  void drawGlowStar(float x, float y, float size, brisel::Rgb color, float value, int profile);
  void drawBlicsStar(float x, float y, float size, brisel::Rgb color, float value, int profile,
                     float ringWidth);

  void drawAdditionalElements(float x, float y, float size, float angleDegrees, brisel::Rgb color,
                              float value, std::int32_t seed);
  void drawStar(const brisel::Particle& star, float x, float y, float size, float width,
                float angle, std::int32_t rays, brisel::Rgb color, float value);
  void drawStarWithTermination(brisel::Particle& star);
  void drawAllStars(brisel::Particle* stars, std::int32_t count);

 private:
  float fullScale() const { return settings.deepColor ? 32768.0f : 255.0f; }
  float shiftSize() const { return std::abs(state.rainbowShift); }
  float jitter() { return random.centred() / 2000.0f; }
  brisel::BlendRule ruleOf(brisel::BlendRule mode1, brisel::BlendRule mode2) const;
  void recolour(Hls base, float hueShift, float lightness, float saturation);
  void drawRay(int type, float centreX, float centreY, float length, float width,
               float angleDegrees, Hls base, float value);
};

}  // namespace reference
