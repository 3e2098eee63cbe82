// The module's parameters, for people and for scripts.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "hostkit/parameters.h"

namespace cli {

// A table with groups indented, one parameter per line, ends of groups left out.
std::string parameterTable(const hostkit::ParameterSet& parameters);

// An array with one object per declared parameter, ends of groups left out: index, type, label,
// groups (labels, outermost first) and, where the type has them, valid and slider (least,
// greatest), default (as a scene file would say it) and items.
nlohmann::ordered_json parameterJson(const hostkit::ParameterSet& parameters);

}  // namespace cli
