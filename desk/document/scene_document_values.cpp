#include "desk/document/scene_document.h"

#include <algorithm>

#include "desk/document/key_list.h"
#include "desk/document/scene_document_parsed.h"
#include "desk/document/value_text.h"

namespace desk {
namespace {

using brisel::ParamIndex;

}  // namespace

const SharedState& SceneDocument::state() const {
  return parsed_->state;
}

int SceneDocument::layerCount() const {
  return static_cast<int>(state()->layers.size());
}

bool SceneDocument::hasLayerTables() const {
  return parsed_->text.layerCount() > 0;
}

QString SceneDocument::layerName(int layer) const {
  const std::string& name = state()->plan.scene.layers[static_cast<std::size_t>(layer)].name;
  return name.empty() ? tr("Layer %1").arg(layer + 1) : QString::fromStdString(name);
}

LayerChoice SceneDocument::tableOf(int layer) const {
  if (!hasLayerTables()) return std::nullopt;
  return static_cast<std::size_t>(layer);
}

/// The table that says what the parameter is, or would.
LayerChoice SceneDocument::ownerOf(int layer, ParamIndex parameter) const {
  const LayerChoice own = tableOf(layer);
  if (!own || parsed_->text.sets(own, parameter)) return own;
  const bool isShared = parsed_->text.sets(std::nullopt, parameter) &&
                        !parsed_->layers[*own].byOwnPresets[static_cast<std::size_t>(parameter)];
  return isShared ? std::nullopt : own;
}

scene::ParamValue SceneDocument::value(int layer, ParamIndex parameter, double frame) const {
  return personsValue(values(layer, frame), parameter, state()->plan.layer);
}

brisel::Values SceneDocument::values(int layer, double frame) const {
  return state()->layers[static_cast<std::size_t>(layer)].at(frame);
}

ValueOrigin SceneDocument::origin(int layer, ParamIndex parameter) const {
  const LayerChoice owner = ownerOf(layer, parameter);
  if (parsed_->text.sets(owner, parameter)) {
    return owner ? ValueOrigin::Layer : ValueOrigin::Scene;
  }
  const LayerFacts& facts = parsed_->layers[static_cast<std::size_t>(layer)];
  const auto index = static_cast<std::size_t>(parameter);
  return facts.byOwnPresets[index] || facts.bySharedPresets[index] ? ValueOrigin::Preset
                                                                   : ValueOrigin::Default;
}

std::vector<ParamKey> SceneDocument::keys(int layer, ParamIndex parameter) const {
  const LayerChoice owner = ownerOf(layer, parameter);
  if (!parsed_->text.isKeyed(owner, parameter)) return {};
  const scene::Origin origin = owner ? scene::Origin::Layer : scene::Origin::Scene;
  const auto& settings = state()->plan.scene.layers[static_cast<std::size_t>(layer)].settings;
  const auto setting = std::ranges::find_if(settings, [&](const scene::Setting& candidate) {
    return candidate.origin == origin && candidate.label == brisel::parameterSpec(parameter).label;
  });
  if (setting == settings.end()) return {};
  std::vector<ParamKey> keys =
      scene::bindSettings({*setting}, state()->plan.layer, state()->plan.rate).front().keys;
  toWholeFrames(keys);
  return keys;
}

std::vector<ParamIndex> SceneDocument::keyedParameters(int layer) const {
  std::vector<ParamIndex> keyed;
  for (std::int32_t index = 1; index < brisel::kParamCount; ++index) {
    const auto parameter = static_cast<ParamIndex>(index);
    if (parsed_->text.isKeyed(ownerOf(layer, parameter), parameter)) {
      keyed.push_back(parameter);
    }
  }
  return keyed;
}

std::optional<scene::Mask> SceneDocument::mask(int layer) const {
  std::optional<scene::Mask> mask = state()->layers[static_cast<std::size_t>(layer)].mask();
  if (mask) toWholeFrames(mask->keys);
  return mask;
}

QStringList SceneDocument::presets(int layer) const {
  QStringList names;
  for (const auto& choice : state()->plan.scene.layers[static_cast<std::size_t>(layer)].presets) {
    names.append(QString::fromStdString(choice.name));
  }
  return names;
}

}  // namespace desk
