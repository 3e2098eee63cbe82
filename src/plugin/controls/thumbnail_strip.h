// The thumbnails of a preset row, composed as one picture.
#pragma once

#include <cstdint>
#include <memory>

#include "plugin/controls/preset_list.h"

namespace brisel {

/// Blue, green, red; top row first, rows padded to a multiple of 4 bytes.
struct ThumbnailStrip {
  std::unique_ptr<std::uint8_t[]> pixels;  // null when there is no width or no memory for it
  std::size_t bytes = 0;
};

/// Draws the visible entries of a row that is laid out, stripWidth x kStripHeight pixels.
ThumbnailStrip composeStrip(const PresetList& list);

}  // namespace brisel
