// Thumbnails.
#include <algorithm>
#include <array>
#include <cstddef>

#include "presets/bmp_file.h"
#include "target.h"

void fuzz::runInput(std::span<const std::uint8_t> input) {
  const brisel::BmpImage image = brisel::parseBmpFile(input);
  require((image.pixels != nullptr) == (image.width > 0 && image.height > 0),
          "there are pixels, or there is no size");
  if (image.pixels == nullptr) return;

  // Every byte is that of a pixel or palette of the input, in 24 bits as often as there at most.
  const auto count = std::size_t{3} * static_cast<std::size_t>(image.width) *
                     static_cast<std::size_t>(image.height);
  require(count <= 3 * input.size(), "no more pixels than bytes");
  std::array<bool, 256> held{};
  for (const std::uint8_t byte : input) held[byte] = true;
  require(std::all_of(image.pixels.get(), image.pixels.get() + count,
                      [&held](std::uint8_t byte) { return held[byte]; }),
          "a pixel is of the input");
}
