#include "scene_renderer.h"

#include <algorithm>

#include "errors.h"
#include "interrupt.h"

namespace cli {

SceneRenderer::SceneRenderer(ScenePlan plan, const std::string& modulePath)
    : plan_(std::move(plan)),
      effect_(modulePath),
      tracks_(bindSettings(plan_.scene.settings, effect_.session().parameters(), plan_.size)),
      input_(plan_.size.width, plan_.size.height, plan_.scene.depth),
      output_(plan_.size.width, plan_.size.height, plan_.scene.depth) {
  effect_.session().parameters().resetToDefaults(plan_.size.width, plan_.size.height);
  if (plan_.scene.mask) chooseMask(*plan_.scene.mask);
  if (plan_.input) {
    reader_.emplace(plan_.scene.input, *plan_.input, plan_.size, plan_.rate, plan_.scene.depth);
  }
}

void SceneRenderer::chooseMask(const Mask& mask) {
  hostkit::Session& session = effect_.session();
  const auto& parameters = session.parameters().list();
  const auto path = std::ranges::find(parameters, PF_Param_PATH, &hostkit::Parameter::type);
  if (path == parameters.end()) {
    throw WorkError("the module " + inQuotes(effect_.path().string()) + " takes no mask");
  }
  const auto shapeAtTime = [mask, rate = plan_.rate](const hostkit::MaskTime& time) {
    return shapeAt(mask, frameAt(time, rate));
  };
  session.parameters().setPath(path->index,
                               session.records().masks.add(shapeAtTime, mask.inverted));
}

void SceneRenderer::renderNext() {
  throwIfInterrupted();
  if (reader_) copyToWorld(reader_->next(), input_);
  hostkit::Session& session = effect_.session();
  for (const Track& track : tracks_) {
    setParameter(session.parameters(), *track.parameter, valueAt(track, nextFrame_), plan_.size);
  }
  hostkit::RenderRequest request;
  request.frame = nextFrame_;
  request.rateNum = static_cast<A_u_long>(plan_.rate.frames);
  request.rateDen = plan_.rate.seconds;
  request.quality = plan_.scene.highQuality ? PF_Quality_HI : PF_Quality_LO;
  session.render(input_, output_, request);
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
