// The parameter records that the host hands over with a command, and the values in them.
#pragma once

#include <cstdint>

#include "effect/values.h"
#include "plugin/sdk/in_out_data.h"

namespace brisel {

/// How many of the effect's parameters there are records of. A host that does not know their number
/// leaves it 0, which says nothing about the records.
std::int32_t suppliedParameters(const PF_InData& in, PF_ParamDef* const* params);

/// Whether all parameters are there.
bool hasAllParameters(const PF_InData& in, PF_ParamDef* const* params);

/// The value of a record that holds a parameter of that kind; nothing of kinds without a value.
Value readValue(const PF_ParamDef& param, ParamKind kind);

/// The values of all parameters; `params` holds all of their records.
Values readValues(PF_ParamDef* const* params);

}  // namespace brisel
