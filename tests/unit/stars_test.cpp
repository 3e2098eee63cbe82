// Whole frames of stars against the reference, and the few things a person can check by hand.
#include <vector>

#include "engine/random.h"
#include "render/elements.h"
#include "render/frame.h"
#include "support.h"

namespace {

using brisel::Particle;
using brisel::RenderSettings;
using brisel::StarType;
using brisel::TerminateType;
using unit::Dice;

constexpr std::int32_t kWidth = 80;
constexpr std::int32_t kHeight = 60;

template <class Enum>
Enum anyItem(Dice& dice, int least, int most) {
  return static_cast<Enum>(dice.integer(least, most));
}

RenderSettings anySettings(Dice& dice) {
  const auto sometimes = [&](float least, float most) {
    return dice.integer(0, 2) == 0 ? 0.0f : dice.real(least, most);
  };
  RenderSettings s;
  s.highQuality = dice.coin();
  s.type = dice.integer(0, 15) == 0 ? StarType::Dots : StarType::Random;
  s.halfSize = dice.real(0.0f, 20.0f);
  s.growUp = dice.oneOf({0.0f, 0.0f, 1.0f, -1.0f, 0.3f, -2.5f});
  s.timeFade = dice.oneOf({0.0f, 1.0f, -1.0f, 0.5f, -0.5f, 2.0f, -2.0f});
  s.timeOfExplode = dice.oneOf({0.0f, 0.75f, 2.0f, 0.2f});
  s.angleOscillation = anyItem<brisel::Oscillation>(dice, 1, 5);
  s.angleAmplitudeOfOscillation = sometimes(-30.0f, 30.0f);
  s.angleFrequencyOfOscillation = dice.real(0.0f, 2.0f);
  s.angleJittering = sometimes(0.0f, 36.0f);
  s.sizeAmplitudeOfOscillation = sometimes(-1.0f, 1.0f);
  s.sizeFrequencyOfOscillation = dice.real(0.0f, 2.0f);
  s.sizeJittering = sometimes(0.0f, 4.0f);
  s.colorAmplitudeOfOscillation = sometimes(-255.0f, 255.0f);
  s.colorFrequencyOfOscillation = dice.real(0.0f, 2.0f);
  s.colorJittering = sometimes(0.0f, 400.0f);
  s.typeOfHalo = anyItem<brisel::HaloType>(dice, 0, 6);
  s.volumeOfHalo = dice.real(0.0f, 1.5f);
  s.sizeOfHalo = dice.real(0.0f, 2.0f);
  s.typeOfBlink = anyItem<brisel::BlinkType>(dice, 0, 6);
  s.volumeOfBlink = dice.real(0.0f, 1.5f);
  s.sizeOfBlink = dice.real(0.0f, 2.0f);
  s.volumeDispersionOfElements = sometimes(0.0f, 1.0f);
  s.sizeDispersionOfElements = sometimes(0.0f, 1.0f);
  s.colorDispersionOfElements = sometimes(0.0f, 1.0f);
  s.colorRainbow = dice.oneOf({0.0f, 125.0f, -125.0f, 2000.0f});
  s.addMode = anyItem<brisel::AddMode>(dice, 1, 3);
  return s;
}

Particle anyStar(Dice& dice) {
  Particle p{};
  p.randomFactor = static_cast<float>(dice.integer(-1000, 999)) / 1000.0f;
  p.size = dice.logarithmic(0.002f, 0.6f);
  p.rayWidth = p.size * dice.real(0.0f, 0.2f);
  p.angle = dice.real(-180.0f, 360.0f);
  p.value = dice.real(0.0f, 2.0f);
  p.raysCount = dice.integer(0, 9);
  const brisel::Rgb color = dice.color();
  const brisel::Rgb last = dice.color();
  p.colorR = color.red;
  p.colorG = color.green;
  p.colorB = color.blue;
  p.terminateColorR = last.red;
  p.terminateColorG = last.green;
  p.terminateColorB = last.blue;
  p.starType = anyItem<StarType>(dice, 0, 10);
  p.terminateType = anyItem<TerminateType>(dice, 1, 8);
  p.x = dice.coin() ? dice.real(0.0f, kWidth) : dice.position(kWidth);
  p.y = dice.coin() ? dice.real(0.0f, kHeight) : dice.position(kHeight);
  p.lifeTime = dice.oneOf({1.0f, 35.0f, dice.real(0.5f, 60.0f), -1.0f});
  p.age = dice.oneOf({0.0f, p.lifeTime, p.lifeTime * dice.real(-0.02f, 1.05f),
                      p.lifeTime * dice.real(0.0f, 1.0f)});
  return p;
}

TEST(Stars, FramesAreWhatTheReferenceDraws) {
  for (std::uint32_t trial = 0; trial < 400 && !HasFailure(); ++trial) {
    Dice dice(1000 + trial);
    SCOPED_TRACE(testing::Message() << "stream " << 1000 + trial);
    unit::Scene scene;
    scene.settings = anySettings(dice);
    scene.state.rainbowShift = scene.settings.colorRainbow;
    scene.state.rainbowOn = dice.coin();
    scene.generatorState = dice.bits();
    unit::Frame frame(kWidth, kHeight, dice.coin());
    if (dice.coin()) frame.fill(dice);
    std::vector<Particle> stars(12);
    for (Particle& star : stars) star = anyStar(dice);
    std::vector<Particle> referenceStars = stars;
    unit::expectSameDrawing(
        scene, frame, [&](brisel::Drawing& d) { drawAllStars(d, stars.data(), 12); },
        [&](reference::Plotter& p) { p.drawAllStars(referenceStars.data(), 12); });
    for (std::size_t i = 0; i < stars.size(); ++i) {
      EXPECT_EQ(stars[i].starType, referenceStars[i].starType);
      EXPECT_EQ(stars[i].x, referenceStars[i].x);
    }
  }
}

/// A frame of one star and what is left of the drawing state.
class OneStar : public testing::Test {
 protected:
  OneStar() {
    star.size = 0.25f;
    star.rayWidth = 0.05f;
    star.value = 1.0f;
    star.raysCount = 4;
    star.colorR = star.colorG = star.colorB = 200;
    star.terminateColorR = 255;
    star.starType = StarType::Glow2;
    star.terminateType = TerminateType::TimeLimited;
    star.x = 40.5f;
    star.y = 30.5f;
    star.lifeTime = 10.0f;
    settings.type = StarType::Glow2;
    settings.typeOfHalo = brisel::HaloType::None;
    settings.typeOfBlink = brisel::BlinkType::None;
  }

  /// Draws the star into an empty frame; the number of draws it takes.
  int draw() {
    frame = unit::Frame(kWidth, kHeight, deep);
    frame.becomeOutputOf(settings);
    brisel::RandomGenerator random;
    brisel::Drawing drawing{
        settings, random, state, brisel::outputLayer(settings), brisel::BlendRule::Over, {}};
    drawAllStars(drawing, &star, 1);
    brisel::RandomGenerator counter;
    int draws = 0;
    for (; counter.state() != random.state() && draws < 100; ++draws) counter.nextRandom();
    return draws;
  }

  int touchedPixels() const {
    int touched = 0;
    for (std::int32_t y = 0; y < kHeight; ++y) {
      for (std::int32_t x = 0; x < kWidth; ++x) touched += frame.channel(x, y, 0) != 0;
    }
    return touched;
  }

  RenderSettings settings;
  Particle star{};
  brisel::DrawingState state;
  bool deep = false;
  unit::Frame frame{kWidth, kHeight, false};
};

TEST_F(OneStar, LivesUpToItsLastStepAndNoLonger) {
  star.age = 10.0f;
  draw();
  EXPECT_GT(touchedPixels(), 0);
  star.age = 10.001f;
  draw();
  EXPECT_EQ(touchedPixels(), 0);
  star.terminateType = TerminateType::Infinity;
  draw();
  EXPECT_GT(touchedPixels(), 0);
  star.lifeTime = brisel::kFailedPlacement;
  draw();
  EXPECT_EQ(touchedPixels(), 0);
}

TEST_F(OneStar, AsDotIsOneWhitePixelWhateverItIs) {
  settings.type = StarType::Dots;
  settings.colorJittering = settings.angleJittering = settings.sizeJittering = 1.0f;
  star.age = 99.0f;
  for (const bool depth : {false, true}) {
    deep = depth;
    EXPECT_EQ(draw(), 0);
    EXPECT_EQ(touchedPixels(), 1);
    for (int c = 0; c < 4; ++c) EXPECT_EQ(frame.channel(40, 30, c), deep ? 32768 : 255);
  }
}

TEST_F(OneStar, JitterDrawsEvenWhereNothingIsSeen) {
  settings.angleJittering = settings.sizeJittering = settings.colorJittering = 1.0f;
  star.x = -4000.0f;
  EXPECT_EQ(draw(), 5);
  settings.sizeJittering = 0.0f;
  EXPECT_EQ(draw(), 4);
  star.age = 10.0f;
  star.terminateType = TerminateType::Explode;
  EXPECT_EQ(draw(), 16);
  star.age = 11.0f;
  EXPECT_EQ(draw(), 0);
}

TEST_F(OneStar, StaysWhatItsEndMadeIt) {
  settings.timeOfExplode = 0.0f;
  const std::pair<TerminateType, StarType> ends[] = {
      {TerminateType::Explode, StarType::Type3},
      {TerminateType::ExplodeGlow, StarType::Glow1},
      {TerminateType::ExplodeSparks, StarType::Type1},
      {TerminateType::Flash, StarType::Type3},
      {TerminateType::FlashGlow, StarType::Glow1}};
  for (const auto& [fate, type] : ends) {
    star.starType = StarType::Type3;
    star.terminateType = fate;
    star.age = 2.4f;  // before the quarter of its life
    draw();
    EXPECT_EQ(star.starType, StarType::Type3);
    star.age = 2.6f;
    draw();
    EXPECT_EQ(star.starType, type);
    EXPECT_EQ(star.x, 40.5f);
  }
}

TEST_F(OneStar, BlinkLeavesItsRainbowBehind) {
  settings.typeOfBlink = brisel::BlinkType::Blink;
  settings.sizeOfBlink = settings.volumeOfBlink = 1.0f;
  state.rainbowOn = false;
  draw();
  EXPECT_EQ(state.rainbowShift, -50.0f);
  EXPECT_TRUE(state.rainbowOn);
  settings.typeOfHalo = brisel::HaloType::Simple;
  settings.typeOfBlink = brisel::BlinkType::None;
  settings.colorRainbow = 0.0f;
  draw();
  EXPECT_EQ(state.rainbowShift, 0.0f);
  EXPECT_FALSE(state.rainbowOn);
}

}  // namespace
