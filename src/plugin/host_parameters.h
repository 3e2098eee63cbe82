// The parameter records that the host hands over with a command: the values in them, and which of
// them it shows grayed out.
#pragma once

#include <cstdint>

#include "effect/values.h"
#include "plugin/sdk/in_out_data.h"

namespace brisel {

/// For how many of the effect's parameters there are records. A host that does not know their
/// number leaves it 0, which says nothing about the records.
std::int32_t suppliedParameters(const PF_InData& in, PF_ParamDef* const* params);

/// Whether all parameters are there.
bool hasAllParameters(const PF_InData& in, PF_ParamDef* const* params);

/// The values of all parameters; `params` holds all of their records.
Values readValues(PF_ParamDef* const* params);

/// Sends the host the states that depend on the parameter `changedIndex`; an index without a rule,
/// or a host without the suite for it, changes nothing. `params` holds all parameters, `values`
/// what is in them. Only copies of the records are changed.
void updateParameterUI(const PF_InData& in, PF_ParamDef* const* params, const Values& values,
                       std::int32_t changedIndex);

/// The same for every index, in ascending order.
void updateAllParameterUI(const PF_InData& in, PF_ParamDef* const* params, const Values& values);

}  // namespace brisel
