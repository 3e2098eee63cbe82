// Renders the frames of one scene in order, as a host plays a composition.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "frame_reader.h"
#include "hostkit/world.h"
#include "scene_effect.h"
#include "scene_plan.h"

namespace cli {

class SceneRenderer {
 public:
  // Loads the module, checks the scene's values against it and opens the input.
  SceneRenderer(ScenePlan plan, const std::string& modulePath);

  // Renders the next frame, beginning with 0. A frame depends on all frames before it, which is why
  // none can be left out. Throws Interrupted when the user asked to stop.
  void renderNext();

  // The frame rendered last.
  Frame picture() const;

  // What the user should know although the render works; complete after the last frame.
  std::vector<std::string> warnings() const;

 private:
  ScenePlan plan_;
  SceneEffect effect_;
  std::optional<FrameReader> reader_;
  hostkit::World input_;
  hostkit::World output_;
  int nextFrame_ = 0;
};

}  // namespace cli
