// The effect's 82 parameters, in the order under which hosts store them in projects: index, type,
// label, ranges, default and items are frozen.
#pragma once

#include <cstdint>
#include <span>

#include "plugin/sdk/params.h"

namespace brisel {

/// The index of each parameter that is read or greyed out; other groups and panels have none.
enum ParamIndex : std::int32_t {
  kInputLayer = 0,
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

/// One declared parameter. Numbers are what a person sees: degrees, percent, items from 1.
struct ParameterSpec {
  PF_ParamType type;
  const char* label = "";
  std::int32_t validMin = 0, validMax = 0;
  std::int32_t sliderMin = 0, sliderMax = 0;
  std::int32_t initial = 0;
  std::int32_t initialY = 0;                // points: the second coordinate
  PF_Pixel color{};                         // colours: the default
  const char* items = "";                   // popups: separated by '|'
  A_short panelWidth = 0, panelHeight = 0;  // custom controls, pixels
};

/// The parameters from index 1 on (the host supplies index 0, the input layer).
std::span<const ParameterSpec> declaredParameters();

/// The parameter declared at `index`, 1 .. kParamCount - 1.
const ParameterSpec& parameterSpec(std::int32_t index);

}  // namespace brisel
