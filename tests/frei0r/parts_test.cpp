// The parts of the filter by themselves: its numbers and its clock.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "frei0r/filter_parameters.h"
#include "frei0r/frame_clock.h"
#include "look/choices.h"

namespace {

using namespace brisel;

double asHostsWriteIt(double number) {
  char text[64];
  std::snprintf(text, sizeof text, "%.6f", number);
  return std::atof(text);
}

TEST(FilterNumbers, SurviveHostsThatWriteSixDecimals) {
  int checked = 0;
  for (const FilterParameter& parameter : filterParameters()) {
    if (parameter.kind != FilterParameter::Kind::Number) continue;
    const ParameterSpec& spec = parameterSpec(parameter.index);
    const bool isPoint = spec.kind == ParamKind::Point;
    const bool isAngle = spec.kind == ParamKind::Angle;
    const double least = isPoint ? -2 : isAngle ? -720 : spec.validMin;
    const double most = isPoint ? 3 : isAngle ? 720 : spec.validMax;
    // In steps that are not whole, at most some thousands.
    const double step = std::max(0.01, std::round(most - least) / 5000);
    for (double exact = least; exact <= most; exact += step) {
      const double number = std::round(exact * 100) / 100;
      const double written = asHostsWriteIt(hostNumber(parameter, number));
      const double unit = hostNumber(parameter, 1) - hostNumber(parameter, 0);
      // Six decimals can tell hundredths up to a slider of 10,000.
      ASSERT_EQ(effectNumber(parameter, written), number) << parameter.name << ' ' << unit;
      ++checked;
    }
  }
  EXPECT_GT(checked, 100'000);
}

TEST(FilterNumbers, StayInTheValidRange) {
  for (const FilterParameter& parameter : filterParameters()) {
    if (parameter.kind != FilterParameter::Kind::Number) continue;
    const ParameterSpec& spec = parameterSpec(parameter.index);
    if (spec.validMin == spec.validMax) continue;
    EXPECT_EQ(effectNumber(parameter, -1e9), spec.validMin);
    EXPECT_EQ(effectNumber(parameter, HUGE_VAL), spec.validMax);
  }
}

// In between two channel values: each of these, times 255, ends in a half.
TEST(FilterNumbers, RoundColorsAlikeInEitherPrecision) {
  const std::int32_t known =
      toValue({parameterSpec(kColorOfParticles).colorAlpha, 179, 230, 26}).number;
  EXPECT_EQ(colorNumber(kColorOfParticles, {0.7f, 0.9f, 0.1f}), known);
  EXPECT_EQ(colorNumber(kColorOfParticles, {0.7, 0.9, 0.1}), known);
}

std::int32_t frameAt(FrameClock& clock, double time) {
  clock.tell(time);
  return clock.frame();
}

/// The frames at times of `count` frames from `first`, `perFrame` apart.
void expectFrames(FrameClock clock, double perFrame, int first, int count, bool isRounded = false) {
  for (int frame = first; frame < first + count; ++frame) {
    const double time = frame * perFrame;
    ASSERT_EQ(frameAt(clock, isRounded ? std::round(time) : time), frame) << perFrame;
  }
}

FrameClock clockOf(double rate) {
  FrameClock clock;
  clock.setRate(rate);
  return clock;
}

TEST(FrameClock, CountsFramesInSecondsAndMilliseconds) {
  for (const double rate : {10.0, 12.5, 24000.0 / 1001, 24.0, 25.0, 30000.0 / 1001, 30.0, 50.0,
                            60000.0 / 1001, 60.0, 120.0}) {
    if (rate > 20) expectFrames({}, 1 / rate, 0, 4000);  // else frames of a usual rate left out
    expectFrames({}, 1000 / rate, 0, 4000);
    expectFrames(clockOf(rate), 1 / rate, 0, 4000);
    expectFrames(clockOf(rate), 1000 / rate, 0, 4000);
    expectFrames(clockOf(rate), 1 / rate, 7, 100);
    expectFrames(clockOf(rate), 1000 / rate, 7, 100);
  }
  for (const double rate : {24.0, 25.0, 30.0, 60.0}) expectFrames({}, 1000 / rate, 0, 4000, true);
  expectFrames(clockOf(30000.0 / 1001), 1001 / 30.0, 0, 4000, true);
}

TEST(FrameClock, CountsFramesOfHostsThatLeaveSomeOut) {
  FrameClock ofThread;  // one of four that a host shares frames out to
  for (const int frame : {0, 4, 3, 5, 1, 9, 11, 8})
    EXPECT_EQ(frameAt(ofThread, frame / 25.0), frame);
  FrameClock jumping;
  for (const int frame : {0, 310, 311, 40, 1000}) EXPECT_EQ(frameAt(jumping, frame / 25.0), frame);
  FrameClock sampling(TimeUnit::Milliseconds);  // by steps too long for frames
  for (const int frame : {0, 6, 12, 18}) EXPECT_EQ(frameAt(sampling, frame * 40.0), frame);
  FrameClock fromTheMiddle(TimeUnit::Milliseconds);
  fromTheMiddle.tell(7000);
  for (const int frame : {211, 212, 213, 900})
    EXPECT_EQ(frameAt(fromTheMiddle, std::round(frame * 1000 / 30.0)), frame);
  FrameClock milliseconds = clockOf(25);
  for (const int frame : {13, 15, 70, 2}) EXPECT_EQ(frameAt(milliseconds, frame * 40.0), frame);
}

TEST(FrameClock, KnowsTheUnitOfHostsByTheirLibraries) {
  // A first time that may be frame 1 in milliseconds or frame 1000 in seconds.
  FrameClock seconds(timeUnitOfHost("libmltfrei0r.so"));
  seconds.setRate(25);
  EXPECT_EQ(frameAt(seconds, 40), 1000);
  EXPECT_EQ(frameAt(seconds, 80), 2000);
  FrameClock milliseconds(timeUnitOfHost("libavfilter.so.8"));
  milliseconds.setRate(25);
  EXPECT_EQ(frameAt(milliseconds, 0.2), 0);
  EXPECT_EQ(frameAt(milliseconds, 40), 1);
  EXPECT_EQ(timeUnitOfHost("ffmpeg"), TimeUnit::Unknown);
}

TEST(FrameClock, TakesAnyTime) {
  FrameClock clock = clockOf(25);
  EXPECT_EQ(frameAt(clock, -3), 0);
  EXPECT_EQ(frameAt(clock, 1e300), FrameClock::kLastFrame);
  EXPECT_EQ(frameAt(clock, HUGE_VAL), FrameClock::kLastFrame);

  FrameClock without;
  constexpr double kNoTime = -9223372036854775808.0 * 40;  // as one host says it
  for (int frame = 0; frame < 3; ++frame) EXPECT_EQ(frameAt(without, kNoTime), frame);
  EXPECT_EQ(frameAt(without, NAN), 3);
  EXPECT_EQ(frameAt(without, 40 / 25.0), 40);
  EXPECT_EQ(frameAt(without, NAN), 41);
}

}  // namespace
