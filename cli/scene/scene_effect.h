// The effect with the parameters of a scene, frame by frame.
#pragma once

#include <string>
#include <vector>

#include "cli/scene/effect.h"
#include "cli/scene/scene_plan.h"

namespace cli {

class SceneEffect {
 public:
  // Sets up the module, and applies the presets and the mask. Stars are added to an input of which
  // neither the scene nor a preset says how to mix. Throws when the module cannot do what the scene
  // says.
  SceneEffect(const ScenePlan& plan, const std::string& modulePath);

  // Gives the parameters their values at that frame.
  void setFrame(double frame);

  hostkit::Session& session() { return effect_.session(); }

  // What was chosen where the scene leaves it open and a person may have expected something else.
  const std::vector<std::string>& notes() const { return notes_; }

 private:
  void applyPresets(const std::vector<PresetChoice>& choices);
  void chooseMask(const Mask& mask, FrameRate rate, int preroll);
  void addToInput();

  FrameSize layer_;
  Effect effect_;
  std::vector<Track> tracks_;
  std::vector<PF_ParamIndex> setByPresets_;
  std::vector<std::string> notes_;
};

}  // namespace cli
