#include "cli/reference/filter_description.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>

#include "look/built_in_presets.h"
#include "scene/parameter_values.h"

namespace cli {
namespace {

using brisel::FilterParameter;
using brisel::FilterSettings;
using brisel::ParamKind;

// The groups around each of the effect's parameters.
std::map<brisel::ParamIndex, std::vector<std::string>> groupsOfParameters() {
  std::map<brisel::ParamIndex, std::vector<std::string>> groups;
  std::vector<std::string> around;
  for (std::int32_t index = 1; index < brisel::kParamCount; ++index) {
    const brisel::ParameterSpec& spec = brisel::parameterSpec(index);
    if (spec.kind == ParamKind::GroupEnd) around.pop_back();
    groups[static_cast<brisel::ParamIndex>(index)] = around;
    if (spec.kind == ParamKind::GroupStart) around.emplace_back(spec.label);
  }
  return groups;
}

// As a person would have typed it, without what 16.16 numbers lack. Of points, the whole frame
// is 1.
double numberOf(const FilterParameter& parameter, const brisel::Values& values) {
  if (brisel::parameterSpec(parameter.index).kind != ParamKind::Point) {
    return std::round(values.number(parameter.index) * 100) / 100;
  }
  const brisel::Value& point = values[parameter.index];
  return std::round((parameter.isY ? point.y : point.number) / 65536.0 * 1e4) / 1e4;
}

FilterSettings::Setting settingOf(const FilterParameter& parameter, const brisel::Values& values) {
  const double number = numberOf(parameter, values);
  switch (parameter.kind) {
    case FilterParameter::Kind::Number:
      return brisel::hostNumber(parameter, number);
    case FilterParameter::Kind::Checkbox:
      return number;
    case FilterParameter::Kind::Color: {
      const brisel::ByteColor color = values.color(parameter.index);
      return FilterSettings::Color{static_cast<float>(color.red) / 255,
                                   static_cast<float>(color.green) / 255,
                                   static_cast<float>(color.blue) / 255};
    }
    case FilterParameter::Kind::Text:
      break;
  }
  const auto items = scene::itemsOf(brisel::parameterSpec(parameter.index));
  return std::string(items[static_cast<std::size_t>(number) - 1]);
}

std::vector<FilterSettings::Setting> settingsOf(const brisel::Values& values) {
  std::vector<FilterSettings::Setting> settings;
  for (const FilterParameter& parameter : brisel::filterParameters()) {
    settings.push_back(parameter.index == brisel::kInputLayer ? std::string()
                                                              : settingOf(parameter, values));
  }
  return settings;
}

// "ring-of-fire" as "Ring of fire".
std::string readableName(std::string name) {
  std::ranges::replace(name, '-', ' ');
  name[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(name[0])));
  return name;
}

}  // namespace

std::string DescribedParameter::comment() const {
  std::string comment;
  for (const std::string& group : groups) comment += group + ": ";
  comment += text.description;
  if (text.items.empty()) return comment;
  for (const std::string& item : scene::itemsOf(*spec)) {
    comment += "\n" + std::string(item) + ": " + text.items.at(std::string(item));
  }
  return comment;
}

std::vector<DescribedParameter> describedParameters() {
  const auto texts = readManualTexts();
  auto groups = groupsOfParameters();
  std::vector<DescribedParameter> described;
  for (const FilterParameter& parameter : brisel::filterParameters()) {
    if (parameter.index == brisel::kInputLayer) {
      described.push_back({&parameter, nullptr, {}, {parameter.explanation, {}, {}}});
      continue;
    }
    const brisel::ParameterSpec& spec = brisel::parameterSpec(parameter.index);
    described.push_back({&parameter, &spec, groups[parameter.index], texts.at(spec.label)});
  }
  return described;
}

std::vector<DescribedLook> describedLooks() {
  constexpr brisel::FrameSize kUnit{1, 1};
  brisel::Values initial(kUnit);
  initial.setNumber(brisel::kMixWithOriginal, brisel::kInitialMix);
  std::vector<DescribedLook> looks{{"", "Brisel", "Stars on footage", settingsOf(initial)}};
  const scene::PresetLibrary& library = brisel::builtInPresets();
  for (const scene::Preset& preset : library.presets()) {
    brisel::Values values = initial;
    library.apply(preset, kUnit, values);
    looks.push_back(
        {preset.name, readableName(preset.name), library.describe(preset), settingsOf(values)});
  }
  return looks;
}

std::string_view shownUnit(const brisel::ParameterSpec& spec) {
  if (spec.kind == ParamKind::Point || spec.unit == brisel::ParamUnit::Percent) return "%";
  return spec.unit == brisel::ParamUnit::Degrees ? "°" : "";
}

std::string decimalText(double number) {
  char text[64];
  std::snprintf(text, sizeof text, "%.6f", number);
  std::string shortened = text;
  shortened.erase(shortened.find_last_not_of('0') + 1);
  if (shortened.ends_with('.')) shortened.pop_back();
  return shortened == "-0" ? "0" : shortened;
}

std::string colorText(const FilterSettings::Color& color) {
  const auto byte = [](float share) { return static_cast<unsigned>(std::lround(share * 255)); };
  char text[16];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", byte(color[0]), byte(color[1]), byte(color[2]));
  return text;
}

}  // namespace cli
