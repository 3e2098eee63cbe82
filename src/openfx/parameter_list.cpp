#include "openfx/parameter_list.h"

#include <optional>

#include "look/built_in_presets.h"
#include "look/choices.h"
#include "scene/parameter_values.h"

namespace brisel::openfx {
namespace {

using Kind = EffectParameter::Kind;

// Of ASCII alone: in some hosts' locales, other letters belong to "I" and "i".
char smallLetter(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

char capitalLetter(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// "Size of halo" as sizeOfHalo.
std::string nameOf(const std::string& label) {
  std::string name;
  bool beginsWord = false;
  for (const char letter : label) {
    if (letter == ' ') {
      beginsWord = true;
      continue;
    }
    const char inMiddle = beginsWord ? capitalLetter(letter) : letter;
    name += name.empty() ? smallLetter(letter) : inMiddle;
    beginsWord = false;
  }
  return name;
}

std::optional<Kind> kindOf(ParamIndex index) {
  switch (parameterSpec(index).kind) {
    case ParamKind::Number:
      return Kind::Number;
    case ParamKind::WholeNumber:
      return Kind::WholeNumber;
    case ParamKind::Angle:
      return Kind::Angle;
    case ParamKind::Checkbox:
      return Kind::Checkbox;
    case ParamKind::Popup:
      return Kind::Popup;
    case ParamKind::Color:
      return Kind::Color;
    case ParamKind::Point:
      return Kind::Point;
    case ParamKind::Mask:
      return Kind::Mask;
    case ParamKind::Panel:
      if (index == kEmitterPresets || index == kStarPresets) return Kind::Preset;
      return std::nullopt;
    case ParamKind::GroupStart:
      return Kind::Group;
    case ParamKind::GroupEnd:
      break;
  }
  return std::nullopt;
}

std::string hintOf(Kind kind, const ParameterSpec& spec) {
  switch (kind) {
    case Kind::Number:
    case Kind::WholeNumber:
      return rangeText(spec.validMin, spec.validMax) + std::string(unitText(spec.unit));
    case Kind::Angle:
      return "Degrees, clockwise";
    case Kind::Point:
      return "Shares of the frame, from its left and from its bottom; it may lie outside";
    case Kind::Preset:
      return "Sets other parameters when it is chosen";
    case Kind::Mask:
      return "SVG path data in pixels of the frame at full size, from its top left; its outline "
             "takes the place of the standard path";
    default:
      return "";
  }
}

std::vector<EffectParameter> makeList() {
  std::vector<EffectParameter> list{
      {Kind::Scene, "scene", "Scene",
       "The path of a scene file, which says all. What differs from its default here wins over it",
       ""},
      {Kind::StartFrame, "startFrame", "Start frame",
       "The frame at which the stars begin, as the host counts; before it there are none", ""}};
  std::vector<std::string> groups{""};
  for (std::int32_t i = 1; i < kParamCount; ++i) {
    const auto index = static_cast<ParamIndex>(i);
    const ParameterSpec& spec = parameterSpec(index);
    if (spec.kind == ParamKind::GroupEnd) groups.pop_back();
    const auto kind = kindOf(index);
    if (!kind) continue;
    list.push_back(
        {*kind, nameOf(spec.label), spec.label, hintOf(*kind, spec), groups.back(), index});
    if (*kind == Kind::Group) groups.push_back(list.back().name);
  }
  return list;
}

}  // namespace

std::span<const EffectParameter> effectParameters() {
  static const std::vector<EffectParameter> list = makeList();
  return list;
}

std::vector<std::string> itemsOf(const EffectParameter& parameter) {
  if (parameter.kind != Kind::Preset) return scene::itemsOf(parameterSpec(parameter.index));
  std::vector<std::string> items{"None"};
  const std::size_t row = parameter.index == kEmitterPresets ? 0 : 1;
  for (const scene::Preset& preset : builtInPresets().presets()) {
    if (preset.row == row) items.push_back(preset.name);
  }
  return items;
}

double initialNumber(const EffectParameter& parameter) {
  if (parameter.index == kInputLayer || parameter.kind == Kind::Preset) return 0;
  return parameter.index == kMixWithOriginal ? kInitialMix : parameterSpec(parameter.index).initial;
}

Share initialPoint(const EffectParameter& parameter) {
  const ParameterSpec& spec = parameterSpec(parameter.index);
  return {spec.initial / 100.0, 1 - spec.initialY / 100.0};
}

}  // namespace brisel::openfx
