#include "engine/alpha_source.h"

#include <algorithm>
#include <cstddef>

#include "core/numbers.h"

namespace brisel {
namespace {

/// Calls `write` with the map's index and the input's channels for every pixel of the frame that
/// the input reaches. The rest keeps the fresh map's zeros.
template <class Channel, class Write>
void forInputPixels(const RenderSettings& s, const Channel* input, Write write) {
  const std::int32_t width = std::min(s.frameWidth, s.inputWidth);
  const std::int32_t height = std::min(s.frameHeight, s.inputHeight);
  for (std::int32_t y = 0; y < height; ++y) {
    const Channel* pixel = input + std::ptrdiff_t{y} * s.inputRowStride;
    const std::size_t row = static_cast<std::size_t>(y) * static_cast<std::size_t>(s.frameWidth);
    for (std::int32_t x = 0; x < width; ++x, pixel += 4) {
      write(row + static_cast<std::size_t>(x), pixel);
    }
  }
}

template <class Write>
void forInputPixels(const RenderSettings& s, Write write) {
  if (s.deepColor) {
    forInputPixels(s, s.inputPixels16, write);
  } else {
    forInputPixels(s, s.inputPixels, write);
  }
}

std::size_t framePixels(const RenderSettings& s) {
  return static_cast<std::size_t>(s.frameWidth) * static_cast<std::size_t>(s.frameHeight);
}

}  // namespace

PageArray<float> buildSourceIntensityMap(const RenderSettings& s) {
  PageArray<float> map = allocatePageArray<float>(framePixels(s));
  if (map == nullptr) return map;
  const float scale = s.deepColor ? kDeepPerByte : 1.0f;
  forInputPixels(s, [&](std::size_t index, const auto* pixel) {
    const float mean = static_cast<float>(pixel[1] + pixel[2] + pixel[3]) / 3.0f;
    if (pixel[0] != 0 && mean > 0.0f) map[index] = mean / scale;
  });
  return map;
}

PageArray<std::uint8_t> buildAlphaMask(const RenderSettings& s) {
  PageArray<std::uint8_t> mask = allocatePageArray<std::uint8_t>(framePixels(s));
  if (mask == nullptr) return mask;
  forInputPixels(s, [&](std::size_t index, const auto* pixel) {
    if (pixel[0] != 0) mask[index] = 255;
  });
  return mask;
}

}  // namespace brisel
