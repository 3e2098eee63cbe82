// What an instance answers besides frames.
#include <algorithm>

#include "effect/graying.h"
#include "look/built_in_presets.h"
#include "openfx/effect_instance.h"

namespace brisel::openfx {
namespace {

bool setRectangle(const Properties& properties, const char* name, const OfxRectD& r) {
  bool isSet = true;
  const double sides[] = {r.x1, r.y1, r.x2, r.y2};
  for (int i = 0; i < 4; ++i) isSet = properties.set(name, sides[i], i) && isSet;
  return isSet;
}

}  // namespace

OfxStatus EffectInstance::getClipPreferences(const Properties& preferences) const {
  preferences.set(kOfxEffectFrameVarying, 1);
  std::string alpha = kOfxImagePreMultiplied;
  if (hasSource()) alpha = propertiesOf(host_, source_).text(kOfxEffectPreMultiplication);
  // Stars may leave an opaque clip out.
  if (alpha.empty() || alpha == kOfxImageOpaque) alpha = kOfxImageUnPreMultiplied;
  preferences.set(kOfxEffectPreMultiplication, alpha.c_str());
  return kOfxStatOK;
}

/// Whole, and within the project where it has no end. Nothing without a source, or where it is
/// none.
std::optional<OfxRectD> EffectInstance::regionOfSource(OfxTime time) const {
  OfxRectD region{};
  if (!hasSource() ||
      host_.effect->clipGetRegionOfDefinition(source_, time, &region) != kOfxStatOK) {
    return std::nullopt;
  }
  const Properties instance = propertiesOf(host_, handle_);
  const double x1 = instance.number(kOfxEffectProjectOffset, 0);
  const double y1 = instance.number(kOfxEffectProjectOffset, 0, 1);
  if (region.x1 <= kOfxFlagInfiniteMin) region.x1 = x1;
  if (region.y1 <= kOfxFlagInfiniteMin) region.y1 = y1;
  if (region.x2 >= kOfxFlagInfiniteMax) {
    region.x2 = x1 + instance.number(kOfxEffectProjectSize, 1920);
  }
  if (region.y2 >= kOfxFlagInfiniteMax) {
    region.y2 = y1 + instance.number(kOfxEffectProjectSize, 1080, 1);
  }
  const bool isRegion = region.x1 < region.x2 && region.y1 < region.y2;  // not-a-number is none
  if (!isRegion) return std::nullopt;
  return region;
}

OfxStatus EffectInstance::getRegionOfDefinition(const Properties& arguments,
                                                const Properties& regions) const {
  const auto region = regionOfSource(arguments.number(kOfxPropTime, 0));
  if (!region || !setRectangle(regions, kOfxEffectRegionOfDefinition, *region)) {
    return kOfxStatReplyDefault;
  }
  return kOfxStatOK;
}

OfxStatus EffectInstance::getRegionsOfInterest(const Properties& arguments,
                                               const Properties& regions) const {
  const auto region = regionOfSource(arguments.number(kOfxPropTime, 0));
  if (!region || !setRectangle(regions, kOfxClipRegionOfInterestSource, *region)) {
    return kOfxStatReplyDefault;
  }
  return kOfxStatOK;
}

OfxStatus EffectInstance::instanceChanged(const Properties& change) {
  const std::string reason = change.text(kOfxPropChangeReason);
  if (reason != kOfxChangeTime) isStale_ = true;
  if (reason == kOfxChangeUserEdited && change.text(kOfxPropType) == kOfxTypeParameter) {
    const std::string name = change.text(kOfxPropName);
    const auto changed = std::ranges::find(effectParameters(), name, &EffectParameter::name);
    if (changed != effectParameters().end() && changed->kind == EffectParameter::Kind::Preset)
      applyPreset(*changed);
  }
  updateGraying();
  return kOfxStatOK;
}

void EffectInstance::applyPreset(const EffectParameter& row) const {
  const int item = values_.chosenPreset(row);
  const std::vector<std::string> items = itemsOf(row);
  if (item <= 0 || item >= static_cast<int>(items.size())) return;
  constexpr FrameSize kUnit{1, 1};
  Values values(kUnit);
  const scene::Preset& preset =
      builtInPresets().find({items[static_cast<std::size_t>(item)], row.label});
  values_.set(builtInPresets().apply(preset, kUnit, values), values);
}

void EffectInstance::updateGraying() {
  const Values values = values_.now();
  std::vector<std::int8_t> states(kParamCount, -1);
  for (std::int32_t changed = 2; changed < kParamCount; ++changed) {
    const auto found = grayingOf(values, changed);
    if (!found) continue;
    for (const ControlState& state : *found)
      states[static_cast<std::size_t>(state.index)] = state.enabled;
  }
  for (std::size_t i = 0; i < states.size(); ++i) {
    if (states[i] < 0 || states[i] == enabled_[i]) continue;
    enabled_[i] = states[i];
    values_.setEnabled(static_cast<ParamIndex>(i), states[i] != 0);
  }
}

}  // namespace brisel::openfx
