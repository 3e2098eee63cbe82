// Emitters that take their shape from the input or from a mask: placement with retries, the border
// of a frame without outlines, and long masks against a plain walk.
#include <cmath>
#include <vector>

#include "core/numbers.h"
#include "core/trigonometry.h"
#include "engine/contour_emitter.h"
#include "engine/emission.h"
#include "engine/mask_outline.h"
#include "tests/support/dice.h"

#include <gtest/gtest.h>

namespace {

using brisel::ContourEmitter;
using brisel::EmitterPoint;
using brisel::MaskOutline;
using brisel::Particle;
using brisel::PointF;
using brisel::RandomGenerator;
using brisel::RenderSettings;

// Every attempt takes numbers for direction (2), point (2) and, found or not, all the rest: random
// factor, size, rays, angle, color (3) and value.
TEST(AlphaSource, AStarThatFindsNoVisiblePixelTriesElevenTimes) {
  constexpr int kDrawsPerAttempt = 12;
  RenderSettings s;
  s.frameWidth = 100;
  s.frameHeight = 50;
  s.standardPath = brisel::StandardPath::SourceAsRasterMask;
  s.orientation = brisel::Orientation::Along;
  s.timeLife = 35.0f;
  s.terminateType = brisel::TerminateType::Fade;
  std::vector<float> map(5000);
  for (std::size_t i = 0; i < map.size(); ++i) map[i] = i % 100 < 12 ? 85.0f : 0.0f;
  brisel::Emitter emitter;
  emitter.sourceIntensityMap = map.data();
  RandomGenerator random;
  int late = 0, lost = 0;
  for (int i = 0; i < 400; ++i) {
    RandomGenerator before = random;
    Particle p{};
    initialiseParticle({s, emitter, random, 0.0f}, p, 0.0f);
    int attempts = 0;
    bool found = false;
    for (RandomGenerator probe = before; !found && attempts < 11; ++attempts) {
      probe.nextRandom();
      probe.nextRandom();
      found = std::trunc(probe.unit() * 100.0f) < 12.0f;
      probe.unit();
    }
    EXPECT_EQ(p.lifeTime, found ? 35.0f : brisel::kFailedPlacement);
    EXPECT_TRUE(!found || p.startX < 0.12f);
    for (int d = attempts * kDrawsPerAttempt; d > 0; --d) before.nextRandom();
    ASSERT_EQ(random.state(), before.state());
    late += found && attempts > 1;
    lost += !found;
  }
  EXPECT_GT(late, 50);
  EXPECT_GT(lost, 50);
}

TEST(ContourEmitter, AnEmptyMaskGivesTheFrameBorder) {
  const std::vector<std::uint8_t> mask(48 * 16, 0);
  const ContourEmitter contour =
      brisel::buildContourEmitter({mask.data(), 48, 16, 48, brisel::PixelFormat::Mask8}, 1.0f);
  EXPECT_EQ(contour.lengthBefore.back(), 128.0f);
  const EmitterPoint start = evaluateContour(contour, 0.0f);
  EXPECT_EQ(start.x, 0.0f);
  EXPECT_EQ(start.y, 0.0f);
  EXPECT_EQ(start.tangentAngle, brisel::arcTangent(1.0f) + brisel::kPi / 2.0f);
  const EmitterPoint right = evaluateContour(contour, 56.0f / 128.0f);
  EXPECT_EQ(right.x, 47.0f);
  EXPECT_EQ(right.y, 7.5f);
  const EmitterPoint bottom = evaluateContour(contour, 88.0f / 128.0f);
  EXPECT_EQ(bottom.x, 23.5f);
  EXPECT_EQ(bottom.tangentAngle, 0.0f) << "its normal points straight up";
}

/// The segment and the local parameter, by walking along the shares.
std::pair<std::size_t, float> walk(const MaskOutline& outline, float t) {
  float sum = 0.0f;
  for (std::size_t k = 0; k < outline.vertices.size(); ++k) {
    const float share = outline.segmentShare[k];
    if (t <= sum + share) return {k, (t - sum) / share};
    sum += share;
  }
  return {0, (t - sum) / outline.segmentShare[0]};
}

TEST(MaskOutline, LongOutlinesEqualAPlainWalk) {
  tests::Dice dice(71);
  const auto point = [&] { return PointF{dice.real(0, 500), dice.real(0, 500)}; };
  for (int round = 0; round < 40; ++round) {
    std::vector<brisel::MaskVertex> vertices;
    for (int i = dice.integer(2, 800); i > 0; --i) {
      vertices.push_back({point(), point(), point()});
      if (dice.integer(0, 9) == 0) vertices.push_back(vertices.back());  // segments without length
      if (dice.integer(0, 3000) == 0) vertices.back().out.x = std::nanf("");
    }
    const MaskOutline outline = brisel::buildMaskOutline(vertices, dice.coin(), dice.coin());
    for (int i = 0; i < 50; ++i) {
      const float t = dice.real(0.001f, 0.999f);
      const auto [k, local] = walk(outline, t);
      const brisel::CubicBezier curve = outline.segment(k);
      const EmitterPoint p = evaluateMaskOutline(outline, t);
      const float u = bezierParameterAt(curve, bezierLength(curve), local);
      const PointF expected = bezierPoint(curve, u);
      ASSERT_TRUE(p.x == expected.x || (std::isnan(p.x) && std::isnan(expected.x)))
          << "round " << round << ", t " << t;
      ASSERT_TRUE(p.y == expected.y || (std::isnan(p.y) && std::isnan(expected.y)));
    }
  }
}

}  // namespace
