// The host's effect interface: the one function a module exports.
#pragma once

#include "plugin/sdk/in_out_data.h"

extern "C" {

// `params` holds in->num_params pointers, params[0] being the input layer; it may be null at
// PF_Cmd_ABOUT, PF_Cmd_GLOBAL_SETUP, PF_Cmd_GLOBAL_SETDOWN and PF_Cmd_PARAMS_SETUP. `output` is
// given at PF_Cmd_RENDER only. `extra` is a PF_EventExtra* at PF_Cmd_EVENT and a
// PF_UserChangedParamExtra* at PF_Cmd_USER_CHANGED_PARAM.
using PF_EntryPointFunc = PF_Err(PF_Cmd cmd, PF_InData* in, PF_OutData* out, PF_ParamDef* params[],
                                 PF_LayerDef* output, void* extra);

PF_EntryPointFunc EntryPointFunc;

}  // extern "C"
