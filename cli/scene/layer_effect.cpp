#include "cli/scene/layer_effect.h"

#include <algorithm>
#include <utility>

#include "cli/support/errors.h"

namespace cli {
namespace {

constexpr char kMix[] = "Mix with original";
constexpr char kAlone[] = "Replace";
constexpr char kAdded[] = "Add";

}  // namespace

LayerEffect::LayerEffect(SharedModule module, const ScenePlan& plan, std::size_t layer)
    : size_(plan.layer),
      effect_(std::move(module)),
      tracks_(bindSettings(plan.scene.layers[layer].settings, session().parameters(), size_)) {
  const Layer& described = plan.scene.layers[layer];
  session().parameters().resetToDefaults(size_.width, size_.height);
  session().setLayerSize(size_.width, size_.height);
  applyPresets(described.presets);
  if (described.mask) chooseMask(*described.mask, plan.rate, plan.scene.preroll);
  chooseMix(layer == 0, plan.input.has_value());
}

void LayerEffect::setFrame(double frame) {
  for (const Track& track : tracks_) {
    setParameter(session().parameters(), *track.parameter, valueAt(track, frame), size_);
  }
}

// What comes from one place wins over its presets, and over all that comes from places before it.
void LayerEffect::applyPresets(const std::vector<PresetChoice>& choices) {
  if (choices.empty()) return;
  const PresetIndex index = readPresetIndex(effect_.path());
  const hostkit::Parameter* mix = session().parameters().find(kMix);
  std::optional<Origin> mixChosenBy;
  for (const PresetChoice& choice : choices) {
    const auto set = applyPreset(session(), index, findPreset(index, choice));
    const auto isSet = [&set](const hostkit::Parameter* parameter) {
      return std::ranges::find(set, parameter->index) != set.end();
    };
    if (mix != nullptr && isSet(mix)) mixChosenBy = choice.origin;
    std::erase_if(tracks_, [&](const Track& track) {
      return track.origin < choice.origin && isSet(track.parameter);
    });
  }
  if (mixChosenBy && std::ranges::find(tracks_, mix, &Track::parameter) == tracks_.end()) {
    const double item = session().parameters().value(mix->index).u.pd.value;
    tracks_.push_back({mix, *mixChosenBy, {{{0}, {item}}}});
  }
}

void LayerEffect::chooseMask(const Mask& mask, FrameRate rate, int preroll) {
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

// The module's default leaves out what lies below, which a host's user sees at once, but here only
// when the clip is done. A scene that chooses this for all layers means the input, not the layers.
void LayerEffect::chooseMix(bool isFirst, bool hasInput) {
  mix_ = session().parameters().find(kMix);
  if (mix_ == nullptr) return;
  const auto track = std::ranges::find(tracks_, mix_, &Track::parameter);
  const bool isSet = track != tracks_.end();
  const bool isOwn = isSet && track->origin == Origin::kLayer;
  if (isOwn && !isFirst) {
    const ParamValue alone = paramValue(kAlone, *mix_, size_);
    if (std::ranges::find(track->keys, alone, &Track::Key::value) != track->keys.end()) {
      notes_.push_back(inQuotes(kMix) + " is " + inQuotes(kAlone) +
                       ", which hides the layers below");
    }
  }
  joinsWhenAlone_ = !isOwn && !isFirst;
  joinsWhenAdded_ = !hasInput && !isFirst;  // the module would darken what it adds to, by its alpha
  if (isSet || !hasInput) return;
  tracks_.push_back({mix_, Origin::kScene, {{{0}, paramValue(kAdded, *mix_, size_)}}});
  if (!isFirst) return;
  notes_.push_back(inQuotes(kMix) + " is not set, so stars are added to the input (" +
                   inQuotes(kAdded) + ")");
}

bool LayerEffect::isToBeAdded() {
  if (mix_ == nullptr) return false;
  const A_long item = session().parameters().value(mix_->index).u.pd.value;
  const std::string& mix = mix_->items.at(static_cast<std::size_t>(item - 1));
  return (joinsWhenAlone_ && mix == kAlone) || (joinsWhenAdded_ && mix == kAdded);
}

std::deque<LayerEffect> layerEffects(const ScenePlan& plan, const std::string& modulePath) {
  const SharedModule module = loadModule(modulePath);
  std::deque<LayerEffect> effects;
  for (std::size_t i = 0; i < plan.scene.layers.size(); ++i) effects.emplace_back(module, plan, i);
  return effects;
}

}  // namespace cli
