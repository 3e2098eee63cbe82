// The module's parameters, for people and for scripts.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/scene/manual_texts.h"
#include "hostkit/parameters.h"

namespace cli {

// A declared parameter with what the manual says about it.
struct ListedParameter {
  const hostkit::Parameter* declared;
  std::vector<std::string> groups;  // labels of those around it, outermost first
  ManualText text;
};

// All of them in order, without the host's input layer and the ends of groups. They refer to the
// set.
std::vector<ListedParameter> listedParameters(const hostkit::ParameterSet& parameters);

// The parameters that a person's words mean, capitals not counted: the one of that label or
// number; else those whose labels hold all of the words; else those whose items or descriptions
// hold the text. Throws UsageError, naming the nearest label, when nothing fits.
std::vector<ListedParameter> parametersMeant(const std::vector<ListedParameter>& list,
                                             const std::string& text);

// A table with one parameter per line; those in groups are indented when `indents`. What does not
// fit the width is left out.
std::string parameterTable(const std::vector<ListedParameter>& list, bool indents, int width);

// All about one, in paragraphs.
std::string parameterDetails(const ListedParameter& parameter, int width);

// An array with one object for each: index, type, label, groups, description and, where there are
// such, valid and slider (least, greatest), default (as a scene file would say it), items and
// itemDescriptions.
nlohmann::ordered_json parameterJson(const std::vector<ListedParameter>& list);

}  // namespace cli
