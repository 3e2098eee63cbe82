#include "engine/source.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "core/numbers.h"

namespace brisel {
namespace {

template <class Channel>
struct Argb {
  Channel alpha, red, green, blue;
};

/// Calls `write` with the map's index and the input's pixel for every pixel of the frame that the
/// input reaches. The rest keeps the fresh map's zeros.
template <class Channel, class Write>
void forChannels(const ImageView& input, FrameSize frame, Write write) {
  const std::int32_t width = std::min(frame.width, input.width);
  const std::int32_t height = std::min(frame.height, input.height);
  for (std::int32_t y = 0; y < height; ++y) {
    const std::size_t row = static_cast<std::size_t>(y) * static_cast<std::size_t>(frame.width);
    for (std::int32_t x = 0; x < width; ++x) {
      Argb<Channel> pixel;
      std::memcpy(&pixel, input.at(x, y), sizeof pixel);
      write(row + static_cast<std::size_t>(x), pixel);
    }
  }
}

template <class Write>
void forInputPixels(const ImageView& input, FrameSize frame, Write write) {
  if (input.isDeep()) {
    forChannels<std::uint16_t>(input, frame, write);
  } else {
    forChannels<std::uint8_t>(input, frame, write);
  }
}

std::size_t pixelCount(FrameSize frame) {
  return static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(frame.height);
}

}  // namespace

PageArray<float> buildSourceIntensityMap(const ImageView& input, FrameSize frame) {
  PageArray<float> map = allocatePageArray<float>(pixelCount(frame));
  if (map == nullptr) return map;
  const float scale = input.isDeep() ? kDeepPerByte : 1.0f;
  forInputPixels(input, frame, [&](std::size_t index, const auto& pixel) {
    const float mean = static_cast<float>(pixel.red + pixel.green + pixel.blue) / 3.0f;
    if (pixel.alpha != 0 && mean > 0.0f) map[index] = mean / scale;
  });
  return map;
}

PageArray<std::uint8_t> buildAlphaMask(const ImageView& input, FrameSize frame) {
  PageArray<std::uint8_t> mask = allocatePageArray<std::uint8_t>(pixelCount(frame));
  if (mask == nullptr) return mask;
  forInputPixels(input, frame, [&](std::size_t index, const auto& pixel) {
    if (pixel.alpha != 0) mask[index] = 255;
  });
  return mask;
}

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
