// The three custom controls of the effect.
#pragma once

#include "core/geometry.h"
#include "plugin/controls/header.h"
#include "plugin/controls/preset_list.h"

namespace brisel {

/// What the handlers read and change besides the event.
struct PanelState {
  HeaderState& header;
  FrameSize& frameSize;
  const char* presetRootFolder;
  PresetList* emitterPresets;  // null when the instance has no lists: its rows do nothing
  PresetList* starPresets;
};

/// Draws, hovers or clicks the control that the event belongs to; any other event is ignored.
/// Returns the host's error.
PF_Err handlePanelEvent(ControlEvent& event, const PanelState& panel);

}  // namespace brisel
