#include "engine/source_pixel.h"

#include <algorithm>
#include <cstring>

#include "core/numbers.h"

namespace brisel {

float SourcePixel::brightest() const {
  return static_cast<float>(std::max({color.red, color.green, color.blue})) / 255.0f;
}

SourcePixel sourcePixelAt(const ImageView& input, const RenderSettings& s, float startX,
                          float startY) {
  const std::int32_t column =
      std::clamp(truncToInt(startX * static_cast<float>(s.frameWidth)), 0, s.frameWidth - 1);
  const std::int32_t row =
      std::clamp(truncToInt(startY * static_cast<float>(s.frameHeight)), 0, s.frameHeight - 1);
  if (!input.contains(column, row)) return {};

  const std::uint8_t* pixel = input.at(column, row);
  if (!input.isDeep()) {
    return {static_cast<float>(pixel[0]) / 255.0f, {pixel[1], pixel[2], pixel[3]}};
  }
  std::uint16_t channels[4];
  std::memcpy(channels, pixel, sizeof channels);
  const auto toByteScale = [](std::uint16_t channel) {
    return truncToInt(static_cast<float>(channel) / kDeepPerByte);
  };
  return {static_cast<float>(channels[0]) / kDeepFullScale,
          {toByteScale(channels[1]), toByteScale(channels[2]), toByteScale(channels[3])}};
}

}  // namespace brisel
