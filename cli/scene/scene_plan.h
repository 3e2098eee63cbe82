// A scene with everything decided: what the file and the options leave open comes from the input.
#pragma once

#include <optional>

#include "cli/media/media_info.h"
#include "cli/scene/scene.h"
#include "hostkit/world.h"

namespace cli {

struct ScenePlan {
  Scene scene;
  FrameSize layer;  // what the scene is designed for
  FrameSize size;   // of the frames, which show all of the layer
  int frames;
  FrameRate rate;
  std::optional<MediaInfo> input;  // of scene.input
};

// Looks at the input, if there is one, and counts times in frames. Throws WorkError when the input
// cannot be read or keyframes are not in order.
ScenePlan planScene(Scene scene);

// An empty world of the size and depth of the plan's frames.
hostkit::World worldFor(const ScenePlan& plan);

// What the command line may say about a scene; empty or none where it says nothing.
struct SceneOptions {
  std::string input;
  InputChoices reading;
  std::string size;
  std::string scale;
  std::optional<int> preroll;
  std::string rate;
  std::string depth;
  std::string quality;
  std::vector<std::string> presets;
  std::vector<std::string> settings;
};

// Options win over the scene file. Throws UsageError when one of them makes no sense.
void applyOptions(Scene& scene, const SceneOptions& options);

}  // namespace cli
