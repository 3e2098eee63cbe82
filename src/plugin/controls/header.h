// The header of the effect controls: a banner, the documentation button and the maker's logo.
#pragma once

#include "plugin/controls/control_event.h"

namespace brisel {

/// What the header remembers between events.
struct HeaderState {
  std::int32_t originLeft = 0;  // of the update rectangle that was drawn last
  std::int32_t originTop = 0;
  bool documentationHot = false;  // the pointer is over it
  bool logoHot = false;
};

/// All return the host's error.
PF_Err drawHeader(ControlEvent& event, HeaderState& header);
PF_Err hoverHeader(ControlEvent& event, HeaderState& header);

/// `presetRootFolder`: where the documentation lies; empty when it is unknown.
PF_Err clickHeader(ControlEvent& event, const char* presetRootFolder);

}  // namespace brisel
