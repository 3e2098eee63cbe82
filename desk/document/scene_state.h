// A scene as it is at one moment of its editing, with everything decided that a frame needs.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/scene/scene_plan.h"
#include "scene/layer_values.h"

namespace desk {

/// Where the value of a parameter comes from, each in place of those before it.
enum class ValueOrigin { Default, Preset, Scene, Layer };

/// Never changed once made, so that the window and the threads that render share it.
struct SceneState {
  cli::ScenePlan plan;                     // size, frames, rate, depth, input
  std::vector<scene::LayerValues> layers;  // from the bottom up, at least one
  std::string inputProblem;                // one sentence where the input cannot be read: then the
                                           // stars are shown without it; or empty
};
using SharedState = std::shared_ptr<const SceneState>;

}  // namespace desk
