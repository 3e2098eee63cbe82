#include "engine/source_pixel.h"

#include <algorithm>
#include <cstddef>

#include "core/numbers.h"

namespace brisel {

float SourcePixel::brightest() const {
  return static_cast<float>(std::max({color.red, color.green, color.blue})) / 255.0f;
}

SourcePixel sourcePixelAt(const RenderSettings& s, float startX, float startY) {
  const std::int32_t column =
      std::clamp(truncToInt(startX * static_cast<float>(s.frameWidth)), 0, s.frameWidth - 1);
  const std::int32_t row =
      std::clamp(truncToInt(startY * static_cast<float>(s.frameHeight)), 0, s.frameHeight - 1);
  if (column >= s.inputWidth || row >= s.inputHeight) return {};

  const std::ptrdiff_t offset =
      static_cast<std::ptrdiff_t>(row) * s.inputRowStride + std::ptrdiff_t{column} * 4;
  if (s.deepColor) {
    const std::uint16_t* pixel = s.inputPixels16 + offset;
    const auto toByteScale = [](std::uint16_t channel) {
      return truncToInt(static_cast<float>(channel) / kDeepPerByte);
    };
    return {static_cast<float>(pixel[0]) / kDeepFullScale,
            {toByteScale(pixel[1]), toByteScale(pixel[2]), toByteScale(pixel[3])}};
  }
  const std::uint8_t* pixel = s.inputPixels + offset;
  return {static_cast<float>(pixel[0]) / 255.0f, {pixel[1], pixel[2], pixel[3]}};
}

}  // namespace brisel
