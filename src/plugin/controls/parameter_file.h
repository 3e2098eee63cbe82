// Applying a preset: a parameter file's values become those of the effect's parameters.
#pragma once

#include <cstdint>

#include "effect/values.h"
#include "plugin/sdk/in_out_data.h"

namespace brisel {

/// Stores the values that the file at `path` gives to parameters of the first `parameterCount`
/// records of `params` (null records are passed over), marks them changed, and asks the host to
/// refresh its controls. Points are fractions of `frame`, which becomes the layer's size when the
/// host tells it. A file that cannot be read or has another header, a host without the
/// parameter suite, or memory that runs out, changes nothing.
void ApplyParameterFile(const char* path, std::int32_t parameterCount, const PF_InData& in,
                        PF_OutData& out, PF_ParamDef* const* params, FrameSize& frame);

}  // namespace brisel
