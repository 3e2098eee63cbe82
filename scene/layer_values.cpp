#include "scene/layer_values.h"

#include <algorithm>

namespace scene {
namespace {

using brisel::kMixWithOriginal;

// Items of it.
constexpr double kAlone = 1;
constexpr double kAdded = 3;

// What comes from one place wins over its presets, and over all that comes from places before it.
bool winsOver(const PresetChoice& choice, const Track& track) {
  return choice.origin > track.origin;
}

}  // namespace

LayerValues::LayerValues(const Scene& scene, std::size_t layer, const Surroundings& around,
                         const PresetLibrary& presets)
    : size_(around.size),
      base_(around.size),
      tracks_(bindSettings(scene.layers[layer].settings, around.size, around.rate)),
      mask_(scene.layers[layer].mask) {
  for (const Track& track : tracks_) set_.set(static_cast<std::size_t>(track.parameter));
  if (mask_) {
    countInFrames(mask_->keys, around.rate, "path");
    base_.setNumber(brisel::kPath, 1);
    set_.set(brisel::kPath);
  }
  applyPresets(scene.layers[layer].presets, presets);
  chooseMix(layer == 0, around.hasInput);
}

brisel::Values LayerValues::at(double frame) const {
  brisel::Values values = base_;
  for (const Track& track : tracks_) {
    setParameter(values, track.parameter, valueAt(track, std::max(frame, 0.0)), size_);
  }
  return values;
}

std::optional<brisel::MaskOutline> LayerValues::maskAt(double frame) const {
  if (!mask_) return std::nullopt;
  return outlineAt(*mask_, std::max(frame, 0.0));
}

void LayerValues::applyPresets(const std::vector<PresetChoice>& choices,
                               const PresetLibrary& presets) {
  std::optional<Origin> mixChosenBy;
  for (const PresetChoice& choice : choices) {
    for (const brisel::ParamIndex index : presets.apply(presets.find(choice), size_, base_)) {
      set_.set(static_cast<std::size_t>(index));
      std::erase_if(tracks_, [&](const Track& track) {
        return track.parameter == index && winsOver(choice, track);
      });
      if (index == kMixWithOriginal) mixChosenBy = choice.origin;
    }
  }
  if (mixChosenBy &&
      std::ranges::find(tracks_, kMixWithOriginal, &Track::parameter) == tracks_.end()) {
    const double item = base_.number(kMixWithOriginal);
    tracks_.push_back({kMixWithOriginal, *mixChosenBy, {{{0}, {item}}}});
  }
}

// The effect's default leaves out what lies below, which a host's user sees at once, but here only
// when the clip is done. A scene that chooses this for all layers means the input, not the layers.
void LayerValues::chooseMix(bool isFirst, bool hasInput) {
  const std::string mix = inQuotes(brisel::parameterSpec(kMixWithOriginal).label);
  const auto track = std::ranges::find(tracks_, kMixWithOriginal, &Track::parameter);
  const bool isSet = track != tracks_.end();
  const bool isOwn = isSet && track->origin == Origin::Layer;
  if (isOwn && !isFirst &&
      std::ranges::find(track->keys, ParamValue{kAlone}, &Track::Key::value) != track->keys.end()) {
    notes_.push_back(mix + " is \"Replace\", which hides the layers below");
  }
  joinsWhenAlone_ = !isOwn && !isFirst;
  joinsWhenAdded_ = !hasInput && !isFirst;  // the effect would darken what it adds to, by its alpha
  if (isSet || !hasInput) return;
  tracks_.push_back({kMixWithOriginal, Origin::Scene, {{{0}, {kAdded}}}});
  if (!isFirst) return;
  notes_.push_back(mix + " is not set, so stars are added to the input (\"Add\")");
}

bool LayerValues::isToBeAdded(const brisel::Values& values) const {
  const double mix = values.number(kMixWithOriginal);
  return (joinsWhenAlone_ && mix == kAlone) || (joinsWhenAdded_ && mix == kAdded);
}

}  // namespace scene
