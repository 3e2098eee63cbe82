// The bitmaps of the effect's own controls, built into the module where the system has no
// resources.
#pragma once

#include <optional>
#include <span>

namespace brisel {

struct EmbeddedBitmap {
  int identifier;
  std::span<const unsigned char> file;  ///< a whole BMP file: 24 bits, bottom row first
};

std::optional<EmbeddedBitmap> findEmbeddedBitmap(int identifier);

}  // namespace brisel
