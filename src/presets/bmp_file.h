// Thumbnail files: a subset of the Windows bitmap format.
#pragma once

#include <cstdint>
#include <memory>

namespace brisel {

struct BmpImage {
  std::unique_ptr<std::uint8_t[]> pixels;  // red, green, blue; top row first, without padding
  std::int32_t width = 0;                  // pixels
  std::int32_t height = 0;
};

/// Reads a bitmap of 24 bits, or of 8 bits with a palette behind a 40-byte information header,
/// stored bottom row first. Without pixels, and of size 0, when the file is anything else, ends
/// early, or cannot be read or held.
BmpImage LoadBmpFile(const char* path);

}  // namespace brisel
