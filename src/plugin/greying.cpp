#include "plugin/greying.h"

#include <algorithm>
#include <initializer_list>

#include "core/options.h"
#include "plugin/parameter_table.h"
#include "plugin/sdk/codes.h"
#include "plugin/sdk/suite_handle.h"

namespace brisel {
namespace {

/// The current choices, and the way to tell the host which parameters they make idle.
class ControlStates {
 public:
  ControlStates(const PF_InData& in, PF_ParamDef* const* params)
      : in_(in), params_(params), suite_(in, kPFParamUtilsSuite, kPFParamUtilsSuiteVersion2) {}

  bool available() const { return suite_.get() != nullptr; }

  std::int32_t item(ParamIndex popup) const { return params_[popup]->u.pd.value; }
  PF_Fixed fixed(ParamIndex slider) const { return params_[slider]->u.fd.value; }
  bool hasMask() const { return params_[kPath]->u.path_d.path_id != 0; }
  template <class Option>
  bool is(ParamIndex popup, Option option) const {
    return item(popup) == static_cast<std::int32_t>(option);
  }
  template <class Option>
  bool above(ParamIndex popup, Option option) const {
    return item(popup) > static_cast<std::int32_t>(option);
  }

  void set(bool enabled, std::initializer_list<ParamIndex> indices) const {
    for (const ParamIndex index : indices) {
      PF_ParamDef copy = *params_[index];
      setBit(copy.ui_flags, PF_PUI_DISABLED, !enabled);
      setBit(copy.flags, PF_ParamFlag_COLLAPSE_TWIRLY, !enabled);
      send(index, copy);
    }
  }
  void enable(std::initializer_list<ParamIndex> indices) const { set(true, indices); }
  void disable(std::initializer_list<ParamIndex> indices) const { set(false, indices); }

  /// Leaves `flags` alone, which tell whether a group stands open.
  void setUiFlagsOnly(bool enabled, ParamIndex index) const {
    PF_ParamDef copy = *params_[index];
    setBit(copy.ui_flags, PF_PUI_DISABLED, !enabled);
    send(index, copy);
  }

 private:
  static void setBit(std::int32_t& flags, std::int32_t bit, bool on) {
    flags = on ? flags | bit : flags & ~bit;
  }
  void send(ParamIndex index, const PF_ParamDef& copy) const {
    suite_->PF_UpdateParamUI(in_.effect_ref, index, &copy);
  }

  const PF_InData& in_;
  PF_ParamDef* const* params_;
  SuiteHandle<PF_ParamUtilsSuite2> suite_;
};

void standardPathRule(const ControlStates& states) {
  states.set(!states.hasMask(), {kStandardPath});
}

void controlPointsRule(const ControlStates& states) {
  if (states.hasMask() || states.above(kStandardPath, StandardPath::Circle)) {
    states.disable({kControlPoints, kStart, kEnd, kControlStart, kControlEnd});
    return;
  }
  states.enable({kStart});
  states.setUiFlagsOnly(true, kControlPoints);
  if (states.is(kStandardPath, StandardPath::Point)) {
    states.disable({kEnd, kControlStart, kControlEnd});
  } else if (states.is(kStandardPath, StandardPath::Line)) {
    states.disable({kControlStart, kEnd});
    states.enable({kControlEnd});
  } else if (states.is(kStandardPath, StandardPath::Circle)) {
    states.disable({kEnd});
    states.enable({kControlStart});
    states.disable({kControlEnd});
  } else if (states.is(kStandardPath, StandardPath::Bezier) ||
             states.is(kStandardPath, StandardPath::Polyline)) {
    states.enable({kEnd, kControlStart, kControlEnd});
  }
}

void directionRule(const ControlStates& states) {
  const bool fromDirection = states.is(kOrientation, Orientation::Direct) ||
                             states.is(kOrientation, Orientation::AddAngle) ||
                             states.is(kStandardPath, StandardPath::Point);
  const bool anyDirection = states.is(kOrientation, Orientation::RandomAllDirections);
  states.set(fromDirection && !anyDirection, {kDirection, kDirectionDispersion});
}

void pathExtentRule(const ControlStates& states) {
  constexpr PF_Fixed kWholePath = 100 << 16;
  const bool withoutExtent =
      !states.hasMask() && (states.is(kStandardPath, StandardPath::Point) ||
                            states.is(kStandardPath, StandardPath::SourceAsRasterMask) ||
                            states.is(kStandardPath, StandardPath::WholeField));
  const bool partial = states.fixed(kCompletenessOfPath) != kWholePath;
  states.set(!withoutExtent, {kCompletenessOfPath});
  states.setUiFlagsOnly(!withoutExtent && partial, kShiftOfPath);
}

void terminateRule(const ControlStates& states) {
  if (states.is(kTerminateType, TerminateType::Infinity)) {
    states.disable({kTerminate, kTimeLife, kTimeLifeDispersion, kTimeFade, kTimeOfExplode,
                    kTerminateColorSchema, kTerminateColor});
    return;
  }
  const bool fades = states.above(kTerminateType, TerminateType::TimeLimited);
  const bool bursts = states.above(kTerminateType, TerminateType::Fade);
  const bool custom = states.is(kTerminateColorSchema, TerminateColorSchema::Custom);
  states.setUiFlagsOnly(true, kTerminate);
  states.enable({kTimeLife, kTimeLifeDispersion});
  states.set(fades, {kTimeFade});
  states.set(bursts, {kTimeOfExplode, kTerminateColorSchema});
  states.set(bursts && custom, {kTerminateColor});
}

void oscillationRule(const ControlStates& states) {
  states.set(states.above(kOscillation, Oscillation::None),
             {kAmplitudeOfOscillation, kFrequencyOfOscillation});
}

/// The four-pointed stars have no rays to count; discs, which look alike at any angle, no angle.
enum class Shape { Rayed, FourPointed, Round };

Shape shapeOf(const ControlStates& states) {
  // The popup's items count from 1, StarType from 0.
  constexpr std::int32_t kType5 = 6, kType7 = 8, kGlow2 = 10;
  const std::int32_t type = states.item(kType);
  if (type < kType5 || type > kGlow2) return Shape::Rayed;
  return type < kType7 ? Shape::FourPointed : Shape::Round;
}

void rayRule(const ControlStates& states) {
  const Shape shape = shapeOf(states);
  states.set(shape == Shape::Rayed, {kWidth, kRaysCount, kRaysCountDispersion});
  states.set(shape != Shape::Round, {kAngle, kAngleDispersion, kAngleJittering});
}

void angleOscillationRule(const ControlStates& states) {
  const bool turns = shapeOf(states) != Shape::Round;
  states.set(turns, {kAngleOscillation});
  states.set(turns && states.above(kAngleOscillation, Oscillation::None),
             {kAngleAmplitudeOfOscillation, kAngleFrequencyOfOscillation});
}

void elementsRule(const ControlStates& states) {
  const bool halo = states.above(kTypeOfHalo, HaloType::None);
  const bool blink = states.above(kTypeOfBlink, BlinkType::None);
  if (halo || blink) {
    states.setUiFlagsOnly(true, kAdditionalElements);
  } else {
    states.disable({kAdditionalElements});
  }
  states.set(halo, {kVolumeOfHalo, kSizeOfHalo});
  states.set(blink, {kVolumeOfBlink, kSizeOfBlink});
  states.set(halo || blink,
             {kVolumeDispersionOfElements, kSizeDispersionOfElements, kColorDispersionOfElements});
}

void colorSchemaRule(const ControlStates& states) {
  const bool solid = states.is(kColorSchema, ColorSchema::Solid);
  if (!solid && !states.is(kColorSchema, ColorSchema::Source)) return;
  states.set(!solid, {kColority});
  states.set(solid, {kColorOfParticles});
}

/// A rule runs when any of its keys is updated, so most of them run several times in a row.
struct Rule {
  std::initializer_list<ParamIndex> keys;
  void (*apply)(const ControlStates& states);
};

constexpr Rule kRules[] = {
    {{kStandardPath}, standardPathRule},
    {{kStart, kEnd, kControlStart, kControlEnd}, controlPointsRule},
    {{kDirection}, directionRule},
    {{kCompletenessOfPath, kShiftOfPath}, pathExtentRule},
    {{kTerminate, kTimeFade, kTerminateColorSchema, kTerminateColor}, terminateRule},
    {{kAmplitudeOfOscillation, kFrequencyOfOscillation}, oscillationRule},
    {{kType}, rayRule},
    {{kAngleAmplitudeOfOscillation, kAngleFrequencyOfOscillation}, angleOscillationRule},
    {{kAdditionalElements, kVolumeOfHalo, kSizeOfHalo, kVolumeOfBlink, kSizeOfBlink,
      kVolumeDispersionOfElements, kSizeDispersionOfElements, kColorDispersionOfElements},
     elementsRule},
    {{kColority, kColorOfParticles}, colorSchemaRule},
};

}  // namespace

void updateParameterUI(const PF_InData& in, PF_ParamDef* const* params, std::int32_t changedIndex) {
  for (const Rule& rule : kRules) {
    if (std::find(rule.keys.begin(), rule.keys.end(), changedIndex) == rule.keys.end()) continue;
    const ControlStates states(in, params);
    if (states.available()) rule.apply(states);
  }
}

void updateAllParameterUI(const PF_InData& in, PF_ParamDef* const* params) {
  for (std::int32_t index = 2; index < kParamCount; ++index) updateParameterUI(in, params, index);
}

}  // namespace brisel
