// How a star is born: every field, and where the generator stands afterwards.
#include "engine/emission.h"
#include "random_settings.h"
#include "reference/simulation.h"

namespace {

using brisel::Orientation;
using brisel::Particle;
using brisel::RandomGenerator;
using brisel::RenderSettings;
using unit::Dice;

Particle born(const RenderSettings& settings, RandomGenerator& random, float stepIndex = 0.0f,
              float birthTime = 0.0f) {
  const brisel::Emitter emitter = prepareEmitter(settings);
  Particle p{};
  initialiseParticle({settings, emitter, random, stepIndex}, p, birthTime);
  return p;
}

RenderSettings pointEmitter() {
  RenderSettings s;
  s.frameWidth = 200;
  s.frameHeight = 100;
  s.standardPath = brisel::StandardPath::Point;
  s.start = {50.0f, 50.0f};
  s.orientation = Orientation::Direct;
  s.timeLife = 20.0f;
  return s;
}

TEST(Birth, EveryFieldIsTheReferences) {
  for (std::uint32_t trial = 0; trial < 3000 && !HasFailure(); ++trial) {
    Dice dice(2000 + trial);
    SCOPED_TRACE(testing::Message() << "stream " << 2000 + trial);
    unit::Frame input(37, 23, dice.coin());
    input.fill(dice);
    const RenderSettings s = unit::anyEmitter(dice, input);
    RandomGenerator random;
    random.seedRandom(dice.bits());
    reference::Generator generator{random.state()};
    for (float birth : {7.0f, 7.3f}) {
      const Particle p = born(s, random, 7.0f, birth);
      const Particle q = reference::bornParticle(s, generator, 7.0f, birth);
      EXPECT_EQ(unit::firstDifference(p, q), -1);
      EXPECT_EQ(random.state(), generator.state);
    }
  }
}

// The first draws after a reset are 38, 7719, 21238, 2437, 8855, 11797, 8365, 32285, 10450: place,
// random factor, size, rays, angle, red, green, blue, value.
TEST(Birth, FirstStarAfterAReset) {
  RenderSettings s = pointEmitter();
  s.direction = 0.0f;
  s.directionCos = 1.0f;
  s.initialSpeed = 3.0f;
  s.size = 100.0f;
  s.width = 10.0f;
  s.sizeDispersion = 1.0f;
  s.raysCount = 12;
  s.raysCountDispersion = 1.0f;
  s.angle = 30.0f;
  s.angleDispersion = 1.0f;
  s.colorOfParticles = {10, 200, 100};
  s.colorDispersion = 1.0f;
  s.value = 0.5f;
  s.valueDispersion = 1.0f;
  RandomGenerator random;
  const Particle p = born(s, random, 4.0f, 4.25f);
  EXPECT_FLOAT_EQ(p.startX, 50.038f / 200.0f);
  EXPECT_FLOAT_EQ(p.startY, 0.5f);
  EXPECT_FLOAT_EQ(p.randomFactor, 0.719f);
  EXPECT_FLOAT_EQ(p.velocityX, 3.0f);
  EXPECT_FLOAT_EQ(p.velocityY, 0.0f);
  EXPECT_FLOAT_EQ(p.size, 173.8f / 200.0f);
  EXPECT_FLOAT_EQ(p.rayWidth, 17.38f / 200.0f);
  EXPECT_EQ(p.raysCount, 12 - 8);           // -0.563 * 15 is -8.445
  EXPECT_FLOAT_EQ(p.angle, 30.0f - 5.22f);  // -145 * 0.036
  EXPECT_EQ(p.colorR, 10 + 203);            // 797 * 0.255 is 203.235
  EXPECT_EQ(p.colorG, 38);                  // 200 - 635 * 0.255 is 38.075
  EXPECT_EQ(p.colorB, 0);                   // 100 - 715 * 0.255 is below 0
  EXPECT_FLOAT_EQ(p.value, 0.25f);
  EXPECT_FLOAT_EQ(p.lifeTime, 20.0f);
  EXPECT_FLOAT_EQ(p.age, -0.25f);
}

TEST(Birth, DrawsAsOftenAsItsSettingsAsk) {
  struct Case {
    const char* name;
    int draws;
    void (*choose)(RenderSettings&);
  };
  const Case cases[] = {
      {"nothing dispersed", 9, [](RenderSettings&) {}},
      {"random type", 10, [](RenderSettings& s) { s.type = brisel::StarType::Random; }},
      {"life", 10, [](RenderSettings& s) { s.timeLifeDispersion = 0.1f; }},
      {"all directions", 11,
       [](RenderSettings& s) { s.orientation = Orientation::RandomAllDirections; }},
      {"speed", 10, [](RenderSettings& s) { s.speedDispersion = 0.1f; }},
      {"either side", 10,
       [](RenderSettings& s) { s.orientation = Orientation::PerpendicularlyRandom; }},
      {"direction", 10, [](RenderSettings& s) { s.directionDispersion = 0.1f; }},
      {"last colour", 12,
       [](RenderSettings& s) { s.terminateColorSchema = brisel::TerminateColorSchema::Random; }},
      {"fate", 10, [](RenderSettings& s) { s.terminateType = brisel::TerminateType::Mixt; }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    RenderSettings s = pointEmitter();
    c.choose(s);
    RandomGenerator random;
    RandomGenerator counter;
    for (int star = 0; star < 5; ++star) born(s, random);
    for (int draw = 0; draw < 5 * c.draws; ++draw) counter.nextRandom();
    EXPECT_EQ(random.state(), counter.state());
  }
}

TEST(Birth, RandomChoicesStayWithinTheirKinds) {
  RenderSettings s = pointEmitter();
  s.type = brisel::StarType::Random;
  s.terminateType = brisel::TerminateType::Mixt;
  s.terminateColorSchema = brisel::TerminateColorSchema::Random;
  s.raysCountDispersion = 10.0f;
  std::uint32_t types = 0;
  std::uint32_t fates = 0;
  RandomGenerator random;
  for (int star = 0; star < 4000; ++star) {
    s.raysCount = star % 2 == 0 ? 2 : 5;
    const Particle p = born(s, random);
    types |= 1u << static_cast<int>(p.starType);
    fates |= 1u << static_cast<int>(p.terminateType);
    EXPECT_GE(p.raysCount, star % 2 == 0 ? 2 : 3);
    EXPECT_LE(std::max({p.terminateColorR, p.terminateColorG, p.terminateColorB}), 253);
  }
  EXPECT_EQ(types, 0b111'1111'1110u) << "every type but dots";
  EXPECT_EQ(fates, 0b1'1111'1100u) << "every fate but none";
}

}  // namespace
