#include "scene_renderer.h"

#include "errors.h"
#include "interrupt.h"

namespace cli {

SceneRenderer::SceneRenderer(ScenePlan plan, const std::string& modulePath)
    : plan_(std::move(plan)),
      effect_(plan_, modulePath),
      input_(plan_.size.width, plan_.size.height, plan_.scene.depth),
      output_(plan_.size.width, plan_.size.height, plan_.scene.depth) {
  if (plan_.input) {
    reader_.emplace(plan_.scene.input, *plan_.input, plan_.size, plan_.rate, plan_.scene.depth);
  }
}

void SceneRenderer::renderNext() {
  throwIfInterrupted();
  if (reader_) copyToWorld(reader_->next(), input_);
  effect_.setFrame(nextFrame_);
  hostkit::RenderRequest request;
  request.frame = nextFrame_;
  request.rateNum = static_cast<A_u_long>(plan_.rate.frames);
  request.rateDen = plan_.rate.seconds;
  request.quality = plan_.scene.highQuality ? PF_Quality_HI : PF_Quality_LO;
  effect_.session().render(input_, output_, request);
  ++nextFrame_;
}

Frame SceneRenderer::picture() const {
  Frame frame(plan_.size, plan_.scene.depth);
  copyFromWorld(output_, frame);
  return frame;
}

std::vector<std::string> SceneRenderer::warnings() const {
  if (!reader_ || reader_->complaint().empty()) return {};
  return {"the input " + inQuotes(plan_.scene.input.string()) +
          " is damaged: " + reader_->complaint()};
}

}  // namespace cli
