// Renders the frames of one scene in order, as a host plays a composition.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/pipeline/busy_time.h"
#include "cli/pipeline/input_stream.h"
#include "cli/scene/scene_effect.h"
#include "cli/scene/scene_plan.h"
#include "hostkit/world.h"

namespace cli {

class SceneRenderer {
 public:
  // Loads the module, checks the scene's values against it and opens the input.
  SceneRenderer(ScenePlan plan, const std::string& modulePath);

  // Renders the next frame, beginning with the first of the pre-roll: -1 comes right before 0. A
  // frame depends on all frames before it, which is why none can be left out. Throws Interrupted
  // when the user asked to stop.
  void renderNext();

  // The frame rendered last.
  Frame picture() const;
  // The same as the host's world; another of its size may take its place.
  hostkit::World& output() { return output_; }

  // Checks whether the frame rendered last shows a star, until one does. Call it for frames that
  // people get to see.
  void lookForStars();

  // What the user should know before the first frame.
  std::vector<std::string> notes() const;

  // What the user should know although the render works; complete after the last frame.
  std::vector<std::string> warnings();
  // What is wrong with the input, for after the last frame: one sentence without an end, or
  // nothing.
  std::string damage() { return input_ ? input_->damage() : std::string(); }

  // How long the input was being decoded; 0 without one.
  double decodingSeconds() const { return input_ ? input_->decoding().seconds() : 0; }
  double renderingSeconds() const { return rendering_.seconds(); }

 private:
  ScenePlan plan_;
  SceneEffect effect_;
  std::optional<InputStream> input_;
  hostkit::World noInput_;           // a transparent layer
  hostkit::World* layer_ = nullptr;  // what the last frame was put on
  hostkit::World output_;
  int nextFrame_;
  bool starsSeen_ = false;
  BusyTime rendering_;
};

}  // namespace cli
