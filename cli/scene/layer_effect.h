// One layer of a scene: an instance of the effect with its parameters, frame by frame.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "cli/scene/effect.h"
#include "cli/scene/scene_plan.h"

namespace cli {

class LayerEffect {
 public:
  // Sets up an instance, and applies the presets and the mask. Stars are added to an input where
  // nothing says how to mix. Throws when the module cannot do what the scene says.
  LayerEffect(SharedModule module, const ScenePlan& plan, std::size_t layer);

  // Gives the parameters their values at that frame.
  void setFrame(double frame);

  // Whether the module renders the stars of that frame alone, and they are to be added to those of
  // the layers below: where there is no input, or the scene leaves it out.
  bool isToBeAdded();

  hostkit::Session& session() { return effect_.session(); }

  // What was chosen where the scene leaves it open and a person may have expected something else.
  const std::vector<std::string>& notes() const { return notes_; }

 private:
  void applyPresets(const std::vector<PresetChoice>& choices);
  void chooseMask(const Mask& mask, FrameRate rate, int preroll);
  void chooseMix(bool isFirst, bool hasInput);

  FrameSize size_;  // of the composition's layer, at full resolution
  Effect effect_;
  std::vector<Track> tracks_;
  const hostkit::Parameter* mix_ = nullptr;
  bool joinsWhenAlone_ = false;
  bool joinsWhenAdded_ = false;
  std::vector<std::string> notes_;
};

// All layers of a scene, from the bottom up, as instances of one module.
std::deque<LayerEffect> layerEffects(const ScenePlan& plan, const std::string& modulePath);

}  // namespace cli
