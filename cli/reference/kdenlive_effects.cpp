// Kdenlive's descriptions of effects, one for the filter and one for each look.
#include <pugixml.hpp>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "cli/reference/filter_description.h"
#include "scene/parameter_values.h"

namespace cli {
namespace {

using brisel::FilterParameter;
using brisel::FilterSettings;
using brisel::ParamKind;

void append(std::string& list, std::string_view item, char separator) {
  if (!list.empty()) list += separator;
  list += item;
}

// What is shown is the host's number times a factor, so that scales that do not begin at 0 are
// shown from there: the name says which number was added.
struct ShownScale {
  double factor;
  double added;
};

ShownScale shownScale(const DescribedParameter& described) {
  const double zero = brisel::effectNumber(*described.parameter, 0);
  const double one = brisel::effectNumber(*described.parameter, 1);
  if (described.spec->kind == ParamKind::Point) return {100, 0};
  return {one - zero, -zero};
}

std::string shownName(const DescribedParameter& described) {
  const double added = shownScale(described).added;
  std::string name = described.parameter->name;
  if (added > 0) name += " + " + decimalText(added);
  if (added < 0) name += " - " + decimalText(-added);
  return name;
}

void addNumber(pugi::xml_node node, const DescribedParameter& described, double value) {
  const ShownScale scale = shownScale(described);
  const bool isWhole = described.spec->kind == ParamKind::WholeNumber;
  node.append_attribute("type") = "animated";
  node.append_attribute("default") = decimalText(value).c_str();
  // A look may go beyond the slider, which then reaches as far.
  const double shown = value * scale.factor;
  const bool isAngle = described.spec->kind == ParamKind::Angle;
  const double least = isAngle ? -10 * scale.factor : 0;
  const double most = isAngle ? 10 * scale.factor : scale.factor;
  node.append_attribute("min") = decimalText(std::min(least, std::floor(shown))).c_str();
  node.append_attribute("max") = decimalText(std::max(most, std::ceil(shown))).c_str();
  node.append_attribute("factor") = decimalText(scale.factor).c_str();
  node.append_attribute("decimals") = isWhole ? "0" : "2";
  const std::string_view unit = shownUnit(*described.spec);
  if (!unit.empty()) node.append_attribute("suffix") = std::string(unit).c_str();
}

void addList(pugi::xml_node node, const std::string& value, const std::string& values,
             const std::string& shown) {
  node.append_attribute("type") = "list";
  node.append_attribute("default") = value.c_str();
  node.append_attribute("paramlist") = values.c_str();
  node.append_child("paramlistdisplay").text() = shown.c_str();
}

void addPopup(pugi::xml_node node, const DescribedParameter& described, const std::string& value) {
  std::string values, shown;
  for (const std::string& item : scene::itemsOf(*described.spec)) {
    append(values, item, ';');
    append(shown, item, ',');
  }
  addList(node, value, values, shown);
}

void addPresets(pugi::xml_node node) {
  std::string values, shown = "None";
  for (const DescribedLook& look : describedLooks()) {
    if (look.preset.empty()) continue;
    values += ';' + look.preset;
    append(shown, look.name, ',');
  }
  addList(node, "", values, shown);
}

void addParameter(pugi::xml_node effect, const DescribedParameter& described,
                  const FilterSettings::Setting& value) {
  pugi::xml_node node = effect.append_child("parameter");
  const FilterParameter& parameter = *described.parameter;
  node.append_attribute("name") = parameter.name.c_str();
  std::string name = parameter.name;
  switch (parameter.kind) {
    case FilterParameter::Kind::Number:
      name = shownName(described);
      addNumber(node, described, std::get<double>(value));
      break;
    case FilterParameter::Kind::Checkbox:
      node.append_attribute("type") = "bool";
      node.append_attribute("default") = decimalText(std::get<double>(value)).c_str();
      break;
    case FilterParameter::Kind::Color:
      node.append_attribute("type") = "color";
      node.append_attribute("default") = colorText(std::get<FilterSettings::Color>(value)).c_str();
      break;
    case FilterParameter::Kind::Text:
      if (described.spec != nullptr) {
        addPopup(node, described, std::get<std::string>(value));
      } else if (&parameter == &brisel::filterParameters()[brisel::kSceneParameter]) {
        node.append_attribute("type") = "url";
        node.append_attribute("filter") = "*.toml";
      } else if (&parameter == &brisel::filterParameters()[brisel::kPresetsParameter]) {
        addPresets(node);
      } else {
        addList(node, "", ";24000/1001;24;25;30000/1001;30;50;60000/1001;60",
                "As frames come,23.976,24,25,29.97,30,50,59.94,60");
      }
      break;
  }
  node.append_child("name").text() = name.c_str();
  node.append_child("comment").text() = described.comment().c_str();
}

std::string effectText(const DescribedLook& look,
                       const std::vector<DescribedParameter>& parameters) {
  pugi::xml_document document;
  pugi::xml_node effect = document.append_child("effect");
  effect.append_attribute("tag") = "frei0r.brisel";
  const bool isPreset = !look.preset.empty();
  effect.append_attribute("id") = (isPreset ? "brisel." + look.preset : "frei0r.brisel").c_str();
  effect.append_attribute("type") = "video";
  effect.append_child("name").text() = (isPreset ? look.name + " (Brisel)" : look.name).c_str();
  effect.append_child("description").text() = look.description.c_str();
  effect.append_child("author").text() = "Corvane";
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    // A look starts from values of its own. What people choose then counts, defaults included,
    // which it would not over a preset.
    if (isPreset && i <= brisel::kPresetsParameter) continue;
    addParameter(effect, parameters[i], look.settings[i]);
  }
  std::ostringstream text;
  document.save(text, "  ");
  return text.str();
}

}  // namespace

std::map<std::string, std::string> kdenliveEffects() {
  const auto parameters = describedParameters();
  std::map<std::string, std::string> files;
  for (const DescribedLook& look : describedLooks()) {
    const std::string name = look.preset.empty() ? "brisel" : "brisel_" + look.preset;
    files[name + ".xml"] = effectText(look, parameters);
  }
  return files;
}

}  // namespace cli
