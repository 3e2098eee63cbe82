// Paths, births, steps and motion in numbers worked out by hand. Whole populations are in the known
// frames.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <tuple>
#include <vector>

#include "core/numbers.h"
#include "engine/emission.h"
#include "engine/emitter.h"
#include "engine/simulation.h"

namespace {

using namespace brisel;

RenderSettings lineFrom(PointF start, PointF end) {
  RenderSettings s;
  s.frameWidth = 100;
  s.frameHeight = 50;
  s.standardPath = StandardPath::Line;
  s.start = start;
  s.controlEnd = end;
  s.orientation = Orientation::Along;
  return s;
}

TEST(Path, CompletenessAndShiftChooseThePartThatEmits) {
  struct Case {
    float completeness, shift;
    float atStart, atHalf;  // percent of the way
  };
  for (const auto& [completeness, shift, atStart, atHalf] : {Case{0.5f, 0, 0, 25},
                                                             {1.5f, 0, 50, 75},
                                                             {2.25f, 0, 0, 12.5f},
                                                             {-0.5f, 0, 100, 75},
                                                             {-1.6f, 0, 40, 20},
                                                             {-2.4f, 0, 100, 80},
                                                             {1, 0.25f, 25, 75},
                                                             {1, 0.75f, 75, 25},
                                                             {1, -0.25f, 75, 25},
                                                             {1, -1.25f, 75, 25},
                                                             {1, 7.9f, 90, 40},
                                                             {-0.5f, -0.3f, 70, 45}}) {
    RenderSettings s = lineFrom({0, 0}, {100, 0});
    s.completenessOfPath = completeness;
    s.completenessFraction = completeness == 1 ? 1 : fraction(completeness);
    s.completenessParity = completeness == 1 ? 0 : truncToInt(completeness) % 2;
    s.shiftOfPath = shift;
    SCOPED_TRACE(testing::Message() << completeness << " shifted by " << shift);
    EXPECT_NEAR(emitterPoint(s, prepareEmitter(s), 0.0f).x, atStart, 1e-3);
    EXPECT_NEAR(emitterPoint(s, prepareEmitter(s), 0.5f).x, atHalf, 1e-3);
  }
}

TEST(Path, TangentsPointAlongTheWay) {
  for (const double turn : {0.0, 0.1, 0.25, 0.4, 0.5, 0.6, 0.75, 0.9}) {
    const double angle = turn * 2 * kPi;
    const PointF end = {static_cast<float>(50 + 40 * std::cos(angle)),
                        static_cast<float>(50 + 40 * std::sin(angle))};
    for (const auto path : {StandardPath::Line, StandardPath::Polyline, StandardPath::Bezier}) {
      SCOPED_TRACE(testing::Message() << turn << " turns, path " << static_cast<int>(path));
      RenderSettings s = lineFrom({50, 50}, end);
      s.standardPath = path;
      s.controlStart = {50 + (end.x - 50) * 0.2f, 50 + (end.y - 50) * 0.2f};
      s.end = {50 + (end.x - 50) * 0.7f, 50 + (end.y - 50) * 0.7f};
      const EmitterPoint p = emitterPoint(s, prepareEmitter(s), 0.5f);
      EXPECT_NEAR(std::cos(p.tangentAngle), std::cos(angle), 1e-4);
      EXPECT_NEAR(std::sin(p.tangentAngle), std::sin(angle), 1e-4);
      EXPECT_NEAR(p.dirX, std::cos(angle), 1e-4);
      EXPECT_NEAR(p.dirY, std::sin(angle), 1e-4);
      EXPECT_NEAR(std::hypot(p.x - 50, p.y - 50), 20, 0.1) << "half of the length";
    }
  }
}

TEST(Path, ACircleRunsClockwiseFromItsControlPoint) {
  for (const PointF through : {PointF{50, 30}, {70, 50}, {50, 70}, {30, 50}, {62, 34}}) {
    RenderSettings s = lineFrom({50, 50}, {});
    s.standardPath = StandardPath::Circle;
    s.controlStart = through;
    const PointF arm = {through.x - 50, through.y - 50};
    const EmitterPoint first = emitterPoint(s, prepareEmitter(s), 0.0f);
    EXPECT_NEAR(first.x, through.x, 1e-3);
    EXPECT_NEAR(first.y, through.y, 1e-3);
    const EmitterPoint quarter = emitterPoint(s, prepareEmitter(s), 0.25f);
    EXPECT_NEAR(quarter.x, 50 - arm.y, 1e-3);
    EXPECT_NEAR(quarter.y, 50 + arm.x, 1e-3);
    EXPECT_NEAR(std::cos(quarter.tangentAngle) * 20, -arm.x, 1e-3);
    EXPECT_NEAR(std::sin(quarter.tangentAngle) * 20, -arm.y, 1e-3);
    EXPECT_NEAR(quarter.dirX * 20, arm.x, 1e-3) << "against the turn";
    EXPECT_NEAR(quarter.dirY * 20, arm.y, 1e-3);
  }
}

Particle born(const RenderSettings& s) {
  RandomGenerator random;
  const Emitter emitter = prepareEmitter(s);
  Particle p{};
  initialiseParticle({s, emitter, random, 0.0f}, p, 0.0f);
  return p;
}

TEST(Birth, AddedAnglesTurnClockwiseFromThePathsOwn) {
  RenderSettings s = lineFrom({90, 25}, {10, 25});  // leftwards
  s.orientation = Orientation::AddAngle;
  s.initialSpeed = 3.0f;
  EXPECT_NEAR(born(s).velocityX, -3, 1e-5);
  s.direction = kPi / 2.0f;  // clockwise from the left is up
  EXPECT_NEAR(born(s).velocityX, 0, 1e-5);
  EXPECT_NEAR(born(s).velocityY, -3, 1e-5);
}

TEST(Birth, AZeroLifeLastsOneStep) {
  EXPECT_EQ(born(lineFrom({0, 0}, {9, 0})).lifeTime, 1.0f);
}

TEST(Birth, DispersionNeverGoesBelowZero) {
  RenderSettings s = lineFrom({0, 0}, {9, 0});
  s.size = 10.0f;
  s.width = 2.0f;
  s.value = 0.1f;
  s.sizeDispersion = 4.0f;
  s.valueDispersion = 1.0f;
  const Emitter emitter = prepareEmitter(s);
  RandomGenerator random;
  float size = 1.0f, rayWidth = 1.0f, value = 1.0f;  // the least of them
  for (int i = 0; i < 100; ++i) {
    Particle p{};
    initialiseParticle({s, emitter, random, 0.0f}, p, 0.0f);
    size = std::min(size, p.size);
    rayWidth = std::min(rayWidth, p.rayWidth);
    value = std::min(value, p.value);
  }
  EXPECT_TRUE(size == 0.0f && rayWidth == 0.0f && value == 0.0f);
}

class Population : public testing::Test {
 protected:
  Population() {
    s.maximumNumberOfStars = 20;
    s.terminateType = TerminateType::TimeLimited;
    s.timeLife = 1000.0f;
  }

  std::int32_t starsAfterStep() {
    simulationStep(s, prepareEmitter(s), random, population);
    population.stepIndex += 1.0f;
    return population.starCount;
  }

  std::vector<Particle> stars = std::vector<Particle>(20);
  StarPopulation population{stars.data(), 20, 0, 0.0f, 0.0f};
  RandomGenerator random;
  RenderSettings s = lineFrom({20, 25}, {80, 25});
};

TEST_F(Population, FractionsOfAStarAddUpToStars) {
  s.intensity = 0.4f;
  for (const int count : {0, 0, 1, 1, 2, 2, 2, 3}) EXPECT_EQ(starsAfterStep(), count);
  EXPECT_EQ(stars[2].birthTime, 7.0f);
}

TEST_F(Population, BirthsAreSpreadOverThreeQuartersOfAStep) {
  s.intensity = 2.5f;
  EXPECT_EQ(starsAfterStep(), 2);
  EXPECT_EQ(starsAfterStep(), 5);
  const float times[] = {0.45f, 0.15f, 1.6f, 1.3f, 1.0f};  // 1.5, 0.5; 2, 1 and 0 are left over
  for (std::size_t i = 0; i < 5; ++i) EXPECT_FLOAT_EQ(stars[i].birthTime, times[i]);
  EXPECT_FLOAT_EQ(stars[2].age, -0.6f);
}

TEST_F(Population, AFullArrayKeepsOnlyTheFractionOwed) {
  s.intensity = 15.25f;
  EXPECT_EQ(starsAfterStep(), 15);
  EXPECT_EQ(starsAfterStep(), 20);
  EXPECT_EQ(population.emissionAccumulator, 0.5f);
}

TEST_F(Population, EveryDeathAddsOneStepsEmission) {
  s.intensity = 3.0f;
  s.timeLife = 1.0f;
  for (const int count : {3, 6, 9}) EXPECT_EQ(starsAfterStep(), count);
  EXPECT_EQ(starsAfterStep(), 9 - 3 + 3 * 3 + 3) << "three deaths and a step";
  EXPECT_EQ(stars[6].birthTime, 3 + 0.75f * 11 / 3);
}

TEST_F(Population, AtOneStarAStepOrLessBirthsAreNotSpread) {
  s.intensity = 1.0f;
  s.timeLife = 1.0f;
  for (const int count : {1, 2, 3, 4}) EXPECT_EQ(starsAfterStep(), count);
  EXPECT_EQ(stars[2].birthTime, 3.0f) << "one of two in the step of the first death";
}

TEST_F(Population, StarsLeaveFiftyPixelsBeyondTheFrame) {
  Particle p{};
  p.terminateType = TerminateType::Infinity;
  p.age = 9.0f;
  for (const auto& [x, y, dead] : {std::tuple{-50.0f, -50.0f, false},
                                   {150.0f, 100.0f, false},
                                   {-50.1f, 0.0f, true},
                                   {150.1f, 0.0f, true},
                                   {0.0f, -50.1f, true},
                                   {0.0f, 100.1f, true}}) {
    p.x = x;
    p.y = y;
    EXPECT_EQ(isDead(s, p), dead) << x << ", " << y;
  }
  p.x = p.y = 0.0f;
  p.lifeTime = 9.0f;
  p.terminateType = TerminateType::TimeLimited;
  EXPECT_FALSE(isDead(s, p)) << "at the end of its life";
  p.age = 9.1f;
  EXPECT_TRUE(isDead(s, p));
}

// Of age 2, at speed (3, 4) from the middle; a frequency of a quarter turn puts the cosine to -1
// and the sine to 0.
TEST(Motion, AddsSpeedWindGravityAndOscillation) {
  RenderSettings s = lineFrom({}, {});
  Particle p{};
  p.startX = p.startY = 0.5f;
  p.velocityX = 3.0f;
  p.velocityY = 4.0f;
  p.birthTime = 5.0f;
  p.randomFactor = -0.5f;
  s.windX = 1.0f;
  s.windY = -2.0f;
  s.gravity = 0.25f;
  s.amplitudeOfOscillation = 2.0f;
  s.frequencyOfOscillation = kPi / 2.0f;
  const PointF straight = {50 + 2 * (3 + 1), 25 + 2 * (4 - 2) + 1};
  const PointF added[] = {{0, 0}, {4, -3}, {-8, 6}, {-3, 3}, {6, -6}};
  for (int mode = 1; mode <= 5; ++mode) {
    s.oscillation = static_cast<Oscillation>(mode);
    updateParticle(s, 7.0f, p);
    EXPECT_NEAR(p.x, straight.x + added[mode - 1].x, 1e-4) << "mode " << mode;
    EXPECT_NEAR(p.y, straight.y + added[mode - 1].y, 1e-4) << "mode " << mode;
  }
}

}  // namespace
