// One frame: read the settings, advance the stars by one step, paint them, mix the input in.
#pragma once

#include "plugin/sdk/in_out_data.h"

namespace brisel {

/// Renders into `output`. The frame follows from the stars that the last render left in the
/// sequence data, not from the time: only a time below 1 starts afresh. Without sequence data, or
/// when a world cannot be what it says it is, no star is painted. Never reports an error.
PF_Err renderFrame(PF_InData& in, PF_OutData& out, PF_ParamDef* const* params, PF_LayerDef& output);

}  // namespace brisel
