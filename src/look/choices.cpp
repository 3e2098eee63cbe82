#include "look/choices.h"

#include <algorithm>
#include <cmath>

namespace brisel {

void apply(const Choices& choices, Values& values) {
  for (const Choice& choice : choices) {
    Value& value = values[choice.index];
    (choice.isY ? value.y : value.number) = choice.number;
  }
}

double withinRange(const ParameterSpec& spec, double number) {
  constexpr double kMostFixed = 32767;  // whole part of a 16.16 number
  switch (spec.kind) {
    case ParamKind::Number:
    case ParamKind::WholeNumber:
      return std::clamp(number, static_cast<double>(spec.validMin),
                        static_cast<double>(spec.validMax));
    default:
      return std::clamp(number, -kMostFixed, kMostFixed);
  }
}

std::int32_t valueNumber(ParamIndex index, double number) {
  Values values;
  values.setNumber(index, number);
  return values[index].number;
}

std::int32_t coordinate(double share, bool isY, FrameSize frame) {
  return toFixed(share * (isY ? frame.height : frame.width));
}

std::int32_t colorNumber(ParamIndex index, const std::array<double, 3>& color) {
  // In single precision, which some hosts hand over: 0.7 is 179 from each.
  const auto byteOf = [](double share) {
    const float held = std::clamp(static_cast<float>(share), 0.0f, 1.0f);
    return static_cast<std::uint8_t>(std::lround(held * 255.0f));
  };
  const std::uint8_t alpha = parameterSpec(index).colorAlpha;
  return toValue({alpha, byteOf(color[0]), byteOf(color[1]), byteOf(color[2])}).number;
}

std::string_view unitText(ParamUnit unit) {
  switch (unit) {
    case ParamUnit::Percent:
      return " percent";
    case ParamUnit::Degrees:
      return " degrees";
    case ParamUnit::Frames:
      return " frames";
    case ParamUnit::Stars:
      return " stars";
    case ParamUnit::Rays:
      return " rays";
    case ParamUnit::Pixels:
      return " pixels";
    case ParamUnit::None:
      break;
  }
  return "";
}

std::string rangeText(std::int32_t min, std::int32_t max) {
  return std::to_string(min) + " to " + std::to_string(max);
}

}  // namespace brisel
