// Why stars cannot be seen, as far as a scene tells.
#pragma once

#include <string>
#include <vector>

#include "cli/scene/layer_effect.h"

namespace cli {

// Of one layer after a render, by its values of the last frame: which of them have no input to go
// by, and, when no frame showed a star of it, the likeliest reason.
std::vector<std::string> starWarnings(const ScenePlan& plan, const LayerEffect& layer,
                                      bool starsSeen);

}  // namespace cli
