// Images in memory that belongs to somebody else: the input and output of a frame, and masks.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/numbers.h"

namespace brisel {

/// What a pixel is in memory. Four channels lie in the order alpha, red, green, blue.
enum class PixelFormat : std::uint8_t {
  Argb8,   // four channels of 8 bits, full scale 255
  Argb16,  // four channels of 16 bits, full scale 32768
  Mask8    // one byte: 0 outside the mask
};

/// `Byte` is std::uint8_t, or const std::uint8_t for an image that is only read. Borrowed: whoever
/// makes a view answers for its memory. Rows are `rowBytes` apart, the top one first; nothing
/// between them is touched.
template <class Byte>
struct BasicImageView {
  Byte* bytes = nullptr;
  std::int32_t width = 0;  // pixels
  std::int32_t height = 0;
  std::ptrdiff_t rowBytes = 0;
  PixelFormat format = PixelFormat::Argb8;

  /// A view that may write also serves for reading.
  operator BasicImageView<const Byte>() const { return {bytes, width, height, rowBytes, format}; }

  bool contains(std::int32_t x, std::int32_t y) const {
    return x >= 0 && y >= 0 && x < width && y < height;
  }
  bool isDeep() const { return format == PixelFormat::Argb16; }

  /// The greatest value of a channel.
  float fullScale() const { return isDeep() ? kDeepFullScale : 255.0f; }

  std::ptrdiff_t pixelBytes() const {
    if (format == PixelFormat::Mask8) return 1;
    return isDeep() ? 8 : 4;
  }

  /// The first byte of a pixel; computed, not checked.
  Byte* at(std::int32_t x, std::int32_t y) const { return bytes + rowBytes * y + pixelBytes() * x; }
};

using ImageView = BasicImageView<const std::uint8_t>;
using MutableImageView = BasicImageView<std::uint8_t>;

}  // namespace brisel
