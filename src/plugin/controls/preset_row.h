// A row of preset thumbnails between two scroll arrows.
#pragma once

#include "plugin/controls/control_event.h"
#include "plugin/controls/parameter_file.h"
#include "plugin/controls/preset_list.h"

namespace brisel {

/// All return the host's error.
PF_Err drawPresetRow(ControlEvent& event, PresetList& list);
PF_Err hoverPresetRow(ControlEvent& event, PresetList& list);

/// Scrolls, or applies the preset that was hit to the event's parameters; its points are fractions
/// of `frameSize`, as ApplyParameterFile has it.
PF_Err clickPresetRow(ControlEvent& event, PresetList& list, FrameSize& frameSize);

}  // namespace brisel
