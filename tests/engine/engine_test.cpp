// Births and deaths in numbers worked out by hand. Paths, motion and whole populations are in the
// known frames.
#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>
#include <vector>

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

TEST(Birth, AZeroLifeLastsOneStep) {
  const RenderSettings s = lineFrom({0, 0}, {9, 0});
  RandomGenerator random;
  Particle p{};
  initialiseParticle({s, prepareEmitter(s), random, 0.0f}, p, 0.0f);
  EXPECT_EQ(p.lifeTime, 1.0f);
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

}  // namespace
