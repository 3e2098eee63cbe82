// The reference of the drawing: every sprite goes over its whole box and plots pixel by pixel.
#pragma once

#include "arithmetic.h"
#include "engine/render_settings.h"
#include "render/drawing.h"
#include "render/hls.h"

namespace reference {

void mixWithInput(const brisel::RenderSettings& settings, int mode);

struct Plotter {
  const brisel::RenderSettings& settings;
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

 private:
  float fullScale() const { return settings.deepColor ? 32768.0f : 255.0f; }
  float shiftSize() const { return std::abs(state.rainbowShift); }
  void recolour(brisel::Hls base, float hueShift, float lightness, float saturation) {
    pen = brisel::hlsToRgb({toInt(real(base.hue) + hueShift), toInt(lightness), toInt(saturation)});
  }
  void drawRay(int type, float centreX, float centreY, float length, float width,
               float angleDegrees, brisel::Hls base, float value);
};

}  // namespace reference
