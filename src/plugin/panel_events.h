// Events of the custom controls, from the host to the controls' own code.
#pragma once

#include "plugin/sdk/events.h"
#include "plugin/sdk/in_out_data.h"

namespace brisel {

/// Serves one PF_Cmd_EVENT; `params` and its records may be null. Returns the host's error.
PF_Err handleEvent(PF_InData& in, PF_OutData& out, PF_ParamDef* const* params,
                   PF_EventExtra& extra);

}  // namespace brisel
