// Tells the host which parameters are greyed out.
#pragma once

#include <cstdint>

#include "effect/values.h"
#include "plugin/sdk/in_out_data.h"

namespace brisel {

/// Sends the host the states that hang on the parameter `changedIndex`; an index without a rule, or
/// a host without the suite for it, changes nothing. `params` holds all parameters, `values` what
/// is in them. Only copies of the records are changed.
void updateParameterUI(const PF_InData& in, PF_ParamDef* const* params, const Values& values,
                       std::int32_t changedIndex);

/// The same for every index, in ascending order.
void updateAllParameterUI(const PF_InData& in, PF_ParamDef* const* params, const Values& values);

}  // namespace brisel
