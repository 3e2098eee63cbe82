#include "effect/values.h"

#include <cmath>
#include <limits>

namespace brisel {
namespace {

constexpr double kFixedOne = 65536.0;

bool isFixed(std::int32_t index) {
  if (index < 1) return false;
  const ParamKind kind = parameterSpec(index).kind;
  return kind == ParamKind::Number || kind == ParamKind::Angle;
}

std::int32_t saturated(double number) {
  using Limits = std::numeric_limits<std::int32_t>;
  if (number >= static_cast<double>(Limits::max())) return Limits::max();
  if (!(number >= static_cast<double>(Limits::min()))) return Limits::min();
  return static_cast<std::int32_t>(number);
}

std::int32_t percentOf(std::int32_t percent, std::int32_t size) {
  return static_cast<std::int32_t>(std::int64_t{percent} * 65536 * size / 100);
}

Value initialValue(const ParameterSpec& spec, FrameSize frame) {
  switch (spec.kind) {
    case ParamKind::Number:
    case ParamKind::Angle:
      return {spec.initial * 65536};
    case ParamKind::Point:
      return {percentOf(spec.initial, frame.width), percentOf(spec.initialY, frame.height)};
    case ParamKind::Color:
      return toValue({spec.colorAlpha, static_cast<std::uint8_t>(spec.color.red),
                      static_cast<std::uint8_t>(spec.color.green),
                      static_cast<std::uint8_t>(spec.color.blue)});
    default:
      return {spec.initial};
  }
}

}  // namespace

std::int32_t toFixed(double number) {
  return saturated(std::round(number * kFixedOne));
}

Value toValue(ByteColor color) {
  const std::uint32_t bytes = std::uint32_t{color.alpha} << 24 | std::uint32_t{color.red} << 16 |
                              std::uint32_t{color.green} << 8 | color.blue;
  return {static_cast<std::int32_t>(bytes)};
}

ByteColor toColor(Value color) {
  const auto bytes = static_cast<std::uint32_t>(color.number);
  const auto byte = [bytes](int shift) { return static_cast<std::uint8_t>(bytes >> shift); };
  return {byte(24), byte(16), byte(8), byte(0)};
}

Values::Values(FrameSize frame) {
  for (std::int32_t index = 1; index < kParamCount; ++index) {
    (*this)[index] = initialValue(parameterSpec(index), frame);
  }
}

void Values::setNumber(ParamIndex index, double number) {
  (*this)[index].number = isFixed(index) ? toFixed(number) : saturated(number);
}

double Values::number(ParamIndex index) const {
  const double number = (*this)[index].number;
  return isFixed(index) ? number / kFixedOne : number;
}

void Values::setPoint(ParamIndex index, double x, double y) {
  (*this)[index] = {toFixed(x), toFixed(y)};
}

void Values::setColor(ParamIndex index, ByteColor color) {
  (*this)[index] = toValue(color);
}

}  // namespace brisel
