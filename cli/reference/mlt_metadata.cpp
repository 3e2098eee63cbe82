// MLT's description of the filter, in place of the one that it makes of the names alone.
#include <sstream>

#include "cli/reference/filter_description.h"
#include "scene/parameter_values.h"

namespace cli {
namespace {

using brisel::FilterParameter;
using brisel::FilterSettings;

// As YAML has it between quotes.
std::string inYamlQuotes(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') result += '\\';
    result += c == '\n' ? ' ' : c;
  }
  return result + '"';
}

std::string_view typeName(FilterParameter::Kind kind) {
  switch (kind) {
    case FilterParameter::Kind::Number:
      return "float";
    case FilterParameter::Kind::Checkbox:
      return "boolean";
    case FilterParameter::Kind::Color:
      return "color";
    case FilterParameter::Kind::Text:
      break;
  }
  return "string";
}

std::string defaultText(const FilterSettings::Setting& setting) {
  if (const auto* number = std::get_if<double>(&setting)) return decimalText(*number);
  if (const auto* text = std::get_if<std::string>(&setting)) return inYamlQuotes(*text);
  return inYamlQuotes(colorText(std::get<FilterSettings::Color>(setting)));
}

void addParameter(std::ostream& yaml, const DescribedParameter& described,
                  const FilterSettings::Setting& setting) {
  const FilterParameter& parameter = *described.parameter;
  std::string description = described.comment();
  if (described.spec != nullptr) description += " (" + parameter.explanation + ".)";
  yaml << "  - identifier: " << inYamlQuotes(parameter.name)
       << "\n    title: " << inYamlQuotes(parameter.name)
       << "\n    type: " << typeName(parameter.kind)
       << "\n    description: " << inYamlQuotes(description)
       << "\n    default: " << defaultText(setting) << "\n    mutable: yes\n";
  if (parameter.kind == FilterParameter::Kind::Number) {
    yaml << "    animation: yes\n    widget: spinner\n";
  } else if (parameter.kind == FilterParameter::Kind::Text && described.spec != nullptr) {
    yaml << "    values:\n";
    for (const std::string& item : scene::itemsOf(*described.spec)) {
      yaml << "      - " << inYamlQuotes(item) << '\n';
    }
    yaml << "    widget: combo\n";
  }
}

}  // namespace

std::map<std::string, std::string> mltMetadata() {
  std::ostringstream yaml;
  yaml << "schema_version: 7.0\ntype: filter\nidentifier: frei0r.brisel\ntitle: Brisel\n"
          "version: 2\ncreator: Corvane\nlanguage: en\ntags:\n  - Video\n"
          "description: Stars on footage\nparameters:\n";
  const auto parameters = describedParameters();
  const DescribedLook look = describedLooks().front();
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    addParameter(yaml, parameters[i], look.settings[i]);
  }
  return {{"filter_frei0r.brisel.yml", yaml.str()}};
}

}  // namespace cli
