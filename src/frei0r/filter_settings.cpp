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

bool isNumber(const FilterSettings::Setting& setting) {
  if (const auto* number = std::get_if<double>(&setting)) return !std::isnan(*number);
  if (const auto* color = std::get_if<FilterSettings::Color>(&setting)) {
    return std::ranges::none_of(*color, [](float share) { return std::isnan(share); });
  }
  return true;
}

}  // namespace

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
      const std::int32_t number =
          colorNumber(parameter.index, {(*color)[0], (*color)[1], (*color)[2]});
      if (number == initial[parameter.index].number) continue;
      choices.push_back({parameter.index, false, number});
    } else if (const auto number = chosenNumber(parameter, settings_[i])) {
      if (*number == initialNumber(parameter)) continue;
      const bool isPoint = parameterSpec(parameter.index).kind == ParamKind::Point;
      const std::int32_t value = isPoint ? coordinate(*number, parameter.isY, frame)
                                         : valueNumber(parameter.index, *number);
      choices.push_back({parameter.index, parameter.isY, value});
    }
  }
  return choices;
}

}  // namespace brisel
