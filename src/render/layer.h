// The particle layer: the pixels that stars are drawn into, which are the host's output world.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/numbers.h"
#include "core/render_settings.h"

namespace brisel {

/// Borrowed for one render. Rows are `rowBytes` apart; a pixel is four channels in the order alpha,
/// red, green, blue, of 8 bits (full scale 255) or, when deep, 16 bits (full scale 32768).
struct Layer {
  std::uint8_t* pixels = nullptr;
  std::ptrdiff_t rowBytes = 0;
  std::int32_t width = 0;
  std::int32_t height = 0;
  bool deep = false;

  float fullScale() const { return deep ? kDeepFullScale : 255.0f; }
  std::ptrdiff_t pixelBytes() const { return deep ? 8 : 4; }
  std::uint8_t* at(std::int32_t x, std::int32_t y) const {
    return pixels + rowBytes * y + pixelBytes() * x;
  }
};

/// The output world that the settings describe.
inline Layer outputLayer(const RenderSettings& s) {
  if (s.deepColor) {
    return {reinterpret_cast<std::uint8_t*>(s.outputPixels16),
            std::ptrdiff_t{s.outputRowStride} * 2, s.frameWidth, s.frameHeight, true};
  }
  return {s.outputPixels, s.outputRowStride, s.frameWidth, s.frameHeight, false};
}

}  // namespace brisel
