// Stars and elements that do not show leave the frame, the random generator and the sprite state
// alone.
#include <gtest/gtest.h>

#include "render/stars/compose.h"
#include "tests/render/frames.h"

namespace {

class NothingToPaint : public testing::Test {
 protected:
  NothingToPaint() {
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

  void compose() { composeStars(composition, {&star, 1}); }

  void expectNothingDone() const {
    expectSame(frame, tests::Frame(64, 48, false));
    EXPECT_EQ(random.state(), 0u);
    EXPECT_FALSE(state.rainbowOn);
    EXPECT_EQ(state.textureMix, 0.75f);
  }

  tests::Frame frame{64, 48, false};
  brisel::RenderSettings settings;
  brisel::RandomGenerator random;
  brisel::SpriteState state;
  brisel::Particle star{};
  brisel::Painter painter{frame.view(), *brisel::availableKernels().back()};
  brisel::Composition composition{settings, random, state, painter};
};

TEST_F(NothingToPaint, StarsWithoutAPlaceWhateverTheirAgeAndFate) {
  settings.sizeJittering = 1.0f;
  star.lifeTime = brisel::kFailedPlacement;
  star.age = -5.0f;
  for (const brisel::StarType type : {brisel::StarType::Dots, brisel::StarType::Type1}) {
    settings.type = type;
    for (int fate = 1; fate <= 8; ++fate) {
      star.terminateType = static_cast<brisel::TerminateType>(fate);
      compose();
    }
  }
  expectNothingDone();
}

TEST_F(NothingToPaint, StarsBeyondTheirLifeButNotAtItsEnd) {
  star.age = 9.01f;
  compose();
  expectNothingDone();
  star.age = 9.0f;
  compose();
  EXPECT_GT(frame.channel(20, 20, 1), 0);
}

TEST_F(NothingToPaint, RandomBlinksThatPickNone) {
  settings.typeOfBlink = brisel::BlinkType::Random;
  settings.sizeOfBlink = settings.volumeOfBlink = 1.0f;
  for (const std::int32_t seed : {-1, -2, -4, -131}) {  // negative, not divisible by three
    composeElements(composition, {{20, 20}, 10, 0, {255, 200, 100}, 1, seed});
  }
  expectNothingDone();
}

}  // namespace
