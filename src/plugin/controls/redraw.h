// Asking the host to draw a control again.
#pragma once

#include "plugin/controls/control_event.h"

namespace brisel {

/// Invalidates the control's current frame and marks the event handled. Parameter 1 is marked
/// changed, so that the host notices. Returns the host's error, which then shows a message.
PF_Err requestRedraw(ControlEvent& event);

}  // namespace brisel
