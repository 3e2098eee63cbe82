// Why stars cannot be seen, as far as a scene tells.
#pragma once

#include <string>
#include <vector>

#include "cli/scene/scene_plan.h"
#include "hostkit/parameters.h"

namespace cli {

// Of one layer after a render, with its parameters of the last frame: which of them have no input
// to go by, and, when no frame showed a star of it, the likeliest reason.
std::vector<std::string> starWarnings(const ScenePlan& plan, std::size_t index,
                                      const hostkit::ParameterSet& parameters, bool starsSeen);

}  // namespace cli
