// One row of presets in the effect controls.
#pragma once

#include <cstdint>
#include <memory>

namespace brisel {

/// A preset: the parameter file it applies, and its thumbnail.
struct Preset {
  char path[256] = {};     // of the parameter file, zero-terminated; empty when it has none
  std::int32_t index = 0;  // position in the list
  std::unique_ptr<std::uint8_t[]> pixels;  // red, green, blue; top row first, without padding
  std::int32_t width = 0;                  // pixels; 0 without an image
  std::int32_t height = 0;
  std::int32_t rowBytes = 0;  // width * 3
};

/// The entries, and how the row that shows them lies and is scrolled. Coordinates are the host's
/// control coordinates; the layout is recomputed at every draw.
struct PresetList {
  static constexpr std::uint8_t kNoCell = 255;

  std::int32_t frameLeft = 0;  // the control's frame as the host last gave it
  std::int32_t frameTop = 0;
  std::int32_t frameRight = 0;
  std::int32_t frameBottom = 0;
  bool mouseInside = false;
  bool rightArrowHot = false;  // clicked and not yet left
  bool leftArrowHot = false;
  std::uint8_t hotCell = kNoCell;  // under the pointer, counted from the first visible cell
  std::int32_t leftArrowLeft = 0;
  std::int32_t leftArrowRight = 0;
  std::int32_t rightArrowLeft = 0;
  std::int32_t rightArrowRight = 0;
  std::int32_t stripWidth = 0;
  std::int32_t stripLeft = 0;
  std::int32_t stripTop = 0;
  std::int32_t count = 0;
  std::unique_ptr<Preset[]> items;  // `count` of them
  std::int32_t firstVisible = 0;
  std::int32_t hiddenAfter = 0;  // entries after the last shown one; -1 when all fit
  std::int32_t endVisible = 0;   // one past the last entry shown
  std::int32_t pixelOffset = 0;  // 0, or negative when the strip is right-aligned
};

}  // namespace brisel
