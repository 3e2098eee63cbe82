#include "frei0r/filter_parameters.h"

#include <algorithm>
#include <cmath>

#include "look/choices.h"
#include "scene/parameter_values.h"
#include "scene/text/nearest_name.h"
#include "scene/text/numbers.h"

namespace brisel {
namespace {

using Kind = FilterParameter::Kind;

constexpr double kHalfDecimal = 0.5e-6;  // of the six that hosts write

struct Scale {
  double zero;  // what the host's 0 stands for
  double unit;  // from there to the host's 1
};

Scale scaleOf(const ParameterSpec& spec) {
  switch (spec.kind) {
    case ParamKind::Number:
    case ParamKind::WholeNumber:
      return {static_cast<double>(spec.sliderMin),
              static_cast<double>(spec.sliderMax) - spec.sliderMin};
    case ParamKind::Angle:
      return {0, 360};
    default:
      return {0, 1};
  }
}

std::string sliderText(const ParameterSpec& spec) {
  std::string text = "0 to 1 stands for " + rangeText(spec.sliderMin, spec.sliderMax);
  text += unitText(spec.unit);
  if (spec.validMin != spec.sliderMin || spec.validMax != spec.sliderMax) {
    text += "; numbers beyond reach " + rangeText(spec.validMin, spec.validMax);
  }
  return text;
}

std::string itemsText(const ParameterSpec& spec) {
  std::string text = "The text or number of an item: ";
  int number = 0;
  for (const std::string& item : scene::itemsOf(spec)) {
    if (number != 0) text += ", ";
    text += std::to_string(++number) + " ";
    text += item;
  }
  return text;
}

void addPoint(const ParameterSpec& spec, ParamIndex index, std::vector<FilterParameter>& list) {
  const std::string label = spec.label;
  list.push_back({Kind::Number, label + " X",
                  "0 is the left side of the frame, 1 the right one; it may lie outside", index});
  list.push_back({Kind::Number, label + " Y",
                  "0 is the top of the frame, 1 the bottom; it may lie outside", index, true});
}

void add(ParamIndex index, std::vector<FilterParameter>& list) {
  const ParameterSpec& spec = parameterSpec(index);
  switch (spec.kind) {
    case ParamKind::Number:
    case ParamKind::WholeNumber:
      list.push_back({Kind::Number, spec.label, sliderText(spec), index});
      break;
    case ParamKind::Angle:
      list.push_back({Kind::Number, spec.label, "1 stands for a whole turn, clockwise", index});
      break;
    case ParamKind::Checkbox:
      list.push_back({Kind::Checkbox, spec.label, "On or off", index});
      break;
    case ParamKind::Popup:
      list.push_back({Kind::Text, spec.label, itemsText(spec), index});
      break;
    case ParamKind::Color:
      list.push_back({Kind::Color, spec.label, "A color", index});
      break;
    case ParamKind::Point:
      addPoint(spec, index, list);
      break;
    default:  // masks come from scenes; panels and groups have no value
      break;
  }
}

std::vector<FilterParameter> makeList() {
  std::vector<FilterParameter> list{
      {Kind::Text, "Scene",
       "The path of a scene file, which says all. What is set here wins over it"},
      {Kind::Text, "Presets",
       "Names of presets to start from, separated by commas or blanks. What is set here wins over "
       "them"}};
  for (std::int32_t index = 1; index < kParamCount; ++index) {
    add(static_cast<ParamIndex>(index), list);
  }
  list.push_back({Kind::Text, "Frames per second",
                  "The rate at which stars move, such as 25 or 30000/1001. Nothing: that of the "
                  "scene, or else as the first frames follow each other"});
  return list;
}

}  // namespace

std::span<const FilterParameter> filterParameters() {
  static const std::vector<FilterParameter> list = makeList();
  return list;
}

double initialNumber(const FilterParameter& parameter) {
  if (parameter.index == kMixWithOriginal) return kInitialMix;
  const ParameterSpec& spec = parameterSpec(parameter.index);
  if (spec.kind != ParamKind::Point) return spec.initial;
  return (parameter.isY ? spec.initialY : spec.initial) / 100.0;
}

double hostNumber(const FilterParameter& parameter, double number) {
  const Scale scale = scaleOf(parameterSpec(parameter.index));
  return (number - scale.zero) / scale.unit;
}

double effectNumber(const FilterParameter& parameter, double hostNumber) {
  const ParameterSpec& spec = parameterSpec(parameter.index);
  const Scale scale = scaleOf(spec);
  double number = scale.zero + hostNumber * scale.unit;
  const double rounded = std::round(number * 100) / 100;
  // A little more than half, as neither side is exact in binary.
  if (std::abs(rounded - number) <= scale.unit * kHalfDecimal * 1.001) number = rounded;
  return withinRange(spec, number);
}

std::optional<int> popupItem(const ParameterSpec& spec, const std::string& text) {
  const auto items = scene::itemsOf(spec);
  const auto found = std::ranges::find(items, scene::lowerCase(text), scene::lowerCase);
  if (found != items.end()) return static_cast<int>(found - items.begin()) + 1;
  const auto number = scene::parseInteger(text);
  return number && *number >= 1 && *number <= static_cast<int>(items.size()) ? number
                                                                             : std::nullopt;
}

}  // namespace brisel
