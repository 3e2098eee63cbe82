// Whole frames of stars against the reference.
#include <vector>

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
    std::vector<Particle> born(12);
    for (Particle& star : born) star = anyStar(dice);
    std::vector<Particle> stars;
    std::vector<Particle> referenceStars = born;
    unit::expectSameDrawing(
        scene, frame,
        [&](brisel::Drawing& d) {
          stars = born;
          drawAllStars(d, stars.data(), 12);
        },
        [&](reference::Plotter& p) { p.drawAllStars(referenceStars.data(), 12); });
    for (std::size_t i = 0; i < stars.size(); ++i) {
      EXPECT_EQ(stars[i].starType, referenceStars[i].starType);
      EXPECT_EQ(stars[i].x, referenceStars[i].x);
    }
  }
}

}  // namespace
