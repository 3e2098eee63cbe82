// Renders the frames of one scene in order, as a host plays a composition.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "cli/pipeline/busy_time.h"
#include "cli/pipeline/input_stream.h"
#include "cli/scene/layer_effect.h"
#include "cli/scene/scene_plan.h"
#include "hostkit/world.h"

namespace cli {

struct RendererOptions {
  std::string module;          // as for findModule
  std::optional<int> threads;  // none: as many as this process may use processors
};

class SceneRenderer {
 public:
  // Loads the module, checks the scene's values against it and opens the input. Throws when the
  // scene has layers, or several threads are asked for, and the module is too old for that.
  explicit SceneRenderer(ScenePlan plan, const RendererOptions& options = {});

  // Renders the next frame, beginning with the first of the pre-roll: -1 comes right before 0. A
  // frame depends on all frames before it, which is why none can be left out. Throws Interrupted
  // when the user asked to stop.
  void renderNext();

  // The same for a frame that nobody will see: the stars move on, and are not painted.
  void stepNext();

  // The frame rendered last.
  Frame picture() const;
  // The same as the host's world; another of its size may take its place.
  hostkit::World& output() { return output_; }

  // What the user should know before the first frame.
  std::vector<std::string> notes() const;

  // What the user should know although the render works; complete after the last frame.
  std::vector<std::string> warnings();
  // What is wrong with the input, for after the last frame: one sentence without an end, or
  // nothing.
  std::string damage() { return input_ ? input_->damage() : std::string(); }

  // How long the input was being decoded; 0 without one.
  double decodingSeconds() const { return input_ ? input_->decoding().seconds() : 0; }
  int threads() const { return threads_; }  // that paint
  double steppingSeconds() const { return stepping_.seconds(); }
  double renderingSeconds() const { return rendering_.seconds(); }

 private:
  void setUpPainting(bool threadsAreNeeded);
  void startThreads();
  hostkit::RenderRequest beginFrame();
  void renderOver(const hostkit::World& below, LayerEffect& layer,
                  const hostkit::RenderRequest& request);
  void lookForStars(std::size_t layer, const hostkit::World& below);

  ScenePlan plan_;
  std::deque<LayerEffect> layers_;
  std::vector<bool> starsSeen_;  // of each layer, in frames that were rendered
  std::optional<InputStream> input_;
  hostkit::World noInput_;             // transparent
  hostkit::World* picture_ = nullptr;  // of the input, that the last frame was put on
  hostkit::World output_;
  std::optional<hostkit::World> below_;  // what the layers before the one being drawn made
  int nextFrame_;
  int threads_;
  bool canStep_ = true;
  BusyTime stepping_;
  BusyTime rendering_;
};

}  // namespace cli
