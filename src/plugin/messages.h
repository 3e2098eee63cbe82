// Answers what programs ask of an instance; the records are those of program_message.h.
#pragma once

#include "plugin/sdk/in_out_data.h"

namespace brisel {

/// Writes an answer into a record that it knows, and leaves any other alone. `extra` and `params`
/// are the command's and may be null.
void answerMessage(PF_InData& in, PF_OutData& out, PF_ParamDef* const* params, void* extra);

}  // namespace brisel
