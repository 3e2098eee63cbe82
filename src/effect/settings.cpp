#include "effect/settings.h"

#include <algorithm>
#include <cmath>

#include "core/numbers.h"
#include "core/trigonometry.h"

namespace brisel {
namespace {

/// The values in the types that settings have.
class ValueReader {
 public:
  explicit ValueReader(const Values& values) : values_(values) {}

  float fixed(ParamIndex i) const { return static_cast<float>(values_[i].number) / 65536.0f; }

  /// Counts bound loops and allocations, so they are clamped to the declared range.
  std::int32_t count(ParamIndex i) const {
    const ParameterSpec& spec = parameterSpec(i);
    return std::clamp(values_[i].number, spec.validMin, spec.validMax);
  }

  /// Degrees clockwise from up, as radians clockwise from the right.
  float direction(ParamIndex i) const { return (fixed(i) - 90.0f) * kPi / 180.0f; }

  template <class Item>
  Item popup(ParamIndex i) const {
    const std::int32_t item = values_[i].number;
    return static_cast<Item>(static_cast<std::uint8_t>(item < 0 || item > 255 ? 0 : item));
  }

  /// Whole pixels, rounded down.
  PointF point(ParamIndex i) const {
    return {static_cast<float>(values_[i].number >> 16), static_cast<float>(values_[i].y >> 16)};
  }

  Rgb color(ParamIndex i) const {
    const ByteColor c = values_.color(i);
    return {c.red, c.green, c.blue};
  }

  float checkbox(ParamIndex i) const { return values_[i].number != 0 ? 1.0f : 0.0f; }

  std::int32_t mask(ParamIndex i) const { return values_[i].number; }

 private:
  const Values& values_;
};

void readFrame(RenderSettings& s, const FrameFacts& frame) {
  s.frameWidth = frame.size.width;
  s.frameHeight = frame.size.height;
  if (frame.layerWidth != 0) {
    const float scale = static_cast<float>(s.frameWidth) / static_cast<float>(frame.layerWidth);
    s.resolutionScale = scale == 0.0f ? 1.0f : scale;
  }
  s.highQuality = frame.highQuality;
}

void readCompleteness(RenderSettings& s, const ValueReader& v) {
  s.completenessOfPath = v.fixed(kCompletenessOfPath) / 100.0f;
  s.intensity = v.fixed(kIntensity) / 2.0f;
  s.completenessFraction = 1.0f;
  if (s.completenessOfPath == 1.0f) return;
  s.completenessFraction = fraction(s.completenessOfPath);
  s.completenessParity = truncToInt(s.completenessOfPath) % 2;
  s.intensity *=
      std::fabs(s.completenessParity == 0 ? s.completenessFraction : 1.0f - s.completenessFraction);
}

void readEmitter(RenderSettings& s, const ValueReader& v) {
  s.pathMaskId = v.mask(kPath);
  s.standardPath = v.popup<StandardPath>(kStandardPath);
  s.start = v.point(kStart);
  s.end = v.point(kEnd);
  s.controlStart = v.point(kControlStart);
  s.controlEnd = v.point(kControlEnd);
  s.orientation = v.popup<Orientation>(kOrientation);
  s.direction = v.direction(kDirection);
  s.directionCos = cosine(s.direction);
  s.directionSin = sine(s.direction);
  s.directionDispersion = v.fixed(kDirectionDispersion) / 100.0f;
  readCompleteness(s, v);
  s.shiftOfPath = v.fixed(kShiftOfPath) / 360.0f;
  s.maximumNumberOfStars = v.count(kMaximumNumberOfStars);
  s.initialSpeed = v.fixed(kInitialSpeed) * s.resolutionScale / 10.0f;
  s.speedDispersion = v.fixed(kSpeedDispersion) / 100.0f;
}

void readLife(RenderSettings& s, const ValueReader& v) {
  s.growUp = v.fixed(kGrowUp) / 100.0f;
  s.terminateType = v.popup<TerminateType>(kTerminateType);
  s.timeLife = v.fixed(kTimeLife);
  s.timeLifeDispersion = v.fixed(kTimeLifeDispersion) / 100.0f;
  s.timeFade = v.fixed(kTimeFade) / 100.0f;
  s.timeOfExplode = v.fixed(kTimeOfExplode) / 100.0f;
  s.terminateColorSchema = v.popup<TerminateColorSchema>(kTerminateColorSchema);
  s.terminateColor = v.color(kTerminateColor);
}

void readMotion(RenderSettings& s, const ValueReader& v) {
  s.gravity = v.fixed(kGravity) * s.resolutionScale / 100.0f;
  s.wind = v.fixed(kWind) * s.resolutionScale / 30.0f;
  s.directionOfWind = v.direction(kDirectionOfWind);
  s.windX = cosine(s.directionOfWind) * s.wind;
  s.windY = sine(s.directionOfWind) * s.wind;
  s.oscillation = v.popup<Oscillation>(kOscillation);
  s.amplitudeOfOscillation = v.fixed(kAmplitudeOfOscillation) / 10.0f;
  s.frequencyOfOscillation = v.fixed(kFrequencyOfOscillation) / 100.0f;
}

void readGeometry(RenderSettings& s, const ValueReader& v) {
  s.type = static_cast<StarType>(v.popup<std::uint8_t>(kType) - 1);
  s.size = v.fixed(kSize) / 200.0f * static_cast<float>(s.frameWidth);
  s.halfSize = s.size / 2.0f;
  s.sizeDependOnSource = v.checkbox(kSizeDependOnSource);
  s.sizeDispersion = v.fixed(kSizeDispersion) / 100.0f;
  s.sizeAmplitudeOfOscillation = v.fixed(kSizeAmplitudeOfOscillation) / 100.0f;
  s.sizeFrequencyOfOscillation = v.fixed(kSizeFrequencyOfOscillation) / 60.0f;
  s.sizeJittering = v.fixed(kSizeJittering) / 30.0f;
  s.width = v.fixed(kWidth) / 1000.0f * s.size;
  s.raysCount = v.count(kRaysCount);
  s.raysCountDispersion = v.fixed(kRaysCountDispersion) / 100.0f;
  s.angle = v.fixed(kAngle);
  s.angleDispersion = v.fixed(kAngleDispersion) / 100.0f;
  s.angleOscillation = v.popup<Oscillation>(kAngleOscillation);
  s.angleAmplitudeOfOscillation = v.fixed(kAngleAmplitudeOfOscillation);
  s.angleFrequencyOfOscillation = v.fixed(kAngleFrequencyOfOscillation) / 60.0f;
  s.angleJittering = v.fixed(kAngleJittering) * 36.0f / 100.0f;
}

void readElements(RenderSettings& s, const ValueReader& v) {
  s.typeOfHalo = v.popup<HaloType>(kTypeOfHalo);
  s.volumeOfHalo = v.fixed(kVolumeOfHalo) / 100.0f;
  s.sizeOfHalo = v.fixed(kSizeOfHalo) / 100.0f;
  s.typeOfBlink = v.popup<BlinkType>(kTypeOfBlink);
  s.volumeOfBlink = v.fixed(kVolumeOfBlink) / 100.0f;
  s.sizeOfBlink = v.fixed(kSizeOfBlink) / 100.0f;
  s.volumeDispersionOfElements = v.fixed(kVolumeDispersionOfElements) / 100.0f;
  s.sizeDispersionOfElements = v.fixed(kSizeDispersionOfElements) / 100.0f;
  s.colorDispersionOfElements = v.fixed(kColorDispersionOfElements) / 100.0f;
}

void readColor(RenderSettings& s, const ValueReader& v) {
  s.value = v.fixed(kValue) / 100.0f;
  s.valueDispersion = v.fixed(kValueDispersion) / 100.0f;
  s.colorSchema = v.popup<ColorSchema>(kColorSchema);
  s.colority = v.fixed(kColority) / 100.0f;
  s.colorityComplement = 1.0f - s.colority;
  s.colorDispersion = v.fixed(kColorDispersion) / 100.0f;
  s.colorRainbow = v.fixed(kColorRainbow) * 5.0f;
  s.colorAmplitudeOfOscillation = v.fixed(kColorAmplitudeOfOscillation) * 255.0f / 100.0f;
  s.colorFrequencyOfOscillation = v.fixed(kColorFrequencyOfOscillation) / 60.0f;
  s.colorJittering = v.fixed(kColorJittering) * 255.0f / 100.0f;
  s.colorOfParticles = v.color(kColorOfParticles);
  s.addMode = v.popup<AddMode>(kAddMode);
  s.mixWithOriginal = v.popup<MixMode>(kMixWithOriginal);
}

}  // namespace

RenderSettings settingsOf(const Values& values, const FrameFacts& frame) {
  RenderSettings settings;
  readFrame(settings, frame);
  const ValueReader reader(values);
  readEmitter(settings, reader);
  readLife(settings, reader);
  readMotion(settings, reader);
  readGeometry(settings, reader);
  readElements(settings, reader);
  readColor(settings, reader);
  return settings;
}

bool starsReadInput(const Values& values) {
  const ValueReader reader(values);
  const auto path = reader.popup<StandardPath>(kStandardPath);
  // A chosen mask takes the place of every shape.
  const bool findPlaces = reader.mask(kPath) == 0 && (path == StandardPath::SourceAsRasterMask ||
                                                      path == StandardPath::ContourAlphaChannel);
  return findPlaces || reader.checkbox(kSizeDependOnSource) != 0.0f ||
         reader.popup<ColorSchema>(kColorSchema) == ColorSchema::Source;
}

}  // namespace brisel
