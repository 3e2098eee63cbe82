// Which parameter records the host handed over with a command.
#pragma once

#include <algorithm>
#include <cstdint>

#include "plugin/parameter_table.h"
#include "plugin/sdk/in_out_data.h"

namespace brisel {

/// How many of the effect's parameters there are records of. A host that does not know their number
/// leaves it 0, which says nothing about the records.
inline std::int32_t suppliedParameters(const PF_InData& in, PF_ParamDef* const* params) {
  if (params == nullptr) return 0;
  return in.num_params == 0 ? kParamCount : std::min<std::int32_t>(in.num_params, kParamCount);
}

/// Whether all parameters are there.
inline bool hasAllParameters(const PF_InData& in, PF_ParamDef* const* params) {
  if (suppliedParameters(in, params) < kParamCount) return false;
  return std::all_of(params, params + kParamCount,
                     [](const PF_ParamDef* param) { return param != nullptr; });
}

}  // namespace brisel
