// Stars and elements that are not to be drawn leave the frame, the draws and the drawing's state
// alone.
#include "render/elements.h"
#include "render/frame.h"
#include "support.h"

namespace {

class Undrawn : public testing::Test {
 protected:
  Undrawn() {
    frame.becomeOutputOf(settings);
    settings.sizeJittering = 1.0f;
    state.rainbowOn = false;
    state.textureMix = 0.75f;
  }
  ~Undrawn() override {
    expectSame(frame, unit::Frame(64, 48, false));
    EXPECT_EQ(random.state(), 0u);
    EXPECT_FALSE(state.rainbowOn);
    EXPECT_EQ(state.textureMix, 0.75f);
  }

  unit::Frame frame{64, 48, false};
  brisel::RenderSettings settings;
  brisel::RandomGenerator random;
  brisel::DrawingState state;
};

TEST_F(Undrawn, StarsWithoutAPlaceWhateverTheirAgeAndFate) {
  for (const brisel::StarType type : {brisel::StarType::Dots, brisel::StarType::Type1}) {
    for (int fate = 1; fate <= 8; ++fate) {
      brisel::Particle star{};
      star.size = 0.3f;
      star.value = 1.0f;
      star.raysCount = 4;
      star.starType = settings.type = type;
      star.terminateType = static_cast<brisel::TerminateType>(fate);
      star.x = star.y = 20.0f;
      star.age = -5.0f;
      star.lifeTime = brisel::kFailedPlacement;
      brisel::Drawing drawing{settings, random, state, outputLayer(settings)};
      drawAllStars(drawing, &star, 1);
    }
  }
}

TEST_F(Undrawn, RandomBlinksThatPickNone) {
  settings.typeOfBlink = brisel::BlinkType::Random;
  settings.sizeOfBlink = settings.volumeOfBlink = 1.0f;
  brisel::Drawing drawing{settings, random, state, outputLayer(settings)};
  for (const std::int32_t seed : {-1, -2, -4, -131}) {  // negative, not divisible by three
    drawAdditionalElements(drawing, {20, 20, 10, 0, {255, 200, 100}, 1, seed});
  }
}

}  // namespace
