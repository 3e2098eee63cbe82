// The effect's names and its 82 parameters, in the order under which hosts store them in projects:
// index, kind, label, ranges, default and items are frozen, as is the match name. Every host's
// declaration is a translation of this.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "core/color.h"

namespace brisel {

inline constexpr char kDisplayName[] = "Corvane - Brisel";
inline constexpr char kCategory[] = "Tessaro";
inline constexpr char kMatchName[] = "Vellix (Drizzen)";  // by which projects find the effect

/// The index of each parameter that code refers to; the other groups and the ends of groups are
/// not named.
enum ParamIndex : std::int32_t {
  kInputLayer = 0,
  kInformation = 1,
  kEmitterPresets = 3,
  kPath = 4,
  kStandardPath = 5,
  kControlPoints = 6,
  kStart = 7,
  kEnd = 8,
  kControlStart = 9,
  kControlEnd = 10,
  kOrientation = 12,
  kDirection = 13,
  kDirectionDispersion = 14,
  kCompletenessOfPath = 15,
  kShiftOfPath = 16,
  kIntensity = 17,
  kMaximumNumberOfStars = 18,
  kInitialSpeed = 19,
  kSpeedDispersion = 20,
  kGrowUp = 21,
  kTerminate = 22,
  kTerminateType = 23,
  kTimeLife = 24,
  kTimeLifeDispersion = 25,
  kTimeFade = 26,
  kTimeOfExplode = 27,
  kTerminateColorSchema = 28,
  kTerminateColor = 29,
  kGravity = 31,
  kWind = 32,
  kDirectionOfWind = 33,
  kOscillation = 34,
  kAmplitudeOfOscillation = 35,
  kFrequencyOfOscillation = 36,
  kStarPresets = 38,
  kType = 40,
  kSize = 41,
  kSizeDependOnSource = 42,
  kSizeDispersion = 43,
  kSizeAmplitudeOfOscillation = 44,
  kSizeFrequencyOfOscillation = 45,
  kSizeJittering = 46,
  kWidth = 47,
  kRaysCount = 48,
  kRaysCountDispersion = 49,
  kAngle = 50,
  kAngleDispersion = 51,
  kAngleOscillation = 52,
  kAngleAmplitudeOfOscillation = 53,
  kAngleFrequencyOfOscillation = 54,
  kAngleJittering = 55,
  kAdditionalElements = 56,
  kTypeOfHalo = 57,
  kVolumeOfHalo = 58,
  kSizeOfHalo = 59,
  kTypeOfBlink = 60,
  kVolumeOfBlink = 61,
  kSizeOfBlink = 62,
  kVolumeDispersionOfElements = 63,
  kSizeDispersionOfElements = 64,
  kColorDispersionOfElements = 65,
  kValue = 69,
  kValueDispersion = 70,
  kColorSchema = 71,
  kColority = 72,
  kColorDispersion = 73,
  kColorRainbow = 74,
  kColorAmplitudeOfOscillation = 75,
  kColorFrequencyOfOscillation = 76,
  kColorJittering = 77,
  kColorOfParticles = 78,
  kAddMode = 80,
  kMixWithOriginal = 81,
  kParamCount = 82
};

enum class ParamKind : std::uint8_t {
  Number,       // with fractions, on a slider
  WholeNumber,  // on a slider
  Angle,        // degrees, clockwise, any number of turns
  Checkbox,
  Popup,
  Color,
  Point,
  Mask,   // one of the layer's masks, or none
  Panel,  // a control that the effect draws itself; no value, like groups
  GroupStart,
  GroupEnd
};

/// What a number counts. None: the number has a scale of its own, which its description tells.
enum class ParamUnit : std::uint8_t { None, Percent, Degrees, Frames, Stars, Rays, Pixels };

/// One declared parameter. Numbers are what a person sees: degrees, percent, items from 1. Ranges
/// are of numbers and whole numbers; other kinds have none.
struct ParameterSpec {
  ParamKind kind;
  const char* label = "";  // unique but for the empty one of group ends; names the parameter in
                           // preset files, in scenes and in docs/manual/parameters.toml
  ParamUnit unit = ParamUnit::None;
  std::int32_t validMin = 0, validMax = 0;
  std::int32_t sliderMin = 0, sliderMax = 0;
  std::int32_t initial = 0;                      // points: percent of the layer's width
  std::int32_t initialY = 0;                     // points: percent of the layer's height
  Rgb color{};                                   // colors: the default
  std::uint8_t colorAlpha = 0;                   // colors: the alpha byte declared with it
  const char* items = "";                        // popups: separated by '|'
  std::int16_t panelWidth = 0, panelHeight = 0;  // panels: pixels
};

/// The parameters from index 1 on (the host supplies index 0, the input layer).
std::span<const ParameterSpec> declaredParameters();

/// The parameter declared at `index`, 1 .. kParamCount - 1.
const ParameterSpec& parameterSpec(std::int32_t index);

/// The index of the parameter with that label, exactly; 0 when there is none. Group ends and the
/// input layer are not found.
ParamIndex findParameter(std::string_view label);

}  // namespace brisel
