// Presets applied: from the numbers of a parameter file to parameter values.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "effect/values.h"
#include "presets/parameter_file.h"

namespace brisel {

/// How many numbers a parameter file has for a parameter of that kind: red, green, blue and alpha
/// of a color, x and y of a point, one of all others, even of those without a value.
int numberCount(ParamKind kind);

/// The numbers as a value of that kind of parameter; nothing for kinds without one. They are
/// truncated and saturate, but no range bounds them. Points are fractions of `frame`.
std::optional<Value> presetValue(ParamKind kind, const FileParameter& parameter, FrameSize frame);

/// The NumberCount by which a parameter file is read: of the effect's own parameters.
int numberCountOf(std::string_view label);

/// Gives `values` what the file sets, and returns the indices of the parameters that it sets. The
/// others stay as they are. Throws std::bad_alloc.
std::vector<ParamIndex> applyParameters(const ParameterFile& file, FrameSize frame, Values& values);

/// The same of the file at `path` (zero-terminated). Returns whether it could be read.
ParameterFile::State applyParameterFile(const char* path, FrameSize frame, Values& values);

}  // namespace brisel
