// Emitters that take their shape from the input or from a mask: rasters, placement with retries,
// and long outlines against a plain walk.
#include <cmath>
#include <map>
#include <vector>

#include "engine/alpha_source.h"
#include "engine/contour_emitter.h"
#include "engine/emission.h"
#include "engine/mask_outline.h"
#include "engine/numbers.h"
#include "engine/trigonometry.h"
#include "support.h"

namespace {

using brisel::ContourEmitter;
using brisel::EmitterPoint;
using brisel::MaskOutline;
using brisel::Particle;
using brisel::PointF;
using brisel::RandomGenerator;
using brisel::RenderSettings;

TEST(AlphaSource, RastersReadTheInputInsideItsOwnBounds) {
  for (const bool deep : {false, true}) {
    unit::Frame input(3, 2, deep);
    unit::Dice dice(5);
    input.fill(dice);
    RenderSettings s;
    s.frameWidth = 5;
    s.frameHeight = 4;
    s.deepColor = deep;
    input.becomeInputOf(s);
    const auto map = brisel::buildSourceIntensityMap(s);
    const auto mask = brisel::buildAlphaMask(s);
    for (int y = 0; y < 4; ++y) {
      for (int x = 0; x < 5; ++x) {
        const auto channel = [&](int c) { return x < 3 && y < 2 ? input.channel(x, y, c) : 0; };
        const bool visible = channel(0) != 0;
        const float mean = static_cast<float>(channel(1) + channel(2) + channel(3)) / 3.0f;
        const auto i = static_cast<std::size_t>(y * 5 + x);
        EXPECT_EQ(map[i], !visible ? 0.0f : deep ? mean / brisel::kDeepPerByte : mean);
        EXPECT_EQ(mask[i], visible ? 255 : 0);
      }
    }
  }
}

// Every attempt draws the direction (2), the point (2) and then, found or not, all the rest: random
// factor, size, rays, angle, colour (3) and value.
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
  s.sourceIntensityMap = map.data();
  const brisel::Emitter emitter;
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

/// The edge and the share of it that lies ahead, by walking along the edges.
std::pair<std::size_t, float> walk(const ContourEmitter& contour, float target) {
  float sum = 0.0f;
  std::size_t taken = 0;
  while (taken < contour.edges.size() && sum < target) sum += contour.edges[taken++].length;
  if (taken == 0) return {0, 1.0f};
  const float length = contour.edges[taken - 1].length;
  const float ahead = length == 0.0f ? 0.0f : (sum - target) / length;
  return {taken - 1, ahead < 0.0f || ahead > 1.0f ? 1.0f : ahead};
}

TEST(ContourEmitter, AnEmptyMaskGivesTheFrameBorder) {
  const std::vector<std::uint8_t> mask(40 * 20, 0);
  const ContourEmitter contour = brisel::buildContourEmitter(40, 20, mask.data(), 1.0f);
  EXPECT_EQ(contour.lengthBefore.back(), 120.0f);
  const EmitterPoint start = evaluateContour(contour, 0.0f);
  EXPECT_EQ(start.x, 0.0f);
  EXPECT_EQ(start.y, 0.0f);
  EXPECT_EQ(start.tangentAngle, brisel::arcTangent(1.0f) + brisel::kPi / 2.0f);
  const EmitterPoint right = evaluateContour(contour, 50.0f / 120.0f);
  EXPECT_EQ(right.x, 39.0f);
  EXPECT_NEAR(right.y, 9.5f, 1e-3f);
}

TEST(ContourEmitter, TracedShapesEqualAPlainWalkAndNormalsPointOut) {
  std::vector<std::uint8_t> mask(200 * 120, 0);
  for (int i = 0; i < 200 * 120; ++i) {
    const int x = i % 200, y = i / 200;
    const bool disc = std::hypot(x - 60, y - 60) < 40;
    const bool square = x >= 130 && x < 170 && y >= 30 && y < 70;
    mask[static_cast<std::size_t>(i)] = disc || square ? 255 : 0;
  }
  const ContourEmitter contour = brisel::buildContourEmitter(200, 120, mask.data(), 1.0f);
  ASSERT_GT(contour.edges.size(), 8u);
  const auto ends = [&](const brisel::ContourEdge& edge) {
    return std::pair{contour.vertices[static_cast<std::size_t>(edge.first)],
                     contour.vertices[static_cast<std::size_t>(edge.second)]};
  };
  for (const brisel::ContourEdge& edge : contour.edges) {
    const auto [a, b] = ends(edge);
    const float x = (a.x + b.x) / 2.0f + 3.0f * edge.normalX;
    const float y = (a.y + b.y) / 2.0f + 3.0f * edge.normalY;
    const auto at = static_cast<std::size_t>(static_cast<int>(y) * 200 + static_cast<int>(x));
    EXPECT_EQ(mask[at], 0) << "three pixels along the normal lies outside";
  }
  // A vertex keeps the mean of what it had and each further edge's normal.
  std::map<std::int32_t, PointF> normals;
  for (const brisel::ContourEdge& edge : contour.edges) {
    for (const std::int32_t end : {edge.first, edge.second}) {
      const auto [normal, isFirst] = normals.try_emplace(end, PointF{edge.normalX, edge.normalY});
      PointF& n = normal->second;
      if (!isFirst) n = {(n.x + edge.normalX) / 2.0f, (n.y + edge.normalY) / 2.0f};
    }
  }
  for (int i = 0; i <= 1000; ++i) {
    const float t = static_cast<float>(i) / 1000.0f;
    const auto [k, ahead] = walk(contour, t * contour.lengthBefore.back());
    const auto [a, b] = ends(contour.edges[k]);
    const EmitterPoint p = evaluateContour(contour, t);
    ASSERT_EQ(p.x, ahead * a.x + (1.0f - ahead) * b.x) << "t " << t;
    ASSERT_EQ(p.y, ahead * a.y + (1.0f - ahead) * b.y) << "t " << t;
    const PointF na = normals[contour.edges[k].first], nb = normals[contour.edges[k].second];
    const float nx = ahead * na.x + (1.0f - ahead) * nb.x;
    const float ny = ahead * na.y + (1.0f - ahead) * nb.y;
    float angle = ny < 0.0f ? -brisel::kPi / 2.0f : brisel::kPi / 2.0f;
    if (nx != 0.0f) angle = brisel::arcTangent(ny / nx) + (nx < 0.0f ? brisel::kPi : 0.0f);
    ASSERT_EQ(p.tangentAngle, angle + brisel::kPi / 2.0f) << "t " << t;
    ASSERT_EQ(p.dirX, brisel::cosine(p.tangentAngle));
    ASSERT_EQ(p.dirY, brisel::sine(p.tangentAngle));
  }
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
  unit::Dice dice(71);
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
      const PointF d = bezierDerivative(curve, u);
      if (std::isnan(d.x) || std::isnan(d.y)) continue;
      float angle = brisel::kPi / 2.0f;
      if (d.x != 0.0f) angle = brisel::arcTangent(d.y / d.x) + (d.x < 0.0f ? brisel::kPi : 0.0f);
      ASSERT_EQ(p.tangentAngle, angle);
      ASSERT_EQ(p.dirX, brisel::cosine(angle));
    }
  }
}

}  // namespace
