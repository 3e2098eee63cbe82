#include "plugin/read_settings.h"

#include <algorithm>
#include <cmath>

#include "core/numbers.h"
#include "core/trigonometry.h"
#include "plugin/parameter_table.h"
#include "plugin/sdk/codes.h"

namespace brisel {
namespace {

/// The frame's parameter values as a person sees them.
class Values {
 public:
  explicit Values(PF_ParamDef* const* params) : params_(params) {}

  float fixedSlider(ParamIndex i) const { return toFloat(params_[i]->u.fd.value); }

  /// Counts bound loops and allocations, so a host that breaks the declared range is held to it.
  std::int32_t slider(ParamIndex i) const {
    const ParameterSpec& spec = parameterSpec(i);
    return std::clamp(params_[i]->u.sd.value, spec.validMin, spec.validMax);
  }

  float degrees(ParamIndex i) const { return toFloat(params_[i]->u.ad.value); }

  /// Degrees clockwise from up, as radians clockwise from the right.
  float direction(ParamIndex i) const { return (degrees(i) - 90.0f) * kPi / 180.0f; }

  template <class Item>
  Item popup(ParamIndex i) const {
    const A_long item = params_[i]->u.pd.value;
    return static_cast<Item>(static_cast<std::uint8_t>(item < 0 || item > 255 ? 0 : item));
  }

  /// Whole pixels, rounded down.
  PointF point(ParamIndex i) const {
    const PF_PointDef& td = params_[i]->u.td;
    return {static_cast<float>(td.x_value >> 16), static_cast<float>(td.y_value >> 16)};
  }

  Rgb color(ParamIndex i) const {
    const PF_Pixel& c = params_[i]->u.cd.value;
    return {c.red, c.green, c.blue};
  }

  float checkbox(ParamIndex i) const { return params_[i]->u.bd.value != 0 ? 1.0f : 0.0f; }

  std::int32_t path(ParamIndex i) const {
    return static_cast<std::int32_t>(params_[i]->u.path_d.path_id);
  }

 private:
  static float toFloat(PF_Fixed value) { return static_cast<float>(value) / 65536.0f; }

  PF_ParamDef* const* params_;
};

void readFrame(RenderSettings& s, const PF_InData& in, const PF_LayerDef& output) {
  s.frameWidth = output.width;
  s.frameHeight = output.height;
  const std::int32_t wholeCenterX = output.width / 2;
  const std::int32_t wholeCenterY = output.height / 2;
  s.centerX = static_cast<float>(wholeCenterX);
  s.centerY = static_cast<float>(wholeCenterY);
  if (in.width != 0) {
    const float scale = static_cast<float>(output.width) / static_cast<float>(in.width);
    s.resolutionScale = scale == 0.0f ? 1.0f : scale;
  }
  s.highQuality = in.quality == PF_Quality_HI;
  s.deepColor = (output.world_flags & PF_WorldFlag_DEEP) != 0;
}

/// Both layers are taken at the output's depth.
void readLayers(RenderSettings& s, const PF_LayerDef& input, const PF_LayerDef& output) {
  s.outputRowStride = s.deepColor ? output.rowbytes / 2 : output.rowbytes;
  s.inputRowStride = s.deepColor ? input.rowbytes / 2 : input.rowbytes;
  if (s.deepColor) {
    s.outputPixels16 = reinterpret_cast<std::uint16_t*>(output.data);
    s.inputPixels16 = reinterpret_cast<const std::uint16_t*>(input.data);
  } else {
    s.outputPixels = reinterpret_cast<std::uint8_t*>(output.data);
    s.inputPixels = reinterpret_cast<const std::uint8_t*>(input.data);
  }
  if (input.data != nullptr) {
    s.inputWidth = std::clamp(input.width, 0, std::max(s.inputRowStride / 4, 0));
    s.inputHeight = std::max(input.height, 0);
  }
}

void readCompleteness(RenderSettings& s, const Values& v) {
  s.completenessOfPath = v.fixedSlider(kCompletenessOfPath) / 100.0f;
  s.intensity = v.fixedSlider(kIntensity) / 2.0f;
  s.completenessFraction = 1.0f;
  if (s.completenessOfPath == 1.0f) return;
  s.completenessFraction = fraction(s.completenessOfPath);
  s.completenessParity = truncToInt(s.completenessOfPath) % 2;
  s.intensity *=
      std::fabs(s.completenessParity == 0 ? s.completenessFraction : 1.0f - s.completenessFraction);
}

void readEmitter(RenderSettings& s, const Values& v) {
  s.pathMaskId = v.path(kPath);
  s.standardPath = v.popup<StandardPath>(kStandardPath);
  s.start = v.point(kStart);
  s.end = v.point(kEnd);
  s.controlStart = v.point(kControlStart);
  s.controlEnd = v.point(kControlEnd);
  s.orientation = v.popup<Orientation>(kOrientation);
  s.direction = v.direction(kDirection);
  s.directionCos = cosine(s.direction);
  s.directionSin = sine(s.direction);
  s.directionDispersion = v.fixedSlider(kDirectionDispersion) / 100.0f;
  readCompleteness(s, v);
  s.shiftOfPath = v.degrees(kShiftOfPath) / 360.0f;
  s.maximumNumberOfStars = v.slider(kMaximumNumberOfStars);
  s.initialSpeed = v.fixedSlider(kInitialSpeed) * s.resolutionScale / 10.0f;
  s.speedDispersion = v.fixedSlider(kSpeedDispersion) / 100.0f;
}

void readLife(RenderSettings& s, const Values& v) {
  s.growUp = v.fixedSlider(kGrowUp) / 100.0f;
  s.terminateType = v.popup<TerminateType>(kTerminateType);
  s.timeLife = v.fixedSlider(kTimeLife);
  s.timeLifeDispersion = v.fixedSlider(kTimeLifeDispersion) / 100.0f;
  s.timeFade = v.fixedSlider(kTimeFade) / 100.0f;
  s.timeOfExplode = v.fixedSlider(kTimeOfExplode) / 100.0f;
  s.terminateColorSchema = v.popup<TerminateColorSchema>(kTerminateColorSchema);
  s.terminateColor = v.color(kTerminateColor);
}

void readMotion(RenderSettings& s, const Values& v) {
  s.gravity = v.fixedSlider(kGravity) * s.resolutionScale / 100.0f;
  s.wind = v.fixedSlider(kWind) * s.resolutionScale / 30.0f;
  s.directionOfWind = v.direction(kDirectionOfWind);
  s.windX = cosine(s.directionOfWind) * s.wind;
  s.windY = sine(s.directionOfWind) * s.wind;
  s.oscillation = v.popup<Oscillation>(kOscillation);
  s.amplitudeOfOscillation = v.fixedSlider(kAmplitudeOfOscillation) / 10.0f;
  s.frequencyOfOscillation = v.fixedSlider(kFrequencyOfOscillation) / 100.0f;
}

void readGeometry(RenderSettings& s, const Values& v) {
  s.type = static_cast<StarType>(v.popup<std::uint8_t>(kType) - 1);
  s.size = v.fixedSlider(kSize) / 200.0f * static_cast<float>(s.frameWidth);
  s.halfSize = s.size / 2.0f;
  s.sizeDependOnSource = v.checkbox(kSizeDependOnSource);
  s.sizeDispersion = v.fixedSlider(kSizeDispersion) / 100.0f;
  s.sizeAmplitudeOfOscillation = v.fixedSlider(kSizeAmplitudeOfOscillation) / 100.0f;
  s.sizeFrequencyOfOscillation = v.fixedSlider(kSizeFrequencyOfOscillation) / 60.0f;
  s.sizeJittering = v.fixedSlider(kSizeJittering) / 30.0f;
  s.width = v.fixedSlider(kWidth) / 1000.0f * s.size;
  s.raysCount = v.slider(kRaysCount);
  s.raysCountDispersion = v.fixedSlider(kRaysCountDispersion) / 100.0f;
  s.angle = v.degrees(kAngle);
  s.angleDispersion = v.fixedSlider(kAngleDispersion) / 100.0f;
  s.angleOscillation = v.popup<Oscillation>(kAngleOscillation);
  s.angleAmplitudeOfOscillation = v.fixedSlider(kAngleAmplitudeOfOscillation);
  s.angleFrequencyOfOscillation = v.fixedSlider(kAngleFrequencyOfOscillation) / 60.0f;
  s.angleJittering = v.fixedSlider(kAngleJittering) * 36.0f / 100.0f;
}

void readElements(RenderSettings& s, const Values& v) {
  s.typeOfHalo = v.popup<HaloType>(kTypeOfHalo);
  s.volumeOfHalo = v.fixedSlider(kVolumeOfHalo) / 100.0f;
  s.sizeOfHalo = v.fixedSlider(kSizeOfHalo) / 100.0f;
  s.typeOfBlink = v.popup<BlinkType>(kTypeOfBlink);
  s.volumeOfBlink = v.fixedSlider(kVolumeOfBlink) / 100.0f;
  s.sizeOfBlink = v.fixedSlider(kSizeOfBlink) / 100.0f;
  s.volumeDispersionOfElements = v.fixedSlider(kVolumeDispersionOfElements) / 100.0f;
  s.sizeDispersionOfElements = v.fixedSlider(kSizeDispersionOfElements) / 100.0f;
  s.colorDispersionOfElements = v.fixedSlider(kColorDispersionOfElements) / 100.0f;
}

void readColor(RenderSettings& s, const Values& v) {
  s.value = v.fixedSlider(kValue) / 100.0f;
  s.valueDispersion = v.fixedSlider(kValueDispersion) / 100.0f;
  s.colorSchema = v.popup<ColorSchema>(kColorSchema);
  s.colority = v.fixedSlider(kColority) / 100.0f;
  s.colorityComplement = 1.0f - s.colority;
  s.colorDispersion = v.fixedSlider(kColorDispersion) / 100.0f;
  s.colorRainbow = v.fixedSlider(kColorRainbow) * 5.0f;
  s.colorAmplitudeOfOscillation = v.fixedSlider(kColorAmplitudeOfOscillation) * 255.0f / 100.0f;
  s.colorFrequencyOfOscillation = v.fixedSlider(kColorFrequencyOfOscillation) / 60.0f;
  s.colorJittering = v.fixedSlider(kColorJittering) * 255.0f / 100.0f;
  s.colorOfParticles = v.color(kColorOfParticles);
  s.addMode = v.popup<AddMode>(kAddMode);
  s.mixWithOriginal = v.popup<MixMode>(kMixWithOriginal);
}

}  // namespace

RenderSettings readSettings(const PF_InData& in, PF_ParamDef* const* params,
                            const PF_LayerDef& output) {
  RenderSettings settings;
  readFrame(settings, in, output);
  readLayers(settings, params[kInputLayer]->u.ld, output);
  const Values values(params);
  readEmitter(settings, values);
  readLife(settings, values);
  readMotion(settings, values);
  readGeometry(settings, values);
  readElements(settings, values);
  readColor(settings, values);
  return settings;
}

}  // namespace brisel
