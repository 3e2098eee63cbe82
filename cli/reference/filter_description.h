// What the hosts of the frei0r filter are told about it: names, ranges, menus and looks.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "cli/scene/manual_texts.h"
#include "frei0r/filter_parameters.h"
#include "frei0r/filter_settings.h"

namespace cli {

struct DescribedParameter {
  const brisel::FilterParameter* parameter;
  const brisel::ParameterSpec* spec;  // null for what is not the effect's: scene, presets, rate
  std::vector<std::string> groups;    // labels of those around it, outermost first
  ManualText text;

  // The group, what it does, and what each item of a popup does.
  std::string comment() const;
};

// In the filter's order.
std::vector<DescribedParameter> describedParameters();

// The filter with other settings to start from.
struct DescribedLook {
  std::string preset;  // empty for the effect's own defaults
  std::string name;    // as people read it: "Ring of fire"
  std::string description;
  std::vector<brisel::FilterSettings::Setting> settings;  // by parameter
};

// The effect's own first, then one for each preset that ships.
std::vector<DescribedLook> describedLooks();

// "%", "°" or nothing.
std::string_view shownUnit(const brisel::ParameterSpec& spec);

// The shortest text with at most six decimals.
std::string decimalText(double number);

// "#ffcc66"
std::string colorText(const brisel::FilterSettings::Color& color);

// Descriptions by the name of the file that they belong into.
std::map<std::string, std::string> kdenliveEffects();
std::map<std::string, std::string> mltMetadata();
std::map<std::string, std::string> flowbladeFilters();
std::map<std::string, std::string> shotcutFilter();

}  // namespace cli
