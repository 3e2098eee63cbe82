// Flowblade's description of the filter, a part of its filters.xml.
#include <pugixml.hpp>

#include <algorithm>
#include <sstream>

#include "cli/reference/filter_description.h"
#include "scene/parameter_values.h"

namespace cli {
namespace {

using brisel::FilterParameter;
using brisel::FilterSettings;
using brisel::ParamKind;

// Its arguments are separated by blanks, and have "!" where names have one. Values have no stand-in
// for a blank, so that items go by their numbers.
std::string argument(std::string_view name) {
  std::string text(name);
  std::ranges::replace(text, ' ', '!');
  return text;
}

std::string presetsArguments() {
  std::string text = "editor=combobox exptype=default cbopts=None:none";
  for (const DescribedLook& look : describedLooks()) {
    if (!look.preset.empty()) text += ',' + argument(look.name) + ':' + look.preset;
  }
  return text;
}

std::string popupArguments(const brisel::ParameterSpec& spec) {
  std::string text = "editor=combobox exptype=default cbopts=";
  int number = 0;
  for (const std::string& item : scene::itemsOf(spec)) {
    if (number != 0) text += ',';
    text += argument(item) + ':' + std::to_string(++number);
  }
  return text;
}

std::string sliderArguments(const DescribedParameter& described) {
  const bool isPoint = described.spec->kind == ParamKind::Point;
  const double unit = isPoint ? 100 : 1;
  return "editor=keyframe_editor exptype=keyframe_hcs range_in=" +
         decimalText(unit * brisel::effectNumber(*described.parameter, 0)) + ',' +
         decimalText(unit * brisel::effectNumber(*described.parameter, 1)) + " range_out=0,1";
}

struct Property {
  std::string arguments;
  std::string value;
};

Property propertyOf(const DescribedParameter& described, const FilterSettings::Setting& setting) {
  if (const auto* color = std::get_if<FilterSettings::Color>(&setting)) {
    return {"editor=color_select exptype=color", colorText(*color)};
  }
  if (const auto* item = std::get_if<std::string>(&setting)) {
    if (described.spec == nullptr) return {presetsArguments(), "none"};
    return {popupArguments(*described.spec),
            std::to_string(brisel::popupItem(*described.spec, *item).value())};
  }
  const std::string number = decimalText(std::get<double>(setting));
  if (described.parameter->kind == FilterParameter::Kind::Checkbox) {
    return {"editor=booleancheckbox", number};
  }
  return {sliderArguments(described), "0=" + number};
}

}  // namespace

// Scene and frame rate are left out: it cannot hold a text that is empty.
std::map<std::string, std::string> flowbladeFilters() {
  pugi::xml_document document;
  pugi::xml_node filter = document.append_child("filter");
  filter.append_attribute("id") = "frei0r.brisel";
  filter.append_child("name").text() = "Brisel";
  filter.append_child("group").text() = "Artistic";
  const auto parameters = describedParameters();
  const DescribedLook look = describedLooks().front();
  for (std::size_t i = brisel::kPresetsParameter; i + 1 < parameters.size(); ++i) {
    const FilterParameter& parameter = *parameters[i].parameter;
    const Property property = propertyOf(parameters[i], look.settings[i]);
    pugi::xml_node node = filter.append_child("property");
    node.append_attribute("name") = parameter.name.c_str();
    node.append_attribute("args") =
        (property.arguments + " displayname=" + argument(parameter.name)).c_str();
    node.text() = property.value.c_str();
  }
  std::ostringstream text;
  document.save(text, "  ", pugi::format_default | pugi::format_no_declaration);
  return {{"brisel_filters.xml", text.str()}};
}

}  // namespace cli
