#include "cli/scene/scene_effect.h"

#include <algorithm>

#include "cli/support/errors.h"

namespace cli {
namespace {

constexpr char kMix[] = "Mix with original";
constexpr char kMixOnInput[] = "Add";

}  // namespace

SceneEffect::SceneEffect(const ScenePlan& plan, const std::string& modulePath)
    : layer_(plan.layer),
      effect_(modulePath),
      tracks_(bindSettings(plan.scene.settings, session().parameters(), layer_)) {
  session().parameters().resetToDefaults(layer_.width, layer_.height);
  session().setLayerSize(layer_.width, layer_.height);
  applyPresets(plan.scene.presets);
  if (plan.scene.mask) chooseMask(*plan.scene.mask, plan.rate, plan.scene.preroll);
  if (plan.input) addToInput();
}

void SceneEffect::setFrame(double frame) {
  for (const Track& track : tracks_) {
    setParameter(session().parameters(), *track.parameter, valueAt(track, frame), layer_);
  }
}

// The command line wins over the scene file, and what the one or the other says of a parameter wins
// over its presets.
void SceneEffect::applyPresets(const std::vector<PresetChoice>& choices) {
  if (choices.empty()) return;
  const PresetIndex index = readPresetIndex(effect_.path());
  for (const PresetChoice& choice : choices) {
    const auto set = applyPreset(session(), index, findPreset(index, choice));
    setByPresets_.insert(setByPresets_.end(), set.begin(), set.end());
    if (!choice.isOption) continue;
    std::erase_if(tracks_, [&](const Track& track) {
      return !track.isOption && std::ranges::find(set, track.parameter->index) != set.end();
    });
  }
}

void SceneEffect::chooseMask(const Mask& mask, FrameRate rate, int preroll) {
  const auto& parameters = session().parameters().list();
  const auto path = std::ranges::find(parameters, PF_Param_PATH, &hostkit::Parameter::type);
  if (path == parameters.end()) {
    throw WorkError("the module " + inQuotes(effect_.path().string()) + " takes no mask");
  }
  const auto shapeAtTime = [mask, rate, preroll](const hostkit::MaskTime& time) {
    return shapeAt(mask, std::max(frameAt(time, rate) - preroll, 0.0));
  };
  session().parameters().setPath(path->index,
                                 session().records().masks.add(shapeAtTime, mask.inverted));
}

// The module's default leaves the input out, which a host's user sees at once, but here only when
// the clip is done.
void SceneEffect::addToInput() {
  const hostkit::Parameter* mix = session().parameters().find(kMix);
  if (mix == nullptr || std::ranges::find(tracks_, mix, &Track::parameter) != tracks_.end() ||
      std::ranges::find(setByPresets_, mix->index) != setByPresets_.end()) {
    return;
  }
  setParameter(session().parameters(), *mix, paramValue(kMixOnInput, *mix, layer_), layer_);
  notes_.push_back(inQuotes(kMix) + " is not set, so stars are added to the input (" +
                   inQuotes(kMixOnInput) + ")");
}

}  // namespace cli
