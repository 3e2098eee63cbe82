#include "tests/render/reference_blending.h"

#include <algorithm>
#include <cstring>

namespace reference {
namespace {

// Channel `c` of pixel (x, y): alpha, red, green, blue.
float read(const brisel::ImageView& image, std::int32_t x, std::int32_t y, int c) {
  if (x >= image.width || y >= image.height) return 0;
  const std::uint8_t* pixel = image.at(x, y);
  if (!image.isDeep()) return pixel[c];
  std::uint16_t channel;
  std::memcpy(&channel, pixel + 2 * c, 2);
  return channel;
}

void write(const brisel::MutableImageView& image, std::int32_t x, std::int32_t y, int c, float v) {
  std::uint8_t* pixel = image.at(x, y);
  if (!image.isDeep()) {
    pixel[c] = static_cast<std::uint8_t>(v);
    return;
  }
  const auto channel = static_cast<std::uint16_t>(v);
  std::memcpy(pixel + 2 * c, &channel, 2);
}

}  // namespace

void plotPixel(const brisel::MutableImageView& image, brisel::BlendRule rule, brisel::Rgb pen,
               std::int32_t x, std::int32_t y, float value) {
  if (!(value > 0)) return;
  using enum brisel::BlendRule;
  const float m = image.isDeep() ? 32768.0f : 255.0f;
  value = std::min(value, m);
  const float t = value / m;
  const float alpha = read(image, x, y, 0);
  const std::int32_t pens[] = {pen.red, pen.green, pen.blue};
  float largest = 0;
  for (int c = 1; c <= 3; ++c) {
    const float penC =
        static_cast<float>(pens[c - 1]) * (image.isDeep() ? 32768.0f / 255.0f : 1.0f);
    const float d = read(image, x, y, c);
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
    write(image, x, y, c, result);
    largest = std::max(largest, read(image, x, y, c));
  }
  switch (rule) {
    case Over:
      write(image, x, y, 0, alpha == 0 ? value : std::max(alpha, value));
      break;
    case AddScaled:
    case AddSolid:
      write(image, x, y, 0, std::min(m, alpha + value));
      break;
    case AddGlow:
      write(image, x, y, 0, std::max(alpha, largest));
      break;
    case Lighten:
      write(image, x, y, 0, std::max({alpha, value, largest}));
      break;
  }
}

void mixWithInput(const brisel::MutableImageView& s, const brisel::ImageView& input, int mode) {
  const float m = s.isDeep() ? 32768.0f : 255.0f;
  for (std::int32_t y = 0; y < s.height; ++y) {
    for (std::int32_t x = 0; x < s.width; ++x) {
      const float particleAlpha = read(s, x, y, 0);
      const float inputAlpha = read(input, x, y, 0);
      const float t = particleAlpha / m;
      for (int c = 1; c <= 3; ++c) {
        const float p = read(s, x, y, c);
        const float i = read(input, x, y, c);
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
