// Which parameter records the host handed over with a command.
#pragma once

#include <algorithm>

#include "host/parameter_table.h"
#include "sdk/in_out_data.h"

namespace brisel {

/// Whether all parameters are there.
inline bool hasAllParameters(const PF_InData& in, PF_ParamDef* const* params) {
  if (params == nullptr || in.num_params < kParamCount) return false;
  return std::all_of(params, params + kParamCount,
                     [](const PF_ParamDef* param) { return param != nullptr; });
}

}  // namespace brisel
