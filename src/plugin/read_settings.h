// Converts the host's parameter values of one frame into RenderSettings.
#pragma once

#include "core/render_settings.h"
#include "plugin/sdk/in_out_data.h"

namespace brisel {

/// `params` holds the kParamCount records of the frame, params[0] being the input layer; `output`
/// is the world to draw into. Both are borrowed: the settings point into their pixels.
RenderSettings readSettings(const PF_InData& in, PF_ParamDef* const* params,
                            const PF_LayerDef& output);

}  // namespace brisel
