#include "cli/pipeline/scene_renderer.h"

#include <algorithm>

#include "cli/scene/star_warnings.h"
#include "cli/support/interrupt.h"

namespace cli {

SceneRenderer::SceneRenderer(ScenePlan plan, const std::string& modulePath)
    : plan_(std::move(plan)),
      effect_(plan_, modulePath),
      noInput_(plan_.size.width, plan_.size.height, plan_.scene.depth),
      output_(plan_.size.width, plan_.size.height, plan_.scene.depth),
      nextFrame_(-plan_.scene.preroll) {
  if (plan_.input) input_.emplace(plan_);
}

void SceneRenderer::renderNext() {
  throwIfInterrupted();
  // The pre-roll and frame 0 show the input's first frame.
  if (!layer_ || nextFrame_ > 0) layer_ = input_ ? &input_->next() : &noInput_;
  const BusyTime::Scope busy(rendering_);
  effect_.setFrame(std::max(nextFrame_, 0));
  hostkit::RenderRequest request;
  // The host's time begins with the pre-roll: the effect starts afresh at 0, and only there.
  request.frame = nextFrame_ + plan_.scene.preroll;
  request.rateNum = static_cast<A_u_long>(plan_.rate.frames);
  request.rateDen = plan_.rate.seconds;
  request.layerWidth = plan_.layer.width;
  request.layerHeight = plan_.layer.height;
  request.downsampleX.den = static_cast<A_u_long>(plan_.scene.reduction);
  request.downsampleY.den = static_cast<A_u_long>(plan_.scene.reduction);
  request.quality = plan_.scene.highQuality ? PF_Quality_HI : PF_Quality_LO;
  effect_.session().render(*layer_, output_, request);
  ++nextFrame_;
}

Frame SceneRenderer::picture() const {
  Frame frame(plan_.size, plan_.scene.depth);
  copyFromWorld(output_, frame);
  return frame;
}

void SceneRenderer::lookForStars() {
  if (starsSeen_) return;
  const auto isZero = [](std::uint8_t byte) { return byte == 0; };
  // Where there is no star, the output is transparent black or the input.
  starsSeen_ = !samePixels(output_, *layer_) && !std::ranges::all_of(output_.bytes(), isZero);
}

std::vector<std::string> SceneRenderer::warnings() {
  return starWarnings(plan_, effect_.session().parameters(), starsSeen_);
}

std::vector<std::string> SceneRenderer::notes() const {
  std::vector<std::string> notes = effect_.notes();
  if (!plan_.input) return notes;
  notes.insert(notes.begin(), plan_.input->notes.begin(), plan_.input->notes.end());
  return notes;
}

}  // namespace cli
