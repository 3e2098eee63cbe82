// Where the parts of a preset row lie, and which entries it shows.
#pragma once

#include "plugin/controls/control_event.h"
#include "plugin/controls/preset_list.h"

namespace brisel {

inline constexpr std::int32_t kCellWidth = 94;  // of one thumbnail, pixels
inline constexpr std::int32_t kStripHeight = 71;
inline constexpr std::int32_t kArrowWidth = 20;
inline constexpr std::int32_t kInset = 2;  // of arrows and strip from the frame and each other

/// Gives the row its frame; where arrows and strip lie stays as it is.
void setFrame(const ControlRect& frame, PresetList& list);

/// Places arrows and strip in the row's frame.
void layOutRow(PresetList& list);

/// Brings the scroll position back into range: `firstVisible`, `endVisible`, `hiddenAfter` and
/// `pixelOffset`. At the right end the last entry ends at the strip's right edge.
void normalizeScroll(PresetList& list);

}  // namespace brisel
