// Stars and elements that are not to be drawn leave the frame, the draws and the drawing's state
// alone.
#include <gtest/gtest.h>

#include "render/elements.h"
#include "render/frame.h"
#include "tests/render/frames.h"

namespace {

class Undrawn : public testing::Test {
 protected:
  Undrawn() {
    settings.frameWidth = frame.width();
    settings.frameHeight = frame.height();
    settings.type = brisel::StarType::Type1;
    state.rainbowOn = false;
    state.textureMix = 0.75f;
    star.size = 0.3f;
    star.rayWidth = 0.01f;
    star.value = 1.0f;
    star.raysCount = 4;
    star.colorR = 255;
    star.starType = brisel::StarType::Type1;
    star.terminateType = brisel::TerminateType::TimeLimited;
    star.x = star.y = 20.0f;
    star.lifeTime = 9.0f;
  }

  void draw() { drawAllStars(drawing, &star, 1); }

  void expectNothingDone() const {
    expectSame(frame, tests::Frame(64, 48, false));
    EXPECT_EQ(random.state(), 0u);
    EXPECT_FALSE(state.rainbowOn);
    EXPECT_EQ(state.textureMix, 0.75f);
  }

  tests::Frame frame{64, 48, false};
  brisel::RenderSettings settings;
  brisel::RandomGenerator random;
  brisel::DrawingState state;
  brisel::Particle star{};
  brisel::Drawing drawing{settings, random, state, frame.view()};
};

TEST_F(Undrawn, StarsWithoutAPlaceWhateverTheirAgeAndFate) {
  settings.sizeJittering = 1.0f;
  star.lifeTime = brisel::kFailedPlacement;
  star.age = -5.0f;
  for (const brisel::StarType type : {brisel::StarType::Dots, brisel::StarType::Type1}) {
    settings.type = type;
    for (int fate = 1; fate <= 8; ++fate) {
      star.terminateType = static_cast<brisel::TerminateType>(fate);
      draw();
    }
  }
  expectNothingDone();
}

TEST_F(Undrawn, StarsBeyondTheirLifeButNotAtItsEnd) {
  star.age = 9.01f;
  draw();
  expectNothingDone();
  star.age = 9.0f;
  draw();
  EXPECT_GT(frame.channel(20, 20, 1), 0);
}

TEST_F(Undrawn, RandomBlinksThatPickNone) {
  settings.typeOfBlink = brisel::BlinkType::Random;
  settings.sizeOfBlink = settings.volumeOfBlink = 1.0f;
  for (const std::int32_t seed : {-1, -2, -4, -131}) {  // negative, not divisible by three
    drawAdditionalElements(drawing, {20, 20, 10, 0, {255, 200, 100}, 1, seed});
  }
  expectNothingDone();
}

}  // namespace
