#include <gtest/gtest.h>

#include "render/painter.h"
#include "render/stars/compose.h"
#include "tests/render/frames.h"

namespace {

TEST(Stars, AreShownToTheEndOfTheirLifeAndNotAfterIt) {
  tests::Frame frame(64, 48, false);
  brisel::RenderSettings settings;
  settings.frameWidth = frame.width();
  settings.frameHeight = frame.height();
  settings.type = brisel::StarType::Type1;
  brisel::Particle star{};
  star.size = 0.3f;
  star.rayWidth = 0.01f;
  star.value = 1.0f;
  star.raysCount = 4;
  star.colorR = 255;
  star.starType = brisel::StarType::Type1;
  star.terminateType = brisel::TerminateType::TimeLimited;
  star.x = star.y = 20.0f;
  star.lifeTime = 9.0f;
  brisel::RandomGenerator random;
  brisel::SpriteState state;
  brisel::Painter painter;
  const auto paint = [&] {
    painter.paint({.output = frame.view()}, [&](brisel::SpriteList& sprites) {
      brisel::drawAllStars({settings, random, state, &sprites}, {&star, 1});
    });
  };

  star.age = 9.01f;
  paint();
  expectSame(frame, tests::Frame(64, 48, false));
  star.age = 9.0f;
  paint();
  EXPECT_GT(frame.channel(20, 20, 1), 0);
}

}  // namespace
