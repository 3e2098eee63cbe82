#include "scene/parameter_values.h"

#include <algorithm>
#include <cmath>

#include "scene/color_text.h"
#include "scene/text/errors.h"
#include "scene/text/nearest_name.h"
#include "scene/text/numbers.h"

namespace scene {
namespace {

using brisel::FrameSize;
using brisel::ParameterSpec;
using brisel::ParamKind;

constexpr double kMaxFixed = 32767;  // whole part of a 16.16 number

struct Range {
  double min;
  double max;
};

Range validRange(const ParameterSpec& parameter) {
  return {static_cast<double>(parameter.validMin), static_cast<double>(parameter.validMax)};
}

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

double numberWithin(const UserValue& value, Range range, const std::string& expected) {
  const double* number = std::get_if<double>(&value);
  // Written so that not-a-number fails too.
  if (!number || !(*number >= range.min && *number <= range.max)) reject(expected, value);
  return *number;
}

std::string rangeText(Range range) {
  return "from " + numberText(range.min) + " to " + numberText(range.max);
}

ParamValue sliderValue(const UserValue& value, const ParameterSpec& parameter) {
  const Range range = validRange(parameter);
  const bool whole = parameter.kind == ParamKind::WholeNumber;
  const std::string expected = (whole ? "a whole number " : "a number ") + rangeText(range);
  const double number = numberWithin(value, range, expected);
  if (whole && number != std::floor(number)) reject(expected, value);
  return {number};
}

ParamValue angleValue(const UserValue& value) {
  const Range range{-kMaxFixed, kMaxFixed};
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
  return orNearest(text, colorNames(), "the nearest name");
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
  throw ValueError("takes a color such as \"#ffcc66\", \"gold\" or [255, 204, 102], not " +
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
  throw ValueError("has no item " + inQuotes(text) + orNearest(text, items));
}

ParamValue popupValue(const UserValue& value, const ParameterSpec& parameter) {
  if (const auto* text = std::get_if<std::string>(&value)) {
    return itemByText(*text, itemsOf(parameter));
  }
  const Range range{1, static_cast<double>(itemsOf(parameter).size())};
  const std::string expected = "an item's text or its number " + rangeText(range);
  const double number = numberWithin(value, range, expected);
  if (number != std::floor(number)) reject(expected, value);
  return {number};
}

std::uint8_t channel(double value) {
  return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 255.0)));
}

double withinFixed(double value) {
  return std::clamp(value, -kMaxFixed, kMaxFixed);
}

double withinRange(const ParameterSpec& parameter, double value) {
  const Range range = validRange(parameter);
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

ParamValue paramValue(const UserValue& value, const ParameterSpec& parameter, FrameSize frame) {
  switch (parameter.kind) {
    case ParamKind::Number:
    case ParamKind::WholeNumber:
      return sliderValue(value, parameter);
    case ParamKind::Angle:
      return angleValue(value);
    case ParamKind::Checkbox:
      return checkboxValue(value);
    case ParamKind::Color:
      return colorValue(value);
    case ParamKind::Point:
      return pointValue(value, frame);
    case ParamKind::Popup:
      return popupValue(value, parameter);
    case ParamKind::Mask:
      throw ValueError("takes a mask, which a scene file gives as [mask]");
    case ParamKind::Panel:
      throw ValueError("is a panel, which has no value");
    default:
      throw ValueError("is a group start, which has no value");
  }
}

bool takesValue(ParamKind kind) {
  return isInterpolated(kind) || kind == ParamKind::Checkbox || kind == ParamKind::Popup;
}

bool isInterpolated(ParamKind kind) {
  return kind == ParamKind::WholeNumber || kind == ParamKind::Number || kind == ParamKind::Angle ||
         kind == ParamKind::Color || kind == ParamKind::Point;
}

std::vector<std::string> itemsOf(const ParameterSpec& popup) {
  std::vector<std::string> items;
  for (std::string_view rest = popup.items;;) {
    const std::size_t bar = rest.find('|');
    items.emplace_back(rest.substr(0, bar));
    if (bar == std::string_view::npos) return items;
    rest.remove_prefix(bar + 1);
  }
}

void setParameter(brisel::Values& values, brisel::ParamIndex index, const ParamValue& value,
                  FrameSize frame) {
  const ParameterSpec& parameter = brisel::parameterSpec(index);
  switch (parameter.kind) {
    case ParamKind::Number:
      return values.setNumber(index, withinRange(parameter, value[0]));
    case ParamKind::WholeNumber:
      return values.setNumber(index, withinRange(parameter, std::round(value[0])));
    case ParamKind::Angle:
      return values.setNumber(index, withinFixed(value[0]));
    case ParamKind::Color:
      return values.setColor(index, {values.color(index).alpha, channel(value[0]),
                                     channel(value[1]), channel(value[2])});
    case ParamKind::Point:
      return values.setPoint(index, withinFixed(value[0] * frame.width),
                             withinFixed(value[1] * frame.height));
    default:
      return values.setNumber(index, value[0]);
  }
}

}  // namespace scene
