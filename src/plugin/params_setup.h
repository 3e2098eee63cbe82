// Declares the parameters to the host.
#pragma once

#include "plugin/sdk/in_out_data.h"

namespace brisel {

/// Adds every parameter, reports their number and registers the custom panel. Returns the first
/// error of the host's callbacks; the parameters after it are then not added.
PF_Err setUpParameters(PF_InData& in, PF_OutData& out);

}  // namespace brisel
