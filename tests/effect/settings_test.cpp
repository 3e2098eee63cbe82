// From parameter values to the settings of a frame, as far as no known frame shows it: those are of
// full resolution, and leave some values at 0.
#include "effect/settings.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

namespace {

using namespace brisel;

/// A frame of 961 x 541 of a layer twice that size.
class Settings : public testing::Test {
 protected:
  RenderSettings read() { return settingsOf(values, frame); }

  FrameFacts frame{{961, 541}, 1922, true};
  Values values{frame.size};
};

TEST_F(Settings, SlidersHaveTheirUnitsAtHalfTheResolution) {
  using S = RenderSettings;
  const std::tuple<ParamIndex, float S::*, float> sliders[] = {
      {kInitialSpeed, &S::initialSpeed, 0.5f / 10},
      {kGravity, &S::gravity, 0.5f / 100},
      {kWind, &S::wind, 0.5f / 30},
      {kSize, &S::size, 961.0f / 200},
      {kRaysCountDispersion, &S::raysCountDispersion, 0.01f},
      {kAngleJittering, &S::angleJittering, 0.36f}};
  for (const auto& [index, field, perUnit] : sliders) {
    values.setNumber(index, 30.25);
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
  values.setNumber(kIntensity, 8.0);
  for (const Case& c : {Case{100, 1, 0, 1},
                        {150, 0.5f, 1, 0.5f},
                        {250, 0.5f, 0, 0.5f},
                        {-30, -0.3f, 0, 0.3f},
                        {-150, -0.5f, -1, 1.5f},
                        {0, 0, 0, 0}}) {
    SCOPED_TRACE(c.percent);
    values.setNumber(kCompletenessOfPath, c.percent);
    const RenderSettings s = read();
    EXPECT_NEAR(s.completenessFraction, c.fraction, 1e-6f);
    EXPECT_EQ(s.completenessParity, c.parity);
    EXPECT_NEAR(s.intensity, 4.0f * c.share, 1e-5f);
  }
}

TEST_F(Settings, DirectionsTurnClockwiseFromUp) {
  values.setNumber(kWind, 60.0);
  values.setNumber(kDirectionOfWind, 90.0);
  const RenderSettings right = read();
  EXPECT_NEAR(right.directionCos, 0.0f, 1e-7f);
  EXPECT_EQ(right.directionSin, -1.0f) << "the stars' direction is up";
  EXPECT_EQ(right.windX, 1.0f);
  EXPECT_EQ(right.windY, 0.0f);
  values.setNumber(kDirectionOfWind, 180.0);
  EXPECT_EQ(read().windY, 1.0f);
}

TEST_F(Settings, ValuesRoundToTheNearestThatProjectsStore) {
  const std::tuple<ParamIndex, double, std::int32_t> cases[] = {{kSize, 0.1, 6554},
                                                                {kGravity, -0.1, -6554},
                                                                {kAngle, 1e9, 0x7FFFFFFF},
                                                                {kAngle, -1e9, -0x7FFFFFFF - 1},
                                                                {kSize, NAN, -0x7FFFFFFF - 1},
                                                                {kRaysCount, 7.9, 7},
                                                                {kType, 3, 3}};
  for (const auto& [index, number, kept] : cases) {
    values.setNumber(index, number);
    EXPECT_EQ(values[index].number, kept) << number;
  }
  EXPECT_EQ(values.number(kRaysCount), 7.0);
  values.setNumber(kSize, 25.5);
  EXPECT_EQ(values.number(kSize), 25.5);
  EXPECT_EQ(values[kEnd], (Value{40937062, 12409241}));
}

TEST_F(Settings, PointsAreRoundedDownToWholePixels) {
  values.setPoint(kStart, -0.5, 12.99);
  const RenderSettings s = read();
  EXPECT_EQ(s.start.x, -1.0f);
  EXPECT_EQ(s.start.y, 12.0f);
  EXPECT_EQ(s.resolutionScale, 0.5f);
  frame.layerWidth = 0;
  EXPECT_EQ(read().resolutionScale, 1.0f);
}

}  // namespace
