#include "cli/scene/scene_effect.h"

#include <algorithm>

#include "cli/support/errors.h"

namespace cli {

SceneEffect::SceneEffect(const ScenePlan& plan, const std::string& modulePath)
    : size_(plan.size),
      effect_(modulePath),
      tracks_(bindSettings(plan.scene.settings, session().parameters(), size_)) {
  session().parameters().resetToDefaults(size_.width, size_.height);
  session().setLayerSize(size_.width, size_.height);
  applyPresets(plan.scene.presets);
  if (plan.scene.mask) chooseMask(*plan.scene.mask, plan.rate);
}

void SceneEffect::setFrame(double frame) {
  for (const Track& track : tracks_) {
    setParameter(session().parameters(), *track.parameter, valueAt(track, frame), size_);
  }
}

// The command line wins over the scene file, and what the one or the other says of a parameter wins
// over its presets.
void SceneEffect::applyPresets(const std::vector<PresetChoice>& choices) {
  if (choices.empty()) return;
  const PresetIndex index = readPresetIndex(effect_.path());
  for (const PresetChoice& choice : choices) {
    const auto set = applyPreset(session(), index, findPreset(index, choice));
    if (!choice.isOption) continue;
    std::erase_if(tracks_, [&](const Track& track) {
      return !track.isOption && std::ranges::find(set, track.parameter->index) != set.end();
    });
  }
}

void SceneEffect::chooseMask(const Mask& mask, FrameRate rate) {
  const auto& parameters = session().parameters().list();
  const auto path = std::ranges::find(parameters, PF_Param_PATH, &hostkit::Parameter::type);
  if (path == parameters.end()) {
    throw WorkError("the module " + inQuotes(effect_.path().string()) + " takes no mask");
  }
  const auto shapeAtTime = [mask, rate](const hostkit::MaskTime& time) {
    return shapeAt(mask, frameAt(time, rate));
  };
  session().parameters().setPath(path->index,
                                 session().records().masks.add(shapeAtTime, mask.inverted));
}

}  // namespace cli
