// One step after the other: who dies, who is born and when, and where everybody moves.
#include <vector>

#include "engine/motion.h"
#include "engine/simulation.h"
#include "random_settings.h"
#include "reference/simulation.h"

namespace {

using brisel::Particle;
using brisel::RenderSettings;
using unit::Dice;

/// A population of stars that stand still, driven step by step.
class Population {
 public:
  explicit Population(std::int32_t capacity) : stars_(static_cast<std::size_t>(capacity)) {
    settings.frameWidth = 100;
    settings.frameHeight = 100;
    settings.standardPath = brisel::StandardPath::Point;
    settings.start = {50, 50};
    settings.timeLife = 1000.0f;
    settings.maximumNumberOfStars = capacity;
    now.stars = stars_.data();
    now.capacity = capacity;
  }

  /// Takes a step; how many stars are alive after it.
  int step() {
    simulationStep(settings, prepareEmitter(settings), random, now);
    now.stepIndex += 1.0f;
    return now.starCount;
  }

  RenderSettings settings;
  brisel::RandomGenerator random;
  brisel::StarPopulation now;

 private:
  std::vector<Particle> stars_;
};

TEST(Population, EveryStepIsTheReferences) {
  for (std::uint32_t trial = 0; trial < 300 && !HasFailure(); ++trial) {
    Dice dice(20000 + trial);
    SCOPED_TRACE(testing::Message() << "stream " << 20000 + trial);
    unit::Frame input(90, 70, false);
    input.fill(dice);
    RenderSettings s = unit::anyEmitter(dice, input);
    std::vector<Particle> stars(50);
    brisel::StarPopulation population{stars.data(), 50, 0, 0.0f, 0.0f};
    brisel::RandomGenerator random;
    reference::Population expected{{}, 50, 0.0f, 0.0f};
    reference::Generator generator;
    for (int step = 0; step < 40 && !HasFailure(); ++step) {
      SCOPED_TRACE(testing::Message() << "step " << step);
      s.maximumNumberOfStars = dice.integer(0, 60);
      simulationStep(s, prepareEmitter(s), random, population);
      reference::simulationStep(s, generator, expected);
      population.stepIndex += 1.0f;
      expected.stepIndex += 1.0f;
      EXPECT_EQ(population.emissionAccumulator, expected.emissionAccumulator);
      EXPECT_EQ(random.state(), generator.state);
      ASSERT_EQ(static_cast<std::size_t>(population.starCount), expected.stars.size());
      for (std::size_t i = 0; i < expected.stars.size(); ++i) {
        EXPECT_EQ(unit::firstDifference(stars[i], expected.stars[i]), -1)
            << "star " << i << " at " << stars[i].x << ", " << stars[i].y;
      }
    }
  }
}

TEST(Population, FractionsAreSavedUp) {
  Population p(100);
  p.settings.intensity = 0.4f;
  const int alive[] = {0, 0, 1, 1, 2, 2, 2, 3};
  for (const int count : alive) EXPECT_EQ(p.step(), count);
  EXPECT_EQ(p.now.stars[0].birthTime, 2.0f);
  EXPECT_EQ(p.now.stars[2].birthTime, 7.0f);
}

TEST(Population, BirthsAreSpreadOverThreeQuartersOfAStep) {
  Population p(100);
  p.settings.intensity = 2.5f;
  EXPECT_EQ(p.step(), 2);
  EXPECT_EQ(p.step(), 5);
  const float births[] = {0.75f * 1.5f / 2.5f, 0.75f * 0.5f / 2.5f, 1.0f + 0.75f * 2.0f / 2.5f,
                          1.0f + 0.75f * 1.0f / 2.5f, 1.0f};
  for (int i = 0; i < 5; ++i) EXPECT_FLOAT_EQ(p.now.stars[i].birthTime, births[i]);
  EXPECT_FLOAT_EQ(p.now.stars[2].age, -0.6f);
}

TEST(Population, AFullHouseForgetsWholeStarsAndKeepsTheFraction) {
  Population p(3);
  p.settings.intensity = 2.25f;
  EXPECT_EQ(p.step(), 2);
  EXPECT_EQ(p.step(), 3);
  EXPECT_EQ(p.now.emissionAccumulator, 0.5f);
  EXPECT_EQ(p.step(), 3);
  EXPECT_EQ(p.now.emissionAccumulator, 0.75f);
  p.settings.maximumNumberOfStars = 0;
  EXPECT_EQ(p.step(), 3);
  EXPECT_EQ(p.now.emissionAccumulator, 0.0f);
}

TEST(Population, EveryDeathEarnsAStepsEmission) {
  Population p(10);
  p.settings.intensity = 4.0f;
  p.settings.terminateType = brisel::TerminateType::TimeLimited;
  p.step();
  const float factors[] = {p.now.stars[0].randomFactor, p.now.stars[3].randomFactor};
  p.settings.intensity = 0.25f;
  p.now.stars[1].lifeTime = p.now.stars[2].lifeTime = -5.0f;
  EXPECT_EQ(p.step(), 2) << "two neighbours go at once";
  EXPECT_EQ(p.now.emissionAccumulator, 0.75f);
  EXPECT_EQ(p.now.stars[0].randomFactor, factors[0]);
  EXPECT_EQ(p.now.stars[1].randomFactor, factors[1]);
}

TEST(Population, DeathIsPastTheMarginOrPastTheTime) {
  RenderSettings s;
  s.frameWidth = 200;
  s.frameHeight = 100;
  Particle p{};
  p.terminateType = brisel::TerminateType::TimeLimited;
  p.age = p.lifeTime = 5.0f;
  const auto deadAt = [&](float x, float y) {
    p.x = x;
    p.y = y;
    return isDead(s, p);
  };
  EXPECT_FALSE(deadAt(-50, -50));
  EXPECT_FALSE(deadAt(250, 150));
  EXPECT_TRUE(deadAt(-50.01f, 0));
  EXPECT_TRUE(deadAt(250.1f, 0));
  EXPECT_TRUE(deadAt(0, -50.01f));
  EXPECT_TRUE(deadAt(0, 150.1f));
  p.age = 5.001f;
  EXPECT_TRUE(deadAt(0, 0));
  p.terminateType = brisel::TerminateType::Infinity;
  EXPECT_FALSE(deadAt(0, 0));
}

TEST(Motion, WorkedNumbers) {
  RenderSettings s;
  s.frameWidth = 200;
  s.frameHeight = 100;
  Particle star{};
  star.startX = 0.5f;
  star.startY = 0.25f;
  star.velocityX = 3.0f;
  star.velocityY = -4.0f;
  star.randomFactor = -0.5f;
  star.birthTime = 2.0f;
  const auto at = [&](float step, float x, float y) {
    updateParticle(s, step, star);
    EXPECT_NEAR(star.x, x, 1e-4f);
    EXPECT_NEAR(star.y, y, 1e-4f);
  };
  at(12, 130, -15);
  at(1.5f, 98.5f, 27);  // before its birth, behind its place
  s.windX = 1.0f;
  s.gravity = 1.0f;
  at(12, 140, 85);
  s.windX = s.gravity = 0.0f;
  s.amplitudeOfOscillation = 2.0f;
  s.frequencyOfOscillation = 3.14159265f;  // ten steps are five turns, eleven half a turn more
  s.oscillation = brisel::Oscillation::Swing;
  at(12, 130 + 4, -15 + 3);
  at(13, 133 - 4, -19 - 3);
  s.oscillation = brisel::Oscillation::SwingSynchronous;
  at(12, 130 - 8, -15 - 6);
  s.oscillation = brisel::Oscillation::Round;
  at(12, 130 - 1 + 4, -15 + 3);
  s.oscillation = brisel::Oscillation::RoundSynchronous;
  at(12, 130 + 2 - 8, -15 - 6);
  s.frequencyOfOscillation = 3.14159265f / 20.0f;  // ten steps are a quarter turn
  at(12, 130 - 8, -15 + 2 - 6);
  s.oscillation = brisel::Oscillation::Round;  // backwards, with a negative radius
  at(12, 130 + 4, -15 + 1 + 3);
}

}  // namespace
