// From what a person writes as a parameter's value to what the parameter holds.
#pragma once

#include <array>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "core/geometry.h"
#include "effect/values.h"

namespace scene {

/// As written: true, 12.5, "Circle" or "#ffcc66", [0.5, 0.5].
using UserValue = std::variant<bool, double, std::string, std::vector<double>>;

/// A value as written where nothing tells text from numbers but its look, as on a command line:
/// "40", "0.5,0.5", "true", anything else is text.
UserValue userValueFromText(std::string_view text);

/// A value for one parameter: a number, an angle in degrees, a checkbox (0 or 1) or a popup item
/// (from 1) in the first component; a point in fractions of the frame in the first two; a color as
/// red, green, blue (0..255).
using ParamValue = std::array<double, 3>;

/// What is wrong with a value; reads on after the parameter's name: "takes a number ...".
struct ValueError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Throws ValueError, naming what would be valid, when the parameter cannot hold the value. The
/// frame's size bounds points, which the effect keeps as 16.16 pixels.
ParamValue paramValue(const UserValue& value, const brisel::ParameterSpec& parameter,
                      brisel::FrameSize frame);

/// Whether a person can set this kind of parameter at all.
bool takesValue(brisel::ParamKind kind);

/// Whether keyframes of this kind of parameter are blended rather than held.
bool isInterpolated(brisel::ParamKind kind);

/// The texts of a popup's items; the first is item 1.
std::vector<std::string> itemsOf(const brisel::ParameterSpec& popup);

/// Gives the parameter the value. Between keyframes whole numbers and colors are rounded, and what
/// an ease leads beyond the valid range stops there. Points are fractions of `frame`.
void setParameter(brisel::Values& values, brisel::ParamIndex index, const ParamValue& value,
                  brisel::FrameSize frame);

}  // namespace scene
