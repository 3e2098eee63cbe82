// Values as people have and write them in a scene.
#pragma once

#include <string>
#include <string_view>

#include "effect/parameters.h"
#include "effect/values.h"
#include "scene/keyframe.h"
#include "scene/mask.h"
#include "scene/parameter_values.h"

namespace desk {

/// In the units of a person: see scene::ParamValue. Points are fractions of the frame.
scene::ParamValue personsValue(const brisel::Values& values, brisel::ParamIndex parameter,
                               brisel::FrameSize frame);

/// TOML for text in quotes.
std::string tomlString(std::string_view text);

/// With no more digits than anybody sees: to the fifth after the point.
std::string shortNumber(double number);

/// true, 12.5, "Circle", "#ffcc66", [0.5, 0.5].
std::string valueText(const brisel::ParameterSpec& parameter, const scene::ParamValue& value);

/// "in-out", or [0.1, 0, 0.9, 1].
std::string easeText(const scene::Ease& ease);

/// SVG path data, in quotes.
std::string shapeText(const scene::MaskShape& shape);

}  // namespace desk
