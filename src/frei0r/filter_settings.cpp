#include "frei0r/filter_settings.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "frei0r/filter_parameters.h"
#include "scene/parameter_values.h"

namespace brisel {
namespace {

using Kind = FilterParameter::Kind;

FilterSettings::Setting initialSetting(const FilterParameter& parameter) {
  if (parameter.index == kInputLayer) return std::string();
  const ParameterSpec& spec = parameterSpec(parameter.index);
  const double number = initialNumber(parameter);
  switch (parameter.kind) {
    case Kind::Number:
      return hostNumber(parameter, number);
    case Kind::Checkbox:
      return number;
    case Kind::Color: {
      const auto share = [](int channel) { return static_cast<float>(channel) / 255.0f; };
      return FilterSettings::Color{share(spec.color.red), share(spec.color.green),
                                   share(spec.color.blue)};
    }
    case Kind::Text:
      break;
  }
  return scene::itemsOf(spec)[static_cast<std::size_t>(number) - 1];
}

/// The effect's number, or an item; nothing for a color or a text that is no item.
std::optional<double> chosenNumber(const FilterParameter& parameter,
                                   const FilterSettings::Setting& setting) {
  const ParameterSpec& spec = parameterSpec(parameter.index);
  switch (parameter.kind) {
    case Kind::Number: {
      const double number = effectNumber(parameter, std::get<double>(setting));
      return spec.kind == ParamKind::WholeNumber ? std::round(number) : number;
    }
    case Kind::Checkbox:
      return std::get<double>(setting) >= 0.5 ? 1 : 0;
    case Kind::Text:
      return popupItem(spec, std::get<std::string>(setting));
    case Kind::Color:
      break;
  }
  return std::nullopt;
}

std::uint8_t byteOf(float share) {
  return static_cast<std::uint8_t>(std::lround(std::clamp(share, 0.0f, 1.0f) * 255.0f));
}

std::int32_t colorNumber(const FilterParameter& parameter, const FilterSettings::Color& color) {
  const std::uint8_t alpha = parameterSpec(parameter.index).colorAlpha;
  return toValue({alpha, byteOf(color[0]), byteOf(color[1]), byteOf(color[2])}).number;
}

/// As a Value has it.
std::int32_t valueNumber(const FilterParameter& parameter, double number, FrameSize frame) {
  if (parameterSpec(parameter.index).kind == ParamKind::Point) {
    return toFixed(number * (parameter.isY ? frame.height : frame.width));
  }
  Values values;
  values.setNumber(parameter.index, number);
  return values[parameter.index].number;
}

bool isNumber(const FilterSettings::Setting& setting) {
  if (const auto* number = std::get_if<double>(&setting)) return !std::isnan(*number);
  if (const auto* color = std::get_if<FilterSettings::Color>(&setting)) {
    return std::ranges::none_of(*color, [](float share) { return std::isnan(share); });
  }
  return true;
}

}  // namespace

void apply(const Choices& choices, Values& values) {
  for (const Choice& choice : choices) {
    Value& value = values[choice.index];
    (choice.isY ? value.y : value.number) = choice.number;
  }
}

FilterSettings::FilterSettings() {
  for (const FilterParameter& parameter : filterParameters()) {
    settings_.push_back(initialSetting(parameter));
  }
}

bool FilterSettings::set(std::size_t parameter, Setting setting) {
  if (!isNumber(setting)) setting = initialSetting(filterParameters()[parameter]);
  if (setting == settings_[parameter]) return false;
  settings_[parameter] = std::move(setting);
  return true;
}

Choices FilterSettings::choices(FrameSize frame) const {
  static const Values initial;
  Choices choices;
  for (std::size_t i = 0; i < settings_.size(); ++i) {
    const FilterParameter& parameter = filterParameters()[i];
    if (parameter.index == kInputLayer) continue;
    if (const auto* color = std::get_if<Color>(&settings_[i])) {
      const std::int32_t number = colorNumber(parameter, *color);
      if (number == initial[parameter.index].number) continue;
      choices.push_back({parameter.index, false, number});
    } else if (const auto number = chosenNumber(parameter, settings_[i])) {
      if (*number == initialNumber(parameter)) continue;
      choices.push_back({parameter.index, parameter.isY, valueNumber(parameter, *number, frame)});
    }
  }
  return choices;
}

}  // namespace brisel
