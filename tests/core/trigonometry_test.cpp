#include "core/trigonometry.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>

#include "tests/support/dice.h"

namespace {

// The system's library serves as the measure, within the range that it is good for.
#if defined(_WIN32)
constexpr float kLargestAngle = 100.0f;
#else
constexpr float kLargestAngle = std::numeric_limits<float>::max();
#endif

float rounded(double value) {
  return static_cast<float>(value);
}

TEST(Trigonometry, RoundsTheDoubleFunctionsOnce) {
  tests::Dice dice(60);
  for (int i = 0; i < 1000000; ++i) {
    const auto x = std::bit_cast<float>(dice.bits());
    const float y = dice.coin() ? std::bit_cast<float>(dice.bits()) : x * dice.real(-9.0f, 9.0f);
    if (std::isnan(x) || std::isnan(y)) continue;
    ASSERT_EQ(brisel::arcTangent(x), rounded(std::atan(double{x}))) << x;
    ASSERT_EQ(brisel::arcTangent2(y, x), rounded(std::atan2(double{y}, double{x})))
        << y << ", " << x;
    for (const float angle : {x, dice.real(-20.0f, 20.0f)}) {
      if (std::abs(angle) > kLargestAngle) continue;
      ASSERT_EQ(brisel::sine(angle), rounded(std::sin(double{angle}))) << angle;
      ASSERT_EQ(brisel::cosine(angle), rounded(std::cos(double{angle}))) << angle;
    }
  }
}

TEST(Trigonometry, ReducesHugeAnglesExactly) {
  EXPECT_EQ(brisel::sine(0x1p100f), -0.872183621f);
  EXPECT_EQ(brisel::cosine(0x1p100f), 0.489178658f);
  EXPECT_EQ(brisel::sine(std::numeric_limits<float>::max()), -0.521876514f);
  EXPECT_EQ(brisel::cosine(std::numeric_limits<float>::max()), 0.853021026f);
  EXPECT_TRUE(std::isnan(brisel::sine(HUGE_VALF)));
  EXPECT_TRUE(std::isnan(brisel::cosine(-HUGE_VALF)));
}

TEST(Trigonometry, KeepsTheSignOfZeroAndTheQuadrant) {
  constexpr float kHalfPi = 1.57079633f, kPi = 3.14159265f;
  EXPECT_TRUE(std::signbit(brisel::sine(-0.0f)));
  EXPECT_TRUE(std::signbit(brisel::arcTangent(-0.0f)));
  EXPECT_EQ(brisel::arcTangent2(0.0f, -0.0f), kPi);
  EXPECT_EQ(brisel::arcTangent2(-0.0f, -2.0f), -kPi);
  EXPECT_EQ(brisel::arcTangent(-HUGE_VALF), -kHalfPi);
  EXPECT_EQ(brisel::arcTangent2(HUGE_VALF, -HUGE_VALF), 0.75f * kPi);
  EXPECT_EQ(brisel::arcTangent2(1.0f, HUGE_VALF), 0.0f);
  EXPECT_TRUE(std::isnan(brisel::arcTangent2(1.0f, std::nanf(""))));
}

}  // namespace
