// From the host's parameter values to the settings of a frame.
#include "host/read_settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "host/parameter_table.h"
#include "sdk/codes.h"

namespace {

using namespace brisel;

/// A frame of 960 x 540 of a layer twice that size, all parameters 0.
class Settings : public testing::Test {
 protected:
  Settings() {
    for (std::size_t i = 0; i < params.size(); ++i) pointers[i] = &params[i];
    in.width = 1920;
    in.quality = PF_Quality_HI;
    output.width = 960;
    output.height = 541;
    output.rowbytes = 960 * 4 + 12;
    fixed(kCompletenessOfPath, 100.0);
  }

  void fixed(ParamIndex i, double value) { params[i].u.fd.value = toFixed(value); }
  void degrees(ParamIndex i, double value) { params[i].u.ad.value = toFixed(value); }
  static PF_Fixed toFixed(double value) { return static_cast<PF_Fixed>(value * 65536.0); }
  RenderSettings read() { return readSettings(in, pointers.data(), output); }

  std::array<PF_ParamDef, kParamCount> params{};
  std::array<PF_ParamDef*, kParamCount> pointers{};
  PF_InData in{};
  PF_LayerDef output{};
};

TEST_F(Settings, EverySliderHasItsUnit) {
  using S = RenderSettings;
  struct Slider {
    ParamIndex index;
    float S::*field;
    float perUnit;
  };
  constexpr float kHalf = 0.5f;  // the resolution
  const Slider sliders[] = {
      {kDirectionDispersion, &S::directionDispersion, 0.01f},
      {kIntensity, &S::intensity, 0.5f},
      {kInitialSpeed, &S::initialSpeed, kHalf / 10},
      {kSpeedDispersion, &S::speedDispersion, 0.01f},
      {kGrowUp, &S::growUp, 0.01f},
      {kTimeLife, &S::timeLife, 1},
      {kTimeLifeDispersion, &S::timeLifeDispersion, 0.01f},
      {kTimeFade, &S::timeFade, 0.01f},
      {kTimeOfExplode, &S::timeOfExplode, 0.01f},
      {kGravity, &S::gravity, kHalf / 100},
      {kWind, &S::wind, kHalf / 30},
      {kAmplitudeOfOscillation, &S::amplitudeOfOscillation, 0.1f},
      {kFrequencyOfOscillation, &S::frequencyOfOscillation, 0.01f},
      {kSize, &S::size, 960.0f / 200},
      {kSizeDispersion, &S::sizeDispersion, 0.01f},
      {kSizeAmplitudeOfOscillation, &S::sizeAmplitudeOfOscillation, 0.01f},
      {kSizeFrequencyOfOscillation, &S::sizeFrequencyOfOscillation, 1.0f / 60},
      {kSizeJittering, &S::sizeJittering, 1.0f / 30},
      {kRaysCountDispersion, &S::raysCountDispersion, 0.01f},
      {kAngle, &S::angle, 1},
      {kAngleDispersion, &S::angleDispersion, 0.01f},
      {kAngleAmplitudeOfOscillation, &S::angleAmplitudeOfOscillation, 1},
      {kAngleFrequencyOfOscillation, &S::angleFrequencyOfOscillation, 1.0f / 60},
      {kAngleJittering, &S::angleJittering, 0.36f},
      {kVolumeOfHalo, &S::volumeOfHalo, 0.01f},
      {kSizeOfHalo, &S::sizeOfHalo, 0.01f},
      {kVolumeOfBlink, &S::volumeOfBlink, 0.01f},
      {kSizeOfBlink, &S::sizeOfBlink, 0.01f},
      {kVolumeDispersionOfElements, &S::volumeDispersionOfElements, 0.01f},
      {kSizeDispersionOfElements, &S::sizeDispersionOfElements, 0.01f},
      {kColorDispersionOfElements, &S::colorDispersionOfElements, 0.01f},
      {kValue, &S::value, 0.01f},
      {kValueDispersion, &S::valueDispersion, 0.01f},
      {kColority, &S::colority, 0.01f},
      {kColorDispersion, &S::colorDispersion, 0.01f},
      {kColorRainbow, &S::colorRainbow, 5},
      {kColorAmplitudeOfOscillation, &S::colorAmplitudeOfOscillation, 2.55f},
      {kColorFrequencyOfOscillation, &S::colorFrequencyOfOscillation, 1.0f / 60},
      {kColorJittering, &S::colorJittering, 2.55f}};
  const auto valueOf = [](ParamIndex i) { return static_cast<float>(i) + 0.25f; };
  for (const Slider& s : sliders) fixed(s.index, valueOf(s.index));
  const RenderSettings settings = read();
  for (const Slider& s : sliders) {
    const float expected = valueOf(s.index) * s.perUnit;
    EXPECT_FLOAT_EQ(settings.*s.field, expected) << "parameter " << s.index;
  }
}

TEST_F(Settings, PopupsAreItemsAndTheTypeCountsFromZero) {
  const ParamIndex popups[] = {
      kStandardPath, kOrientation,      kTerminateType,   kOscillation,
      kType,         kAngleOscillation, kTypeOfHalo,      kTypeOfBlink,
      kColorSchema,  kAddMode,          kMixWithOriginal, kTerminateColorSchema};
  int item = 1;
  for (const ParamIndex i : popups) params[i].u.pd.value = item++;
  const RenderSettings s = read();
  const int read[] = {
      static_cast<int>(s.standardPath),    static_cast<int>(s.orientation),
      static_cast<int>(s.terminateType),   static_cast<int>(s.oscillation),
      static_cast<int>(s.type) + 1,        static_cast<int>(s.angleOscillation),
      static_cast<int>(s.typeOfHalo),      static_cast<int>(s.typeOfBlink),
      static_cast<int>(s.colorSchema),     static_cast<int>(s.addMode),
      static_cast<int>(s.mixWithOriginal), static_cast<int>(s.terminateColorSchema)};
  for (int i = 0; i < 12; ++i) EXPECT_EQ(read[i], i + 1);
}

TEST_F(Settings, CompletenessScalesTheIntensity) {
  struct Case {
    double percent;
    float fraction;
    int parity;
    float share;
  };
  fixed(kIntensity, 8.0);
  for (const Case& c : {Case{100, 1, 0, 1},
                        {150, 0.5f, 1, 0.5f},
                        {250, 0.5f, 0, 0.5f},
                        {-30, -0.3f, 0, 0.3f},
                        {-150, -0.5f, -1, 1.5f},
                        {0, 0, 0, 0}}) {
    SCOPED_TRACE(c.percent);
    fixed(kCompletenessOfPath, c.percent);
    const RenderSettings s = read();
    EXPECT_NEAR(s.completenessFraction, c.fraction, 1e-6f);
    EXPECT_EQ(s.completenessParity, c.parity);
    EXPECT_NEAR(s.intensity, 4.0f * c.share, 1e-5f);
  }
}

TEST_F(Settings, DirectionsTurnClockwiseFromUp) {
  fixed(kWind, 60.0);
  degrees(kDirectionOfWind, 90.0);
  degrees(kShiftOfPath, -450.0);
  const RenderSettings up = read();
  EXPECT_FLOAT_EQ(up.direction, -1.57079633f);
  EXPECT_NEAR(up.directionCos, 0.0f, 1e-7f);
  EXPECT_EQ(up.directionSin, -1.0f);
  EXPECT_EQ(up.windX, 1.0f);
  EXPECT_EQ(up.windY, 0.0f);
  EXPECT_EQ(up.shiftOfPath, -1.25f);
  degrees(kDirection, 90.0);
  EXPECT_EQ(read().directionCos, 1.0f);
}

TEST_F(Settings, FrameFactsAndTheRest) {
  params[kStart].u.td = {toFixed(-0.5), toFixed(12.99), {}, 0, 0, 0};
  params[kEnd].u.td.y_value = toFixed(2);
  params[kControlStart].u.td.y_value = toFixed(3);
  params[kControlEnd].u.td.y_value = toFixed(4);
  params[kTerminateColor].u.cd.value = {9, 1, 2, 3};
  params[kColorOfParticles].u.cd.value = {9, 4, 5, 6};
  params[kMaximumNumberOfStars].u.sd.value = 77;
  params[kRaysCount].u.sd.value = 6;
  params[kSizeDependOnSource].u.bd.value = 1;
  params[kPath].u.path_d.path_id = 3;
  fixed(kSize, 25.0);
  fixed(kWidth, 50.0);
  RenderSettings s = read();
  const float read[] = {s.size,
                        s.halfSize,
                        s.width,
                        s.start.x,
                        s.start.y,
                        s.end.y,
                        s.controlStart.y,
                        s.controlEnd.y,
                        s.sizeDependOnSource,
                        s.colorityComplement,
                        s.resolutionScale,
                        s.centerX,
                        s.centerY};
  const float expected[] = {120, 60, 6, -1, 12, 2, 3, 4, 1, 1, 0.5f, 480, 270};
  for (std::size_t i = 0; i < std::size(expected); ++i) EXPECT_FLOAT_EQ(read[i], expected[i]) << i;
  const int integers[] = {s.terminateColor.red,
                          s.terminateColor.green,
                          s.terminateColor.blue,
                          s.colorOfParticles.red,
                          s.colorOfParticles.blue,
                          s.maximumNumberOfStars,
                          s.raysCount,
                          s.pathMaskId,
                          s.outputRowStride};
  EXPECT_THAT(integers, testing::ElementsAre(1, 2, 3, 4, 6, 77, 6, 3, output.rowbytes));
  EXPECT_TRUE(s.highQuality && !s.deepColor);
  in.width = 0;
  in.quality = PF_Quality_LO;
  output.world_flags = PF_WorldFlag_DEEP;
  s = Settings::read();
  EXPECT_EQ(s.resolutionScale, 1.0f);
  EXPECT_EQ(s.outputRowStride, output.rowbytes / 2);
  EXPECT_TRUE(!s.highQuality && s.deepColor);
}

}  // namespace
