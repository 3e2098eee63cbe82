// Presets applied: from the numbers of a parameter file to parameter values.
#pragma once

#include <optional>

#include "effect/values.h"
#include "presets/parameter_file.h"

namespace brisel {

/// How many numbers a parameter file has for a parameter of that kind: red, green, blue and alpha
/// of a color, x and y of a point, one of all others, even of those without a value.
int numberCount(ParamKind kind);

/// The numbers as a value of that kind of parameter; nothing for kinds without one. They are
/// truncated and saturate, but no range bounds them. Points are fractions of `frame`.
std::optional<Value> presetValue(ParamKind kind, const FileParameter& parameter, FrameSize frame);

/// Gives `values` what the file at `path` (zero-terminated) sets; the others stay as they are.
/// Returns whether it could be read. Throws std::bad_alloc.
ParameterFile::State applyParameterFile(const char* path, FrameSize frame, Values& values);

}  // namespace brisel
