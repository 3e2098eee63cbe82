// Completion of commands, options and their values in shells. The names of presets and parameters
// are asked of the program when they are needed, as presets are files that come and go.
#pragma once

#include <string>

#include "cli/reference/command_tree.h"

namespace cli {

std::string bashCompletion(const CommandTree& tree);
std::string zshCompletion(const CommandTree& tree);
std::string fishCompletion(const CommandTree& tree);

}  // namespace cli
