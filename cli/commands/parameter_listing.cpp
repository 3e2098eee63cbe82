#include "cli/commands/parameter_listing.h"

#include <cstdio>
#include <optional>
#include <vector>

#include "cli/support/numbers.h"
#include "cli/support/text_table.h"

namespace cli {
namespace {

using hostkit::Parameter;
using Json = nlohmann::ordered_json;

constexpr double kFixedOne = 65536;

std::string hexColor(const PF_Pixel& color) {
  char text[8];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", color.red, color.green, color.blue);
  return text;
}

// Whole numbers without a decimal point.
Json jsonNumber(double number) {
  const auto whole = static_cast<long long>(number);
  return static_cast<double>(whole) == number ? Json(whole) : Json(number);
}

Json jsonRange(hostkit::Range range) {
  return Json::array({jsonNumber(range.min), jsonNumber(range.max)});
}

// As a scene file says it; null where there is no value.
Json jsonDefault(const Parameter& parameter) {
  const auto& declared = parameter.declared.u;
  if (parameter.type() == PF_Param_COLOR) return hexColor(declared.cd.dephault);
  if (parameter.type() == PF_Param_POINT) {
    const auto fraction = [](PF_Fixed percent) { return jsonNumber(percent / kFixedOne / 100); };
    return Json::array({fraction(declared.td.x_dephault), fraction(declared.td.y_dephault)});
  }
  const std::optional<double> number = hostkit::defaultNumber(parameter);
  if (!number) return nullptr;
  if (parameter.type() == PF_Param_CHECKBOX) return *number != 0;
  if (parameter.type() == PF_Param_POPUP) {
    return parameter.items.at(static_cast<std::size_t>(*number) - 1);
  }
  return jsonNumber(*number);
}

// Everything but the host's own input layer and the ends of groups.
bool isListed(const Parameter& parameter) {
  return parameter.index > 0 && parameter.type() != PF_Param_GROUP_END;
}

std::string rangeText(std::optional<hostkit::Range> range) {
  return range ? numberText(range->min) + ".." + numberText(range->max) : "";
}

std::string defaultText(const Parameter& parameter) {
  const Json value = jsonDefault(parameter);
  if (value.is_null()) return "";
  return value.is_string() ? value.get<std::string>() : value.dump();
}

std::string joinedItems(const Parameter& parameter) {
  std::string text;
  for (const std::string& item : parameter.items) text += (text.empty() ? "" : " | ") + item;
  return text;
}

TableRow tableRow(const Parameter& parameter) {
  const bool isPopup = parameter.type() == PF_Param_POPUP;
  const std::string indent(2 * static_cast<std::size_t>(parameter.groupDepth), ' ');
  return {std::to_string(parameter.index),
          indent + parameter.label,
          std::string(hostkit::typeName(parameter.type())),
          isPopup ? "" : rangeText(hostkit::validRange(parameter)),
          rangeText(hostkit::sliderRange(parameter)),
          defaultText(parameter),
          joinedItems(parameter)};
}

}  // namespace

std::string parameterTable(const hostkit::ParameterSet& parameters) {
  std::vector<TableRow> rows = {{"#", "Label", "Type", "Valid", "Slider", "Default", "Items"}};
  for (const Parameter& parameter : parameters.list()) {
    if (isListed(parameter)) rows.push_back(tableRow(parameter));
  }
  return alignedTable(rows);
}

Json parameterJson(const hostkit::ParameterSet& parameters) {
  Json list = Json::array();
  std::vector<std::string> groups;
  for (const Parameter& parameter : parameters.list()) {
    if (!isListed(parameter)) continue;
    groups.resize(static_cast<std::size_t>(parameter.groupDepth));
    Json entry = {{"index", parameter.index},
                  {"type", hostkit::typeName(parameter.type())},
                  {"label", parameter.label},
                  {"groups", groups}};
    if (parameter.type() == PF_Param_GROUP_START) groups.push_back(parameter.label);
    if (const auto range = hostkit::validRange(parameter)) entry["valid"] = jsonRange(*range);
    if (const auto range = hostkit::sliderRange(parameter)) entry["slider"] = jsonRange(*range);
    const Json value = jsonDefault(parameter);
    if (!value.is_null()) entry["default"] = value;
    if (!parameter.items.empty()) entry["items"] = parameter.items;
    list.push_back(std::move(entry));
  }
  return list;
}

}  // namespace cli
