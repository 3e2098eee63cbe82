// Rates and lengths told from pictures' times.
#include "cli/media/clip_timing.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using cli::ClipTiming;
using cli::PictureTime;
using scene::FrameRate;

// From each time to the next, the last one left unsaid.
std::vector<PictureTime> picturesAt(const std::vector<double>& ticks) {
  std::vector<PictureTime> pictures;
  for (const double tick : ticks) pictures.push_back({std::llround(tick), 0});
  return pictures;
}

std::vector<double> steps(double start, double step, int count) {
  std::vector<double> times;
  for (int i = 0; i < count; ++i) times.push_back(start + i * step);
  return times;
}

TEST(ClipTiming, AConstantRateIsReadThroughAClockOfMilliseconds) {
  const ClipTiming timing = timingOf(picturesAt(steps(500, 1001.0 / 30, 300)), {0.001, {}, {}});
  EXPECT_EQ(timing.rate, (FrameRate{30000, 1001}));
  EXPECT_FALSE(timing.isVariable);
  EXPECT_DOUBLE_EQ(timing.start, 0.5);
  EXPECT_NEAR(timing.seconds, 10.01, 0.001);
}

TEST(ClipTiming, TheRateThatMostPicturesKeepIsTakenAndTheLengthStays) {
  // Two seconds at 24, then one at 60: neither the average nor the rate that fits all of them.
  std::vector<double> times = steps(0, 5, 48);
  const std::vector<double> fast = steps(240, 2, 60);
  times.insert(times.end(), fast.begin(), fast.end());
  const ClipTiming mixed =
      timingOf(picturesAt(times), {1.0 / 120, FrameRate{120, 1}, FrameRate{36, 1}});
  EXPECT_EQ(mixed.rate, (FrameRate{60, 1}));
  EXPECT_TRUE(mixed.isVariable);
  EXPECT_NEAR(mixed.seconds, 3, 1e-9);

  // A screen recording that stands still for a while, and on its last picture.
  std::vector<PictureTime> screen = picturesAt(steps(0, 33.3667, 20));
  screen.push_back({5000, 2000});
  const ClipTiming held = timingOf(screen, {0.001, FrameRate{1000, 1}, FrameRate{3, 1}});
  EXPECT_EQ(held.rate, (FrameRate{30000, 1001}));
  EXPECT_DOUBLE_EQ(held.seconds, 7);
}

TEST(ClipTiming, JitterOfAPhoneCountsAsAConstantRate) {
  std::vector<PictureTime> pictures;
  for (int i = 0; i < 100; ++i) pictures.push_back({i * 3000 + i * 7 % 5 * 20, 0});
  std::swap(pictures[4], pictures[5]);  // as stored with pictures that depend on later ones
  const ClipTiming timing = timingOf(pictures, {1.0 / 90000, FrameRate{30, 1}, {}});
  EXPECT_EQ(timing.rate, (FrameRate{30, 1}));
  EXPECT_FALSE(timing.isVariable);
}

}  // namespace
