// From what a person writes as a parameter's value to what the parameter holds.
#pragma once

#include <array>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "cli/pictures/frame.h"
#include "hostkit/parameters.h"

namespace cli {

// As written: true, 12.5, "Circle" or "#ffcc66", [0.5, 0.5].
using UserValue = std::variant<bool, double, std::string, std::vector<double>>;

// A value as written on the command line, where nothing tells text from numbers but its look:
// "40", "0.5,0.5", "true", anything else is text.
UserValue userValueFromText(std::string_view text);

// A value for one parameter: a number, an angle in degrees, a checkbox (0 or 1) or a popup item
// (from 1) in the first component; a point in fractions of the frame in the first two; a colour as
// red, green, blue (0..255).
using ParamValue = std::array<double, 3>;

// What is wrong with a value; reads on after the parameter's name: "takes a number ...".
struct ValueError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Throws ValueError, naming what would be valid, when the parameter cannot hold the value. The
// frame's size bounds points, which the host keeps as 16.16 pixels.
ParamValue paramValue(const UserValue& value, const hostkit::Parameter& parameter, FrameSize frame);

// Whether a person can set this kind of parameter at all.
bool takesValue(PF_ParamType type);

// Whether keyframes of this kind of parameter are blended rather than held.
bool isInterpolated(PF_ParamType type);

// Gives the value to the host. Between keyframes whole numbers and colours are rounded, and what an
// ease leads beyond the valid range stops there.
void setParameter(hostkit::ParameterSet& parameters, const hostkit::Parameter& parameter,
                  const ParamValue& value, FrameSize frame);

}  // namespace cli
