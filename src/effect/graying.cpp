#include "effect/graying.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "core/options.h"

namespace brisel {
namespace {

/// The current choices, and the states that the current rule gives.
class ControlStates {
 public:
  explicit ControlStates(const Values& values) : values_(values) {}

  std::int32_t item(ParamIndex popup) const { return values_[popup].number; }
  std::int32_t fixed(ParamIndex number) const { return values_[number].number; }
  bool hasMask() const { return values_[kPath].number != 0; }
  template <class Option>
  bool is(ParamIndex popup, Option option) const {
    return item(popup) == static_cast<std::int32_t>(option);
  }
  template <class Option>
  bool above(ParamIndex popup, Option option) const {
    return item(popup) > static_cast<std::int32_t>(option);
  }

  void set(bool enabled, std::initializer_list<ParamIndex> indices) {
    for (const ParamIndex index : indices) found_.push_back({index, enabled, true});
  }
  void enable(std::initializer_list<ParamIndex> indices) { set(true, indices); }
  void disable(std::initializer_list<ParamIndex> indices) { set(false, indices); }

  /// Leaves the group open or collapsed, as it is.
  void setWithoutCollapsing(bool enabled, ParamIndex index) {
    found_.push_back({index, enabled, false});
  }

  std::vector<ControlState> take() { return std::move(found_); }

 private:
  const Values& values_;
  std::vector<ControlState> found_;
};

void standardPathRule(ControlStates& states) {
  states.set(!states.hasMask(), {kStandardPath});
}

void controlPointsRule(ControlStates& states) {
  if (states.hasMask() || states.above(kStandardPath, StandardPath::Circle)) {
    states.disable({kControlPoints, kStart, kEnd, kControlStart, kControlEnd});
    return;
  }
  states.enable({kStart});
  states.setWithoutCollapsing(true, kControlPoints);
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

void directionRule(ControlStates& states) {
  const bool fromDirection = states.is(kOrientation, Orientation::Direct) ||
                             states.is(kOrientation, Orientation::AddAngle) ||
                             states.is(kStandardPath, StandardPath::Point);
  const bool anyDirection = states.is(kOrientation, Orientation::RandomAllDirections);
  states.set(fromDirection && !anyDirection, {kDirection, kDirectionDispersion});
}

void pathExtentRule(ControlStates& states) {
  constexpr std::int32_t kWholePath = 100 << 16;
  const bool withoutExtent =
      !states.hasMask() && (states.is(kStandardPath, StandardPath::Point) ||
                            states.is(kStandardPath, StandardPath::SourceAsRasterMask) ||
                            states.is(kStandardPath, StandardPath::WholeField));
  const bool partial = states.fixed(kCompletenessOfPath) != kWholePath;
  states.set(!withoutExtent, {kCompletenessOfPath});
  states.setWithoutCollapsing(!withoutExtent && partial, kShiftOfPath);
}

void terminateRule(ControlStates& states) {
  if (states.is(kTerminateType, TerminateType::Infinity)) {
    states.disable({kTerminate, kTimeLife, kTimeLifeDispersion, kTimeFade, kTimeOfExplode,
                    kTerminateColorSchema, kTerminateColor});
    return;
  }
  const bool fades = states.above(kTerminateType, TerminateType::TimeLimited);
  const bool bursts = states.above(kTerminateType, TerminateType::Fade);
  const bool custom = states.is(kTerminateColorSchema, TerminateColorSchema::Custom);
  states.setWithoutCollapsing(true, kTerminate);
  states.enable({kTimeLife, kTimeLifeDispersion});
  states.set(fades, {kTimeFade});
  states.set(bursts, {kTimeOfExplode, kTerminateColorSchema});
  states.set(bursts && custom, {kTerminateColor});
}

void oscillationRule(ControlStates& states) {
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

void rayRule(ControlStates& states) {
  const Shape shape = shapeOf(states);
  states.set(shape == Shape::Rayed, {kWidth, kRaysCount, kRaysCountDispersion});
  states.set(shape != Shape::Round, {kAngle, kAngleDispersion, kAngleJittering});
}

void angleOscillationRule(ControlStates& states) {
  const bool turns = shapeOf(states) != Shape::Round;
  states.set(turns, {kAngleOscillation});
  states.set(turns && states.above(kAngleOscillation, Oscillation::None),
             {kAngleAmplitudeOfOscillation, kAngleFrequencyOfOscillation});
}

void elementsRule(ControlStates& states) {
  const bool halo = states.above(kTypeOfHalo, HaloType::None);
  const bool blink = states.above(kTypeOfBlink, BlinkType::None);
  if (halo || blink) {
    states.setWithoutCollapsing(true, kAdditionalElements);
  } else {
    states.disable({kAdditionalElements});
  }
  states.set(halo, {kVolumeOfHalo, kSizeOfHalo});
  states.set(blink, {kVolumeOfBlink, kSizeOfBlink});
  states.set(halo || blink,
             {kVolumeDispersionOfElements, kSizeDispersionOfElements, kColorDispersionOfElements});
}

void colorSchemaRule(ControlStates& states) {
  const bool solid = states.is(kColorSchema, ColorSchema::Solid);
  if (!solid && !states.is(kColorSchema, ColorSchema::Source)) return;
  states.set(!solid, {kColority});
  states.set(solid, {kColorOfParticles});
}

/// A rule runs when any of its keys is updated, so most of them run several times in a row. No
/// parameter is the key of two.
struct Rule {
  std::initializer_list<ParamIndex> keys;
  void (*apply)(ControlStates& states);
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

std::optional<std::vector<ControlState>> grayingOf(const Values& values, std::int32_t changed) {
  for (const Rule& rule : kRules) {
    if (std::find(rule.keys.begin(), rule.keys.end(), changed) == rule.keys.end()) continue;
    ControlStates states(values);
    rule.apply(states);
    return states.take();
  }
  return {};
}

}  // namespace brisel
