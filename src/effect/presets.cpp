#include "effect/presets.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace brisel {
namespace {

/// Truncates toward zero and saturates; not-a-number becomes the least integer.
template <class Integer>
Integer truncateTo(float value) {
  constexpr float kLimit = -static_cast<float>(std::numeric_limits<Integer>::min());
  if (value >= kLimit) return std::numeric_limits<Integer>::max();
  if (!(value >= -kLimit)) return std::numeric_limits<Integer>::min();
  return static_cast<Integer>(value);
}

std::int32_t lowWord(float value) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(truncateTo<std::int64_t>(value)));
}

std::uint8_t lowByte(float value) {
  return static_cast<std::uint8_t>(static_cast<std::uint32_t>(truncateTo<std::int32_t>(value)));
}

std::int32_t fixedOf(float value) {
  return truncateTo<std::int32_t>(value * 65536.0f);
}

std::int32_t pointCoordinate(float part, std::int32_t extent) {
  using Limits = std::numeric_limits<std::int32_t>;
  const std::int64_t pixels = std::int64_t{fixedOf(part)} * extent;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(pixels, Limits::min(), Limits::max()));
}

}  // namespace

int numberCount(ParamKind kind) {
  if (kind == ParamKind::Color) return 4;
  return kind == ParamKind::Point ? 2 : 1;
}

std::optional<Value> presetValue(ParamKind kind, const FileParameter& parameter, FrameSize frame) {
  const auto& n = parameter.numbers;
  switch (kind) {
    case ParamKind::Number:
    case ParamKind::Angle:
      return Value{fixedOf(n[0])};
    case ParamKind::WholeNumber:
      return Value{truncateTo<std::int32_t>(n[0])};
    case ParamKind::Checkbox:
    case ParamKind::Popup:
      return Value{lowWord(n[0])};
    case ParamKind::Color:
      return toValue({lowByte(n[3]), lowByte(n[0]), lowByte(n[1]), lowByte(n[2])});
    case ParamKind::Point:
      return Value{pointCoordinate(n[0], frame.width), pointCoordinate(n[1], frame.height)};
    default:
      return {};
  }
}

int numberCountOf(std::string_view label) {
  const ParamIndex index = findParameter(label);
  return index == kInputLayer ? 0 : numberCount(parameterSpec(index).kind);
}

std::vector<ParamIndex> applyParameters(const ParameterFile& file, FrameSize frame,
                                        Values& values) {
  std::vector<ParamIndex> set;
  for (const FileParameter& parameter : file.parameters) {
    const ParamIndex index = findParameter(parameter.label);
    const auto value = presetValue(parameterSpec(index).kind, parameter, frame);
    if (!value) continue;
    values[index] = *value;
    set.push_back(index);
  }
  return set;
}

ParameterFile::State applyParameterFile(const char* path, FrameSize frame, Values& values) {
  const ParameterFile file = ReadParameterFile(path, numberCountOf);
  applyParameters(file, frame, values);
  return file.state;
}

}  // namespace brisel
