// Where stars start, how they are born and what a step makes of them: all as the reference has it.
#include <vector>

#include "engine/emission.h"
#include "engine/emitter.h"
#include "engine/simulation.h"
#include "random_settings.h"
#include "reference/simulation.h"

namespace {

using brisel::Particle;
using brisel::RenderSettings;
using unit::Dice;

TEST(Path, EveryPointIsTheReferences) {
  for (std::uint32_t trial = 0; trial < 5000 && !HasFailure(); ++trial) {
    Dice dice(6000 + trial);
    SCOPED_TRACE(testing::Message() << "stream " << 6000 + trial);
    unit::Frame input(37, 23, false);
    RenderSettings s = unit::anyEmitter(dice, input);
    // Legs without length, and paths without any.
    if (dice.integer(0, 7) == 0) s.controlStart = s.start;
    if (dice.integer(0, 7) == 0) s.end = s.controlEnd = s.controlStart;
    const float t = dice.oneOf({static_cast<float>(dice.integer(0, 999)) / 1000.0f, 0.0f, 0.999f});
    const brisel::EmitterPoint p = emitterPoint(s, prepareEmitter(s), t);
    const reference::PathPoint q = reference::emitterPoint(s, t);
    for (const auto& [module, reference] : {std::pair{p.x, q.x},
                                            {p.y, q.y},
                                            {p.dirX, q.dirX},
                                            {p.dirY, q.dirY},
                                            {p.tangentAngle, q.tangentAngle}}) {
      EXPECT_EQ(module, reference);
    }
  }
}

TEST(Birth, EveryFieldIsTheReferences) {
  for (std::uint32_t trial = 0; trial < 3000 && !HasFailure(); ++trial) {
    Dice dice(2000 + trial);
    SCOPED_TRACE(testing::Message() << "stream " << 2000 + trial);
    unit::Frame input(37, 23, dice.coin());
    input.fill(dice);
    const RenderSettings s = unit::anyEmitter(dice, input);
    const brisel::Emitter emitter = prepareEmitter(s);
    brisel::RandomGenerator random;
    random.seedRandom(dice.bits());
    reference::Generator generator{random.state()};
    for (float birth : {7.0f, 7.3f}) {
      Particle p{};
      initialiseParticle({s, emitter, random, 7.0f}, p, birth);
      EXPECT_EQ(unit::firstDifference(p, reference::bornParticle(s, generator, 7.0f, birth)), -1);
      EXPECT_EQ(random.state(), generator.state);
    }
  }
}

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

}  // namespace
