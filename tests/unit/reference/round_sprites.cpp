#include "plotter.h"

namespace reference {
namespace {

float moduloSector(float v, float sector) {
  return v - sector * std::trunc(v / sector);
}

float textureAt(float s, float phi, float textureScale) {
  const float sector = real(360 / std::max(50, toInt(200.0f * textureScale)));
  float angle = moduloSector(phi * 180.0f / kShortPi, sector);
  float scaled = s * textureScale;
  if (scaled < 0) scaled += 360.0f;
  scaled = moduloSector(scaled, sector);
  const float half = sector / 2.0f;
  if (scaled < half && half < angle) {
    angle -= sector;
  } else if (angle < half && half < scaled) {
    scaled -= sector;
  }
  return 0.1f * std::abs(scaled - angle);
}

}  // namespace

void Plotter::drawCrossStar(float r, float x, float y, float angle, brisel::Rgb color,
                            float value) {
  if (r <= 0) return;
  value = value < 0 ? 0.0f : value;
  state.rainbowOn = state.rainbowShift != 0;
  pen = color;
  const brisel::Hls base = brisel::rgbToHls(color);
  const float cosA = cosine(angle);
  const float sinA = sine(angle);
  const float nx0 = -1.0f - frac(x - r) / r;
  const float ny0 = -1.0f - frac(y - r) / r;
  for (std::int32_t j = 0; real(j) < 2.0f * r; ++j) {
    for (std::int32_t i = 0; real(i) < 2.0f * r; ++i) {
      const float nx = nx0 + real(i) / r;
      const float ny = ny0 + real(j) / r;
      const float u = nx * cosA - ny * sinA;
      const float v = nx * sinA + ny * cosA;
      float k = square(std::abs(u) - 1.0f) + square(std::abs(v) - 1.0f) - 1.0f;
      if (u * u + v * v > 1.0f) k = 0;

      const float d = std::sqrt(square(2.0f * r * nx) + square(2.0f * r * ny));
      float texture = 255.0f;
      float amplitude = fullScale();
      if (state.crossVariant == brisel::kTexturedCross) {
        float phi = d == 0 ? 0.0f : atan2(ny, nx);
        if (phi < 0) phi += 2.0f * kPi;
        float w = std::min(textureAt(d / 2.0f, phi, state.textureScale),
                           textureAt(-d / 2.0f, phi, state.textureScale));
        if (d > 0) w *= d;
        texture = 25.5f * (5.0f + std::max(0.0f, 10.0f - w));
        amplitude = texture * state.textureMix + (1.0f - state.textureMix) * 255.0f;
        if (settings.deepColor) amplitude *= kLevelsPerByte;
      }
      if (state.rainbowOn) {
        const float p = d / r;
        const float q = square(p / 4.0f);
        recolour(base, (q + p * texture * state.textureMix / 1000.0f) * state.rainbowShift,
                 std::clamp(real(base.lightness) - q * shiftSize(), 120.0f, 240.0f),
                 std::min(240.0f, real(base.saturation) + 2.0f * p * shiftSize()));
      }
      plotPixel(toInt(real(i) + x - r), toInt(real(j) + y - r),
                clamp01(clamp01(k) * value) * amplitude);
    }
  }
}

void Plotter::drawGlowStar(float x, float y, float size, brisel::Rgb color, float value,
                           int profile) {
  const std::int32_t n = toInt(size / 2.0f);
  if (n <= 0) return;
  const float q = std::max(0.0f, state.glowScale - 1.0f);
  const auto denominator = [](float d) { return d <= 0 ? 1.0f : d; };
  const float d1 = denominator(1.0f - q);
  const float d2 = denominator(1.0f - 2.0f * q);
  const float d3 = denominator(1.0f - 1.1f * q);
  const auto faded = [](std::int32_t channel, float amount) {
    return amount >= 0 ? std::max(0, toInt(real(channel) - 255.0f * amount)) : channel;
  };
  state.rainbowOn = state.rainbowShift != 0;
  const float shift = state.rainbowShift;
  for (std::int32_t dy = -n; dy < n; ++dy) {
    for (std::int32_t dx = -n; dx < n; ++dx) {
      const float d = std::sqrt(square(real(dx) - frac(x)) + square(real(dy) - frac(y)));
      if (d > real(n)) continue;
      const float t = d / real(n);
      float k = 0;
      pen = color;
      if (profile == 4) {
        const float g = (t - q) / d1;
        k = 1.0f - g;
        if (g < 0) {
          pen = {255, 255, 255};
        } else {
          pen = {faded(color.red, (t - 2.0f * q) / d2), faded(color.green, g),
                 faded(color.blue, (t - 1.1f * q) / d3)};
          if (shift != 0) {
            const brisel::Hls base = brisel::rgbToHls(pen);
            recolour(base, (square(g / 4.0f) + g * 255.0f * state.textureMix / 1000.0f) * shift,
                     std::min(240.0f, real(base.lightness)),
                     std::min(240.0f, real(base.saturation) + 2.0f * g * shiftSize()));
          }
        }
      } else {
        k = 1.0f - t * t;
        if (state.rainbowOn) {
          const brisel::Hls base = brisel::rgbToHls(color);
          const float p = t * t;
          const float q2 = square(p / 4.0f);
          recolour(base, (q2 + p * 255.0f * state.textureMix / 1000.0f) * shift,
                   std::clamp(real(base.lightness) - q2 * shiftSize(), 120.0f, 240.0f),
                   std::min(240.0f, real(base.saturation) + 2.0f * p * shiftSize()));
        }
      }
      plotPixel(toInt(real(dx) + x), toInt(real(dy) + y), clamp01(k * value) * fullScale());
    }
  }
}

void Plotter::drawBlicsStar(float x, float y, float size, brisel::Rgb color, float value,
                            int profile, float ringWidth) {
  const std::int32_t n = toInt(size / 2.0f);
  if (n <= 0 || value <= 0) return;
  const bool ring = profile == 4;
  if (ring) {
    if (ringWidth <= 0) return;
    if (ringWidth < 0.03f) {
      value *= std::sqrt(1.0f - (0.03f - ringWidth) / 0.03f);
      ringWidth = 0.03f;
    }
    if (value > 1.0f) value = 1.0f;
    state.textureScale = 0.5f;
  }
  const float outer = 1.0f - ringWidth;
  const float inner = outer - ringWidth;
  const float e = std::max(real(n) / 10.0f, 2.0f) / real(n);
  const float core = 1.0f - e;
  const brisel::Hls base = brisel::rgbToHls(color);
  pen = color;
  for (std::int32_t dy = -n; dy < n; ++dy) {
    for (std::int32_t dx = -n; dx < n; ++dx) {
      const float d = std::sqrt(square(real(dx) - frac(x)) + square(real(dy) - frac(y)));
      if (d >= real(n)) continue;
      const float t = d / real(n);
      float k = 0;
      if (ring) {
        const float j =
            t >= outer ? std::abs(outer - t) / ringWidth : 1.0f - (t - inner) / ringWidth;
        k = 1.0f - j * j;
      } else {
        const float j = t >= core ? std::abs(core - t) / e
                                  : std::sqrt(std::min(1.0f, std::abs(core - t) * 0.7f));
        k = 1.0f - j;
      }
      if (state.rainbowOn) {
        const float p = ring ? std::abs(t - inner) * 10.0f + 1.0f : t * 5.0f;
        const float q = square(p / 4.0f);
        recolour(base, q * state.rainbowShift,
                 std::max(120.0f, real(base.lightness) - q * shiftSize()),
                 std::clamp(real(base.saturation) + 2.0f * p * shiftSize(), 100.0f, 240.0f));
      }
      plotPixel(toInt(real(dx) + x), toInt(real(dy) + y), clamp01(k * value) * fullScale());
    }
  }
}

}  // namespace reference
