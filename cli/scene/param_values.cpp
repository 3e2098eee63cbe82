#include "cli/scene/param_values.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "cli/scene/color_text.h"
#include "cli/support/errors.h"
#include "cli/support/nearest_name.h"
#include "cli/support/numbers.h"

namespace cli {
namespace {

using hostkit::Parameter;

constexpr double kMaxFixed = 32767;  // whole part of the host's 16.16 numbers

std::string shown(const UserValue& value) {
  struct Show {
    std::string operator()(bool checked) const { return checked ? "true" : "false"; }
    std::string operator()(double number) const { return numberText(number); }
    std::string operator()(const std::string& text) const { return inQuotes(text); }
    std::string operator()(const std::vector<double>& list) const {
      std::string text;
      for (const double number : list) text += (text.empty() ? "" : ", ") + numberText(number);
      return "[" + text + "]";
    }
  };
  return std::visit(Show{}, value);
}

[[noreturn]] void reject(const std::string& expected, const UserValue& value) {
  throw ValueError("takes " + expected + ", not " + shown(value));
}

// A range may be open where the parameter declares none.
double numberWithin(const UserValue& value, hostkit::Range range, const std::string& expected) {
  const double* number = std::get_if<double>(&value);
  // Written so that not-a-number fails too.
  if (!number || !(*number >= range.min && *number <= range.max)) reject(expected, value);
  return *number;
}

std::string rangeText(hostkit::Range range) {
  return "from " + numberText(range.min) + " to " + numberText(range.max);
}

ParamValue sliderValue(const UserValue& value, const Parameter& parameter) {
  const hostkit::Range range = hostkit::validRange(parameter).value();
  const bool whole = parameter.type() == PF_Param_SLIDER;
  const std::string expected = (whole ? "a whole number " : "a number ") + rangeText(range);
  const double number = numberWithin(value, range, expected);
  if (whole && number != std::floor(number)) reject(expected, value);
  return {number};
}

ParamValue angleValue(const UserValue& value) {
  const hostkit::Range range{-kMaxFixed, kMaxFixed};
  return {numberWithin(value, range, "an angle in degrees, " + rangeText(range))};
}

ParamValue checkboxValue(const UserValue& value) {
  const bool* checked = std::get_if<bool>(&value);
  if (!checked) reject("true or false", value);
  return {*checked ? 1.0 : 0.0};
}

bool isColorChannel(double number) {
  return number >= 0 && number <= 255 && number == std::floor(number);
}

// The end of a message about text that is no color: what it may stand for.
std::string colorMeant(const std::string& text) {
  if (colorFromText('#' + text)) return "; such digits follow a #: " + inQuotes('#' + text);
  if (text.starts_with('#')) return "";
  return "; the nearest name is " + inQuotes(nearestName(text, colorNames()));
}

ParamValue colorValue(const UserValue& value) {
  std::string meant;
  if (const auto* text = std::get_if<std::string>(&value)) {
    if (const auto color = colorFromText(*text)) return *color;
    meant = colorMeant(*text);
  } else if (const auto* list = std::get_if<std::vector<double>>(&value)) {
    if (list->size() == 3 && std::ranges::all_of(*list, isColorChannel)) {
      return {(*list)[0], (*list)[1], (*list)[2]};
    }
  }
  throw ValueError("takes a colour such as \"#ffcc66\", \"gold\" or [255, 204, 102], not " +
                   shown(value) + meant);
}

// Four digits are enough for a tenth of a pixel.
double fractionOf(double pixels, int side) {
  return std::round(pixels / side * 1e4) / 1e4;
}

ParamValue pointValue(const UserValue& value, FrameSize frame) {
  const auto* list = std::get_if<std::vector<double>>(&value);
  if (!list || list->size() != 2) {
    reject("a point [x, y] in fractions of the frame, such as [0.5, 0.5]", value);
  }
  const double x = (*list)[0];
  const double y = (*list)[1];
  const double limitX = std::floor(kMaxFixed / frame.width);
  const double limitY = std::floor(kMaxFixed / frame.height);
  if (!(std::abs(x) <= limitX && std::abs(y) <= limitY)) {
    const UserValue meant = std::vector{fractionOf(x, frame.width), fractionOf(y, frame.height)};
    throw ValueError("takes a point [x, y], not " + shown(value) +
                     "; pixels? points are fractions of the frame, here " + shown(meant));
  }
  return {x, y};
}

ParamValue itemByText(const std::string& text, const std::vector<std::string>& items) {
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (lowerCase(items[i]) == lowerCase(text)) return {static_cast<double>(i + 1)};
  }
  throw ValueError("has no item " + inQuotes(text) + "; the nearest is " +
                   inQuotes(nearestName(text, items)));
}

ParamValue popupValue(const UserValue& value, const Parameter& parameter) {
  if (const auto* text = std::get_if<std::string>(&value)) {
    return itemByText(*text, parameter.items);
  }
  const hostkit::Range range{1, static_cast<double>(parameter.items.size())};
  const std::string expected = "an item's text or its number " + rangeText(range);
  const double number = numberWithin(value, range, expected);
  if (number != std::floor(number)) reject(expected, value);
  return {number};
}

A_u_char channel(double value) {
  return static_cast<A_u_char>(std::lround(std::clamp(value, 0.0, 255.0)));
}

double withinFixed(double value) {
  return std::clamp(value, -kMaxFixed, kMaxFixed);
}

double withinRange(const Parameter& parameter, double value) {
  const hostkit::Range range = hostkit::validRange(parameter).value();
  return std::clamp(value, range.min, range.max);
}

}  // namespace

UserValue userValueFromText(std::string_view text) {
  text = trimmed(text);
  if (text == "true" || text == "false") return text == "true";
  std::vector<double> numbers;
  for (std::string_view rest = text;;) {
    const std::size_t comma = rest.find(',');
    const auto number = parseNumber(rest.substr(0, comma));
    if (!number) return std::string(text);
    numbers.push_back(*number);
    if (comma == std::string_view::npos) break;
    rest.remove_prefix(comma + 1);
  }
  if (numbers.size() == 1) return numbers.front();
  return numbers;
}

ParamValue paramValue(const UserValue& value, const Parameter& parameter, FrameSize frame) {
  switch (parameter.type()) {
    case PF_Param_SLIDER:
    case PF_Param_FIX_SLIDER:
      return sliderValue(value, parameter);
    case PF_Param_ANGLE:
      return angleValue(value);
    case PF_Param_CHECKBOX:
      return checkboxValue(value);
    case PF_Param_COLOR:
      return colorValue(value);
    case PF_Param_POINT:
      return pointValue(value, frame);
    case PF_Param_POPUP:
      return popupValue(value, parameter);
    case PF_Param_PATH:
      throw ValueError("takes a mask, which a scene file gives as [mask]");
    default:
      throw ValueError("is a " + std::string(hostkit::typeName(parameter.type())) +
                       ", which has no value");
  }
}

bool takesValue(PF_ParamType type) {
  return isInterpolated(type) || type == PF_Param_CHECKBOX || type == PF_Param_POPUP;
}

bool isInterpolated(PF_ParamType type) {
  return type == PF_Param_SLIDER || type == PF_Param_FIX_SLIDER || type == PF_Param_ANGLE ||
         type == PF_Param_COLOR || type == PF_Param_POINT;
}

void setParameter(hostkit::ParameterSet& parameters, const Parameter& parameter,
                  const ParamValue& value, FrameSize frame) {
  switch (parameter.type()) {
    case PF_Param_SLIDER:
      return parameters.setNumber(parameter.index, withinRange(parameter, std::round(value[0])));
    case PF_Param_CHECKBOX:
      return parameters.setChecked(parameter.index, value[0] != 0);
    case PF_Param_POPUP:
      return parameters.setItem(parameter.index, static_cast<int>(value[0]));
    case PF_Param_COLOR:
      return parameters.setColor(parameter.index, channel(value[0]), channel(value[1]),
                                 channel(value[2]));
    case PF_Param_POINT:
      return parameters.setPoint(parameter.index, withinFixed(value[0] * frame.width),
                                 withinFixed(value[1] * frame.height));
    case PF_Param_ANGLE:
      return parameters.setNumber(parameter.index, withinFixed(value[0]));
    default:
      return parameters.setNumber(parameter.index, withinRange(parameter, value[0]));
  }
}

}  // namespace cli
