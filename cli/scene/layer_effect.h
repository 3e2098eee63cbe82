// One layer of a scene: an instance of the effect with its parameters, frame by frame.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "cli/scene/effect.h"
#include "cli/scene/scene_plan.h"
#include "scene/layer_values.h"

namespace cli {

class LayerEffect {
 public:
  // Sets up an instance and its mask. Throws when the effect cannot do what the scene says.
  LayerEffect(SharedModule module, const ScenePlan& plan, std::size_t layer);

  // Gives the parameters their values at that frame.
  void setFrame(double frame);

  hostkit::Session& session() { return effect_.session(); }
  const hostkit::Session& session() const { return effect_.session(); }

  // What the scene says, and what of it the parameters have at the frame.
  const scene::LayerValues& layer() const { return layer_; }
  const brisel::Values& values() const { return values_; }

 private:
  Effect effect_;
  scene::LayerValues layer_;
  brisel::Values values_;
};

// All layers of a scene, from the bottom up, as instances of one module.
std::deque<LayerEffect> layerEffects(const ScenePlan& plan, const std::string& modulePath);

// The frame that begins at the host's time, with its fraction.
double frameAt(const hostkit::MaskTime& time, scene::FrameRate rate);

}  // namespace cli
