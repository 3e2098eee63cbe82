// Man pages of the program and of each command.
#pragma once

#include <map>
#include <string>

#include "cli/reference/command_tree.h"

namespace cli {

// The text of each page by its file name, "brisel-render.1".
std::map<std::string, std::string> manPages(const CommandTree& tree, const std::string& version);

}  // namespace cli
