// Thumbnail files: a subset of the Windows bitmap format.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

namespace brisel {

struct BmpImage {
  std::unique_ptr<std::uint8_t[]> pixels;  // red, green, blue; top row first, without padding
  std::int32_t width = 0;                  // pixels
  std::int32_t height = 0;
};

/// A bitmap of 24 bits, or of 8 bits with a palette behind a 40-byte information header, stored
/// bottom row first. Without pixels, and of size 0, when the bytes are anything else or end early,
/// or the image cannot be held.
BmpImage parseBmpFile(std::span<const std::uint8_t> bytes);

/// The same of the file at `path` (zero-terminated); likewise without pixels when it cannot be
/// read.
BmpImage LoadBmpFile(const char* path);

}  // namespace brisel
