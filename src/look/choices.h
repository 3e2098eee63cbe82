// What a host's user chose, and hosts' numbers as the effect takes them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "effect/values.h"

namespace brisel {

/// A number of one of the effect's parameters that differs from its default: of its Value, the
/// number or the y.
struct Choice {
  ParamIndex index;
  bool isY;
  std::int32_t number;
  friend bool operator==(const Choice&, const Choice&) = default;
};
using Choices = std::vector<Choice>;  // by parameter

void apply(const Choices& choices, Values& values);

/// How stars and clip are mixed unless something else is chosen. The effect's own default leaves
/// the clip out, which in hosts of clips looks like a fault.
inline constexpr int kInitialMix = 3;  // "Add"

/// The nearest number that the parameter can have. Not-a-number is for the caller to leave out.
double withinRange(const ParameterSpec& spec, double number);

/// The number, in the unit of the parameter, as its Value has it; of all kinds but points and
/// colors.
std::int32_t valueNumber(ParamIndex index, double number);

/// A share of the frame as a point's Value has it, from the left or the top.
std::int32_t coordinate(double share, bool isY, FrameSize frame);

/// Red, green and blue of 0 to 1, held to that, as the parameter's Value has them.
std::int32_t colorNumber(ParamIndex index, const std::array<double, 3>& color);

/// " percent", or another unit with a blank before it, or nothing.
std::string_view unitText(ParamUnit unit);

/// "0 to 100".
std::string rangeText(std::int32_t min, std::int32_t max);

}  // namespace brisel
