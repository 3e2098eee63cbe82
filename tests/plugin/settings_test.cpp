// From the host's parameter values to the settings of a frame, as far as no known frame shows it:
// those are of full resolution, and leave some values at 0.
#include "plugin/read_settings.h"

#include <gtest/gtest.h>

#include <array>
#include <tuple>

#include "plugin/parameter_table.h"
#include "plugin/sdk/codes.h"

namespace {

using namespace brisel;

/// A frame of 961 x 541 of a layer twice that size, all parameters 0.
class Settings : public testing::Test {
 protected:
  Settings() {
    for (std::size_t i = 0; i < params.size(); ++i) pointers[i] = &params[i];
    in.width = 1922;
    output.width = 961;
    output.height = 541;
    fixed(kCompletenessOfPath, 100.0);
  }

  void fixed(std::size_t i, double value) { params[i].u.fd.value = toFixed(value); }
  void degrees(std::size_t i, double value) { params[i].u.ad.value = toFixed(value); }
  static PF_Fixed toFixed(double value) { return static_cast<PF_Fixed>(value * 65536.0); }
  RenderSettings read() { return readSettings(in, pointers.data(), output); }

  std::array<PF_ParamDef, kParamCount> params{};
  std::array<PF_ParamDef*, kParamCount> pointers{};
  PF_InData in{};
  PF_LayerDef output{};
};

TEST_F(Settings, SlidersHaveTheirUnitsAtHalfTheResolution) {
  using S = RenderSettings;
  const std::tuple<std::size_t, float S::*, float> sliders[] = {
      {kInitialSpeed, &S::initialSpeed, 0.5f / 10},
      {kGravity, &S::gravity, 0.5f / 100},
      {kWind, &S::wind, 0.5f / 30},
      {kSize, &S::size, 961.0f / 200},
      {kRaysCountDispersion, &S::raysCountDispersion, 0.01f},
      {kAngleJittering, &S::angleJittering, 0.36f}};
  for (const auto& [index, field, perUnit] : sliders) {
    fixed(index, 30.25);
    EXPECT_FLOAT_EQ(read().*field, 30.25f * perUnit) << "parameter " << index;
  }
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
  const RenderSettings right = read();
  EXPECT_NEAR(right.directionCos, 0.0f, 1e-7f);
  EXPECT_EQ(right.directionSin, -1.0f) << "the stars' direction is up";
  EXPECT_EQ(right.windX, 1.0f);
  EXPECT_EQ(right.windY, 0.0f);
  degrees(kDirectionOfWind, 180.0);
  EXPECT_EQ(read().windY, 1.0f);
}

TEST_F(Settings, PlacesAreWholePixels) {
  params[kStart].u.td = {toFixed(-0.5), toFixed(12.99), {}, 0, 0, 0};
  const RenderSettings s = read();
  EXPECT_EQ(s.start.x, -1.0f);
  EXPECT_EQ(s.start.y, 12.0f);
  EXPECT_EQ(s.centerX, 480.0f);
  EXPECT_EQ(s.centerY, 270.0f);
  EXPECT_EQ(s.resolutionScale, 0.5f);
  in.width = 0;
  EXPECT_EQ(read().resolutionScale, 1.0f);
}

}  // namespace
