// Renders the frames of one scene in order, as a host plays a composition.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "cli/pipeline/input_stream.h"
#include "cli/scene/layer_effect.h"
#include "cli/scene/scene_plan.h"
#include "cli/scene/star_state.h"
#include "cli/support/processors.h"
#include "hostkit/world.h"

namespace cli {

struct RendererOptions {
  std::string module;             // as for findModule
  int jobs = usableProcessors();  // threads that work on the whole
  std::optional<int> threads;     // those that paint a frame; none: as many as jobs
};

// Where a render begins, and from when on it is seen.
struct RenderStart {
  std::optional<StarState> state;  // to go on from; otherwise from the first step of the pre-roll
  std::optional<int> firstSeen;    // only steps lead to that frame; none: all may be rendered
};

class SceneRenderer {
 public:
  // Loads the module, checks the scene's values against it and opens the input. Throws when the
  // scene has layers, or several threads are asked for, and the module is too old for that, and
  // when the state to go on from is another scene's.
  explicit SceneRenderer(ScenePlan plan, const RendererOptions& options = {},
                         const RenderStart& start = {});

  // The first frame of all: that of the state or of the pre-roll, or 0.
  int firstFrame() const { return firstFrame_; }

  // What the next frame, beginning with the first, is put on: not yet converted, and left alone for
  // as many frames as framesAtOnce() says. May run in a thread of its own, ahead of the rendering.
  InputPicture& readNext();
  // Makes a readNext() in another thread fail soon.
  void stopReading();

  // Starts the threads that paint, as many as can be had, unless that is done; rendering does it,
  // too.
  void startThreads();

  // Renders the next frame, beginning with the first: -1 comes right before 0. A frame depends on
  // all frames before it, which is why none can be left out. Throws Interrupted when the user asked
  // to stop. Another world of its size may take the output's place.
  void renderNext(InputPicture& picture, hostkit::World& output);

  // The same for a frame that nobody will see: the stars move on, and are not painted.
  void stepNext(InputPicture& picture);

  // The stars as they stand before the next frame.
  StarState state();

  // The threads that the work on frames may take turns on: 1 where the module needs that.
  int jobs() const { return jobs_; }
  // How many frames may be between their reading and their end.
  int framesAtOnce() const { return framesAtOnce(jobs_); }
  static int framesAtOnce(int jobs);
  hostkit::World newOutput() const { return worldFor(plan_); }

  // What the user should know before the first frame.
  std::vector<std::string> notes() const;

  // What the user should know although the render works; complete after the last frame.
  std::vector<std::string> warnings();
  // What is wrong with the input, for after the last frame: one sentence without an end, or
  // nothing.
  std::string damage() { return input_ ? input_->damage() : std::string(); }

 private:
  void setUpPainting(bool threadsAreNeeded);
  void goOnFrom(const StarState& state);
  int firstFrameToRead(int firstSeen) const;
  hostkit::RenderRequest beginFrame();
  void renderOver(const hostkit::World& below, LayerEffect& layer, hostkit::World& picture,
                  hostkit::World& output, const hostkit::RenderRequest& request);
  void lookForStars(std::size_t layer, const hostkit::World& below, const hostkit::World& output);

  ScenePlan plan_;
  std::deque<LayerEffect> layers_;
  std::vector<bool> starsSeen_;  // of each layer, in frames that were rendered
  std::optional<InputStream> input_;
  InputPicture noInput_;             // transparent
  InputPicture* picture_ = nullptr;  // of the input, read last
  StarPast past_;
  std::optional<hostkit::World> below_;   // what the layers before the one being drawn made
  std::optional<hostkit::World> unseen_;  // by modules that cannot but paint
  int firstFrame_;
  int firstRead_;  // the first frame that needs the input
  int nextRead_;
  int nextFrame_;
  int jobs_;
  int threads_;
  bool canStep_ = true;
  bool hasThreads_ = false;
};

}  // namespace cli
