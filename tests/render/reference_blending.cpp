#include "tests/render/reference_blending.h"

#include <algorithm>
#include <cstddef>

namespace reference {
namespace {

// Channel `c` of pixel (x, y): alpha, red, green, blue.
std::size_t at(std::int32_t x, std::int32_t y, int c, std::int32_t stride) {
  return static_cast<std::size_t>(y) * static_cast<std::size_t>(stride) +
         static_cast<std::size_t>(x * 4 + c);
}

float read(const brisel::RenderSettings& s, std::int32_t x, std::int32_t y, int c) {
  const std::size_t i = at(x, y, c, s.outputRowStride);
  return s.deepColor ? s.outputPixels16[i] : s.outputPixels[i];
}

void write(const brisel::RenderSettings& s, std::int32_t x, std::int32_t y, int c, float v) {
  const std::size_t i = at(x, y, c, s.outputRowStride);
  if (s.deepColor) {
    s.outputPixels16[i] = static_cast<std::uint16_t>(v);
  } else {
    s.outputPixels[i] = static_cast<std::uint8_t>(v);
  }
}

float readInput(const brisel::RenderSettings& s, std::int32_t x, std::int32_t y, int c) {
  if (x >= s.inputWidth || y >= s.inputHeight) return 0;
  const std::size_t i = at(x, y, c, s.inputRowStride);
  return s.deepColor ? s.inputPixels16[i] : s.inputPixels[i];
}

}  // namespace

void plotPixel(const brisel::RenderSettings& settings, brisel::BlendRule rule, brisel::Rgb pen,
               std::int32_t x, std::int32_t y, float value) {
  if (!(value > 0)) return;
  using enum brisel::BlendRule;
  const float m = settings.deepColor ? 32768.0f : 255.0f;
  value = std::min(value, m);
  const float t = value / m;
  const float alpha = read(settings, x, y, 0);
  const std::int32_t pens[] = {pen.red, pen.green, pen.blue};
  float largest = 0;
  for (int c = 1; c <= 3; ++c) {
    const float penC =
        static_cast<float>(pens[c - 1]) * (settings.deepColor ? 32768.0f / 255.0f : 1.0f);
    const float d = read(settings, x, y, c);
    float result = 0;
    switch (rule) {
      case Over:
        result = alpha == 0 || value == m ? penC : t * penC + (1.0f - t) * d;
        break;
      case AddScaled:
        result = std::min(m, d + penC * t);
        break;
      case AddSolid:
      case AddGlow:
        result = std::min(m, d + penC);
        break;
      case Lighten:
        result = std::min(m, std::max(d, penC * t));
        break;
    }
    write(settings, x, y, c, result);
    largest = std::max(largest, read(settings, x, y, c));
  }
  switch (rule) {
    case Over:
      write(settings, x, y, 0, alpha == 0 ? value : std::max(alpha, value));
      break;
    case AddScaled:
    case AddSolid:
      write(settings, x, y, 0, std::min(m, alpha + value));
      break;
    case AddGlow:
      write(settings, x, y, 0, std::max(alpha, largest));
      break;
    case Lighten:
      write(settings, x, y, 0, std::max({alpha, value, largest}));
      break;
  }
}

void mixWithInput(const brisel::RenderSettings& s, int mode) {
  const float m = s.deepColor ? 32768.0f : 255.0f;
  for (std::int32_t y = 0; y < s.frameHeight; ++y) {
    for (std::int32_t x = 0; x < s.frameWidth; ++x) {
      const float particleAlpha = read(s, x, y, 0);
      const float inputAlpha = readInput(s, x, y, 0);
      const float t = particleAlpha / m;
      for (int c = 1; c <= 3; ++c) {
        const float p = read(s, x, y, c);
        const float i = readInput(s, x, y, c);
        if (particleAlpha == 0) {
          write(s, x, y, c, i);
        } else if (mode == 2) {
          write(s, x, y, c, t * p + (1.0f - t) * i);
        } else {
          write(s, x, y, c, std::min(m, p * t + (inputAlpha < m ? i * (inputAlpha / m) : i)));
        }
      }
      if (particleAlpha == 0) {
        write(s, x, y, 0, inputAlpha);
      } else {
        write(s, x, y, 0,
              mode == 2 ? std::max(particleAlpha, inputAlpha)
                        : std::min(m, particleAlpha + inputAlpha));
      }
    }
  }
}

}  // namespace reference
