// The bitmaps that are built into the module.
#pragma once

#include <cstddef>
#include <cstdint>

namespace brisel {

/// Bytes of one row of a 24-bit image, padded to a multiple of 4.
constexpr std::size_t bitmapRowBytes(int width) {
  return (static_cast<std::size_t>(width) * 24 + 31) / 32 * 4;
}

/// Writes the bitmap's pixels into `rows`: blue, green, red, bottom row first,
/// bitmapRowBytes(width) to a row. Returns false when the module has no bitmap of that identifier
/// and size.
bool readBitmapResource(int identifier, int width, int height, std::uint8_t* rows);

}  // namespace brisel
