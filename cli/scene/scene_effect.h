// The effect with the parameters of a scene, frame by frame.
#pragma once

#include <string>
#include <vector>

#include "cli/scene/effect.h"
#include "cli/scene/scene_plan.h"

namespace cli {

class SceneEffect {
 public:
  // Sets up the module, and applies the presets and the mask. Throws when the module cannot do
  // what the scene says.
  SceneEffect(const ScenePlan& plan, const std::string& modulePath);

  // Gives the parameters their values at that frame.
  void setFrame(double frame);

  hostkit::Session& session() { return effect_.session(); }

 private:
  void applyPresets(const std::vector<PresetChoice>& choices);
  void chooseMask(const Mask& mask, FrameRate rate);

  FrameSize size_;
  Effect effect_;
  std::vector<Track> tracks_;
};

}  // namespace cli
