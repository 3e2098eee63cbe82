// Everything one frame needs to know, converted once from the host's parameter values. Plain data
// without a host type in it, so that engine and renderer build, run and are tested without a host.
#pragma once

#include <cstdint>

#include "core/color.h"
#include "core/geometry.h"
#include "core/options.h"

namespace brisel {

/// Lengths are pixels of the output frame, times are steps (one per render), angles radians with 0
/// to the right, growing clockwise on screen. Percentages are fractions unless said otherwise.
struct RenderSettings {
  // Frame. Its pixels come apart from the settings, as image views.
  std::int32_t frameWidth = 0;
  std::int32_t frameHeight = 0;
  float resolutionScale = 1.0f;  // frame width over the layer's width at full resolution
  bool highQuality = false;

  // Emitter.
  std::int32_t pathMaskId = 0;  // 0: no mask chosen
  StandardPath standardPath = StandardPath::Bezier;
  PointF start;
  PointF end;
  PointF controlStart;
  PointF controlEnd;
  Orientation orientation = Orientation::Perpendicularly;
  float direction = 0.0f;
  float directionCos = 0.0f;
  float directionSin = 0.0f;
  float directionDispersion = 0.0f;
  float completenessOfPath = 1.0f;
  float completenessFraction = 1.0f;
  std::int32_t completenessParity = 0;
  float shiftOfPath = 0.0f;  // turns
  float intensity = 0.0f;    // stars per step, completeness included
  std::int32_t maximumNumberOfStars = 0;
  float initialSpeed = 0.0f;  // pixels per step
  float speedDispersion = 0.0f;
  float growUp = 0.0f;
  TerminateType terminateType = TerminateType::Fade;
  float timeLife = 0.0f;  // steps
  float timeLifeDispersion = 0.0f;
  float timeFade = 0.0f;
  float timeOfExplode = 0.0f;
  TerminateColorSchema terminateColorSchema = TerminateColorSchema::Initial;
  Rgb terminateColor;
  float gravity = 0.0f;  // pixels per step squared, downward
  float wind = 0.0f;     // pixels per step
  float directionOfWind = 0.0f;
  float windX = 0.0f;
  float windY = 0.0f;
  Oscillation oscillation = Oscillation::None;
  float amplitudeOfOscillation = 0.0f;
  float frequencyOfOscillation = 0.0f;  // radians per step

  // Geometry.
  StarType type = StarType::Type1;
  float size = 0.0f;
  float halfSize = 0.0f;
  float sizeDependOnSource = 0.0f;  // 0 or 1
  float sizeDispersion = 0.0f;
  float sizeAmplitudeOfOscillation = 0.0f;
  float sizeFrequencyOfOscillation = 0.0f;
  float sizeJittering = 0.0f;
  float width = 0.0f;
  std::int32_t raysCount = 0;
  float raysCountDispersion = 0.0f;
  float angle = 0.0f;  // degrees
  float angleDispersion = 0.0f;
  Oscillation angleOscillation = Oscillation::None;
  float angleAmplitudeOfOscillation = 0.0f;  // degrees
  float angleFrequencyOfOscillation = 0.0f;
  float angleJittering = 0.0f;  // degrees
  HaloType typeOfHalo = HaloType::None;
  float volumeOfHalo = 0.0f;
  float sizeOfHalo = 0.0f;
  BlinkType typeOfBlink = BlinkType::None;
  float volumeOfBlink = 0.0f;
  float sizeOfBlink = 0.0f;
  float volumeDispersionOfElements = 0.0f;
  float sizeDispersionOfElements = 0.0f;
  float colorDispersionOfElements = 0.0f;

  // Color and output.
  float value = 0.0f;
  float valueDispersion = 0.0f;
  ColorSchema colorSchema = ColorSchema::Solid;
  float colority = 1.0f;
  float colorityComplement = 0.0f;
  float colorDispersion = 0.0f;
  float colorRainbow = 0.0f;
  float colorAmplitudeOfOscillation = 0.0f;  // levels of 255
  float colorFrequencyOfOscillation = 0.0f;
  float colorJittering = 0.0f;  // levels of 255
  Rgb colorOfParticles;
  AddMode addMode = AddMode::Mode2;
  MixMode mixWithOriginal = MixMode::Replace;
};

}  // namespace brisel
