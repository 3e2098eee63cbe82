#include "cli/commands/parameter_listing.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <sstream>

#include "cli/support/errors.h"
#include "cli/support/text_table.h"
#include "scene/text/nearest_name.h"
#include "scene/text/numbers.h"

namespace cli {
namespace {

using hostkit::Parameter;
using Json = nlohmann::ordered_json;
using List = std::vector<ListedParameter>;

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
    const auto fraction = [](PF_Fixed percent) {
      return jsonNumber(percent / hostkit::kFixedOne / 100);
    };
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

std::string rangeText(hostkit::Range range) {
  return scene::numberText(range.min) + ".." + scene::numberText(range.max);
}

std::string validText(const Parameter& parameter) {
  if (parameter.type() == PF_Param_POPUP) return "";  // its items say it
  const auto range = hostkit::validRange(parameter);
  return range ? rangeText(*range) : "";
}

std::string defaultText(const Parameter& parameter) {
  const Json value = jsonDefault(parameter);
  if (value.is_null()) return "";
  if (value.is_array()) return "[" + value[0].dump() + ", " + value[1].dump() + "]";
  return value.is_string() ? value.get<std::string>() : value.dump();
}

std::string kindText(const Parameter& parameter) {
  switch (parameter.type()) {
    case PF_Param_FIX_SLIDER:
      return "number";
    case PF_Param_SLIDER:
      return "whole";
    case PF_Param_POPUP:
      return std::to_string(parameter.items.size()) + " items";
    case PF_Param_PATH:
      return "mask";
    case PF_Param_GROUP_START:
      return "group";
    default:
      return std::string(hostkit::typeName(parameter.type()));
  }
}

bool holds(const std::string& text, const std::string& wanted) {
  return scene::lowerCase(text).find(scene::lowerCase(wanted)) != std::string::npos;
}

bool holdsEachWord(const std::string& text, const std::string& wanted) {
  std::istringstream words(wanted);
  for (std::string word; words >> word;) {
    if (!holds(text, word)) return false;
  }
  return true;
}

bool isExplainedBy(const ListedParameter& parameter, const std::string& wanted) {
  return holds(parameter.text.description, wanted) ||
         std::ranges::any_of(parameter.declared->items,
                             [&](const std::string& item) { return holds(item, wanted); });
}

template <typename Predicate>
List chosen(const List& list, Predicate predicate) {
  List found;
  std::ranges::copy_if(list, std::back_inserter(found), predicate);
  return found;
}

// A paragraph behind a word in the margin.
std::string marginal(const std::string& word, const std::string& text, int width) {
  constexpr int kMargin = 10;
  if (text.empty()) return "";
  return word + std::string(kMargin - word.size(), ' ') + wrapped(text, kMargin, width);
}

// The items, and what they do next to them, or below them where the column would be too narrow.
std::string itemLines(const ListedParameter& parameter, int width) {
  constexpr int kLeastBeside = 36;
  constexpr int kBeneath = 6;
  const std::vector<std::string>& items = parameter.declared->items;
  int widest = 0;
  for (const std::string& item : items) widest = std::max(widest, columnsOf(item));
  const int beside = 2 + widest + 2;
  const bool fits = width - beside >= kLeastBeside;
  std::string lines;
  for (const std::string& item : items) {
    const auto text = parameter.text.items.find(item);
    const std::string does = text == parameter.text.items.end() ? "" : text->second;
    const int indent = fits ? beside : kBeneath;
    const int used = fits ? 2 + columnsOf(item) : 0;
    lines += "  " + item + (fits ? "" : "\n") +
             std::string(static_cast<std::size_t>(indent - used), ' ') +
             wrapped(does, indent, width);
  }
  return lines;
}

std::string howToSet(const Parameter& parameter) {
  const std::string text = defaultText(parameter);
  if (text.empty()) return "";
  const bool isText = jsonDefault(parameter).is_string();
  std::string option = text;
  if (!isText) std::erase_if(option, [](char c) { return c == '[' || c == ']' || c == ' '; });
  return inQuotes(parameter.label) + " = " + (isText ? inQuotes(text) : text) +
         " in a scene, --set \"" + parameter.label + "=" + option + "\" on the command line";
}

}  // namespace

List listedParameters(const hostkit::ParameterSet& parameters) {
  std::map<std::string, ManualText> texts = readManualTexts();
  List list;
  std::vector<std::string> groups;
  for (const Parameter& parameter : parameters.list()) {
    if (parameter.index == 0 || parameter.type() == PF_Param_GROUP_END) continue;
    groups.resize(static_cast<std::size_t>(parameter.groupDepth));
    list.push_back({&parameter, groups, texts[parameter.label]});
    if (parameter.type() == PF_Param_GROUP_START) groups.push_back(parameter.label);
  }
  return list;
}

List parametersMeant(const List& list, const std::string& text) {
  List found = chosen(list, [&](const ListedParameter& parameter) {
    return scene::lowerCase(parameter.declared->label) == scene::lowerCase(text) ||
           std::to_string(parameter.declared->index) == text;
  });
  if (found.empty()) {
    found = chosen(list, [&](const ListedParameter& parameter) {
      return holdsEachWord(parameter.declared->label, text);
    });
  }
  if (found.empty()) {
    found = chosen(list, [&](const ListedParameter& p) { return isExplainedBy(p, text); });
  }
  if (!found.empty()) return found;
  std::vector<std::string> labels;
  for (const ListedParameter& parameter : list) labels.push_back(parameter.declared->label);
  throw UsageError("no parameter has " + inQuotes(text) + " in its label, items or description" +
                   scene::orNearest(text, labels, "the nearest label"));
}

std::string parameterTable(const List& list, bool indents, int width) {
  std::vector<TableRow> rows = {{"#", "Label", "Kind", "Range", "Default"}};
  for (const ListedParameter& listed : list) {
    const Parameter& parameter = *listed.declared;
    const std::string indent(indents ? 2 * listed.groups.size() : 0, ' ');
    rows.push_back({std::to_string(parameter.index), indent + parameter.label, kindText(parameter),
                    validText(parameter), defaultText(parameter)});
  }
  return alignedTable(rows, width);
}

std::string parameterDetails(const ListedParameter& parameter, int width) {
  const Parameter& declared = *parameter.declared;
  std::string where;
  for (const std::string& group : parameter.groups) where += (where.empty() ? "" : " > ") + group;
  std::string range = validText(declared);
  if (const auto slider = hostkit::sliderRange(declared)) {
    range += ", slider " + rangeText(*slider);
  }
  std::string text = declared.label + "\n\n";
  if (!parameter.text.description.empty()) {
    text += wrapped(parameter.text.description, 0, width) + "\n";
  }
  text += marginal("Kind", kindText(declared), width);
  text += marginal("Group", where, width);
  text += marginal("Range", range, width);
  text += marginal("Default", defaultText(declared), width);
  text += marginal("Grayed", parameter.text.grayed, width);
  text += marginal("Set by", howToSet(declared), width);
  if (!declared.items.empty()) text += "\nItems\n" + itemLines(parameter, width);
  return text;
}

Json parameterJson(const List& list) {
  Json objects = Json::array();
  for (const ListedParameter& listed : list) {
    const Parameter& parameter = *listed.declared;
    Json object = {{"index", parameter.index},
                   {"type", hostkit::typeName(parameter.type())},
                   {"label", parameter.label},
                   {"groups", listed.groups},
                   {"description", listed.text.description}};
    if (const auto range = hostkit::validRange(parameter)) object["valid"] = jsonRange(*range);
    if (const auto range = hostkit::sliderRange(parameter)) object["slider"] = jsonRange(*range);
    const Json value = jsonDefault(parameter);
    if (!value.is_null()) object["default"] = value;
    if (!parameter.items.empty()) {
      object["items"] = parameter.items;
      for (const std::string& item : parameter.items) {
        const auto text = listed.text.items.find(item);
        object["itemDescriptions"].push_back(text == listed.text.items.end() ? "" : text->second);
      }
    }
    objects.push_back(std::move(object));
  }
  return objects;
}

}  // namespace cli
