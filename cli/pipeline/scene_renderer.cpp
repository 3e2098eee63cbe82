#include "cli/pipeline/scene_renderer.h"

#include <algorithm>

#include "cli/scene/star_warnings.h"
#include "cli/support/errors.h"
#include "cli/support/interrupt.h"
#include "cli/support/processors.h"
#include "effect/settings.h"
#include "hostkit/error.h"
#include "scene/add_light.h"

namespace cli {
namespace {

// Each has a few pictures in memory.
constexpr int kMostAtATime = 8;
constexpr int kFramesWaiting = 2;  // for stages that take one frame after the other

template <class Byte>
brisel::BasicImageView<Byte> viewOf(const hostkit::World& world, std::span<Byte> bytes) {
  const bool isDeep = world.depth() == hostkit::Depth::Bits16;
  return {bytes.data(), world.width(), world.height(), world.rowBytes(),
          isDeep ? brisel::PixelFormat::Argb16 : brisel::PixelFormat::Argb8};
}

}  // namespace

SceneRenderer::SceneRenderer(ScenePlan plan, const RendererOptions& options,
                             const RenderStart& start)
    : plan_(std::move(plan)),
      layers_(layerEffects(plan_, options.module)),
      starsSeen_(layers_.size()),
      noInput_(worldFor(plan_)),
      past_(plan_, layers_),
      firstFrame_(start.state ? start.state->frame : -plan_.scene.preroll),
      firstRead_(firstFrame_),
      nextRead_(firstFrame_),
      nextFrame_(firstFrame_),
      jobs_(options.jobs),
      threads_(options.threads.value_or(std::min(options.jobs, hostkit::Session::kMostThreads))) {
  setUpPainting(options.threads.value_or(1) > 1);
  if (layers_.size() > 1) below_ = worldFor(plan_);
  if (start.state) goOnFrom(*start.state);
  if (!plan_.input) return;
  firstRead_ = firstFrameToRead(start.firstSeen.value_or(firstFrame_));
  input_.emplace(plan_, std::max(firstRead_, 0), framesAtOnce());
}

void SceneRenderer::goOnFrom(const StarState& state) {
  const std::string name = "the state " + inQuotes(state.file.string());
  if (state.layers.size() != layers_.size()) {
    throw WorkError(name + " is of a scene with another number of layers" + kMakeStates);
  }
  const std::string difference = differenceOf(state.facts, past_.factsBefore(state.frame));
  if (!difference.empty()) {
    throw WorkError(name + " is of another scene: before frame " + std::to_string(state.frame) +
                    " the " + difference + kMakeStates);
  }
  try {
    for (std::size_t i = 0; i < layers_.size(); ++i) {
      layers_[i].session().restoreState(state.layers[i]);
    }
  } catch (const hostkit::Error& error) {
    throw WorkError(name + " cannot be taken: " + error.what() + kMakeStates);
  }
}

// Steps need the input only where stars read it.
int SceneRenderer::firstFrameToRead(int firstSeen) const {
  int frame = firstFrame_;
  const auto isRead = [&](const LayerEffect& layer) {
    return brisel::starsReadInput(layer.layer().at(frame));
  };
  while (canStep_ && frame < firstSeen && std::ranges::none_of(layers_, isRead)) ++frame;
  return frame;
}

StarState SceneRenderer::state() {
  StarState state;
  state.frame = nextFrame_;
  state.facts = past_.factsBefore(nextFrame_);
  for (LayerEffect& layer : layers_) state.layers.push_back(layer.session().saveState());
  return state;
}

int SceneRenderer::framesAtOnce(int jobs) {
  return jobs == 1 ? 1 : std::min(jobs, kMostAtATime) + kFramesWaiting;
}

// What instances share of a module depends on the thread. An older module knows no other way: it
// paints one layer on one thread, and cannot step without painting.
void SceneRenderer::setUpPainting(bool threadsAreNeeded) {
  try {
    for (LayerEffect& layer : layers_) {
      layer.session().useOwnState();
      layer.session().usePainting(1);
    }
  } catch (const hostkit::Error&) {
    if (layers_.size() > 1 || threadsAreNeeded) throw;
    jobs_ = threads_ = 1;
    canStep_ = false;
  }
}

// Not before the decoder and the encoder run, which do not make do with fewer.
void SceneRenderer::startThreads() {
  if (hasThreads_ || threads_ == 1) return;
  hasThreads_ = true;
  for (LayerEffect& layer : layers_) layer.session().usePainting(threads_);
}

// The pre-roll shows the input's first frame, as frame 0 does.
InputPicture& SceneRenderer::readNext() {
  throwIfInterrupted();
  if (!input_ || nextRead_ < firstRead_) {
    picture_ = &noInput_;
  } else if (nextRead_ == firstRead_ || nextRead_ > 0) {
    picture_ = &input_->next();
  }
  ++nextRead_;
  return *picture_;
}

void SceneRenderer::stopReading() {
  if (input_) input_->stop();
}

void SceneRenderer::renderNext(InputPicture& picture, hostkit::World& output) {
  const hostkit::RenderRequest request = beginFrame();
  hostkit::World& below = picture.world();
  for (std::size_t i = 0; i < layers_.size(); ++i) {
    layers_[i].setFrame(nextFrame_);
    if (i == 0) {
      layers_[i].session().render(below, output, request);
      lookForStars(i, below, output);
    } else {
      std::swap(output, *below_);
      renderOver(*below_, layers_[i], below, output, request);
      lookForStars(i, *below_, output);
    }
  }
  ++nextFrame_;
}

void SceneRenderer::renderOver(const hostkit::World& below, LayerEffect& layer,
                               hostkit::World& picture, hostkit::World& output,
                               const hostkit::RenderRequest& request) {
  const bool isToBeAdded = layer.layer().isToBeAdded(layer.values());
  if (!isToBeAdded) layer.session().setBackdrop(&below);
  layer.session().render(picture, output, request);
  if (isToBeAdded) scene::addLight(viewOf(output, output.bytes()), viewOf(below, below.bytes()));
}

void SceneRenderer::stepNext(InputPicture& picture) {
  if (!canStep_) {
    if (!unseen_) unseen_ = newOutput();
    return renderNext(picture, *unseen_);
  }
  const hostkit::RenderRequest request = beginFrame();
  const hostkit::OutputShape shape{plan_.size.width, plan_.size.height, plan_.depth};
  for (LayerEffect& layer : layers_) {
    layer.setFrame(nextFrame_);
    layer.session().advance(picture.world(), shape, request);
  }
  ++nextFrame_;
}

hostkit::RenderRequest SceneRenderer::beginFrame() {
  throwIfInterrupted();
  startThreads();
  hostkit::RenderRequest request;
  // The host's time begins with the pre-roll: the effect starts afresh at 0, and only there.
  request.frame = nextFrame_ + plan_.scene.preroll;
  request.rateNum = static_cast<A_u_long>(plan_.rate.frames);
  request.rateDen = plan_.rate.seconds;
  request.layerWidth = plan_.layer.width;
  request.layerHeight = plan_.layer.height;
  request.downsampleX.den = static_cast<A_u_long>(plan_.reduction);
  request.downsampleY.den = static_cast<A_u_long>(plan_.reduction);
  request.quality = plan_.scene.highQuality ? PF_Quality_HI : PF_Quality_LO;
  return request;
}

// Where there is no star, the output is transparent black or what lies below.
void SceneRenderer::lookForStars(std::size_t layer, const hostkit::World& below,
                                 const hostkit::World& output) {
  if (starsSeen_[layer]) return;
  const auto isZero = [](std::uint8_t byte) { return byte == 0; };
  starsSeen_[layer] = !samePixels(output, below) && !std::ranges::all_of(output.bytes(), isZero);
}

std::vector<std::string> SceneRenderer::warnings() {
  std::vector<std::string> warnings;
  for (std::size_t i = 0; i < layers_.size(); ++i) {
    for (const std::string& text : starWarnings(plan_, layers_[i], starsSeen_[i])) {
      warnings.push_back(scene::layerPrefix(plan_.scene, i) + text);
    }
  }
  return warnings;
}

std::vector<std::string> SceneRenderer::notes() const {
  std::vector<std::string> notes;
  if (plan_.input) notes = plan_.input->notes;
  for (std::size_t i = 0; i < layers_.size(); ++i) {
    for (const std::string& text : layers_[i].layer().notes()) {
      notes.push_back(scene::layerPrefix(plan_.scene, i) + text);
    }
  }
  return notes;
}

}  // namespace cli
