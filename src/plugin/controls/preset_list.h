// One row of presets in the effect controls: what it shows, and how it lies and is scrolled.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "plugin/controls/control_event.h"
#include "presets/bmp_file.h"
#include "presets/preset_index.h"

namespace brisel {

inline constexpr std::int32_t kCellWidth = 94;  // of one thumbnail, pixels
inline constexpr std::int32_t kStripHeight = 71;
inline constexpr std::int32_t kArrowWidth = 20;
inline constexpr std::int32_t kInset = 2;  // of arrows and strip from the frame and each other

struct PresetCell {
  std::string path;    // of the parameter file; empty when it has none
  BmpImage thumbnail;  // of size 0 when it has none
};

/// Coordinates are the host's control coordinates; the layout is recomputed at every draw.
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
  std::vector<PresetCell> items;
  std::int32_t firstVisible = 0;
  std::int32_t hiddenAfter = 0;  // entries after the last shown one; -1 when all fit
  std::int32_t endVisible = 0;   // one past the last entry shown
  std::int32_t pixelOffset = 0;  // 0, or negative when the strip is right-aligned

  std::int32_t count() const { return static_cast<std::int32_t>(items.size()); }
};

/// The presets of a section of the index, thumbnails included, scrolled to the first.
PresetList readPresetList(const PresetFolders& folders, const char* section);

/// Gives the row its frame; where arrows and strip lie stays as it is.
void setFrame(const ControlRect& frame, PresetList& list);

/// Places arrows and strip in the row's frame.
void layOutRow(PresetList& list);

/// Brings the scroll position back into range: `firstVisible`, `endVisible`, `hiddenAfter` and
/// `pixelOffset`. At the right end the last entry ends at the strip's right edge.
void normalizeScroll(PresetList& list);

}  // namespace brisel
