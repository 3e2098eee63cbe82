// Which parameters are greyed out because they have no effect under the current choices.
#pragma once

#include <cstdint>

#include "plugin/sdk/in_out_data.h"

namespace brisel {

/// Sends the host the state of every parameter that the rule of `changedIndex` governs; an index
/// without a rule, or a host without the suite for it, changes nothing. `params` holds all
/// parameters. Only copies of the records are changed.
void updateParameterUI(const PF_InData& in, PF_ParamDef* const* params, std::int32_t changedIndex);

/// The same for every index, in ascending order.
void updateAllParameterUI(const PF_InData& in, PF_ParamDef* const* params);

}  // namespace brisel
