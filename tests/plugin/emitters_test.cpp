// Stars born from the input layer: on its visible pixels, along the outlines of its alpha. Stars
// are single pixels that stay where they were born.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "tests/plugin/hosted_effect.h"

namespace {

using hostkit::Depth;
using hostkit::World;
using tests::FrameShape;
using tests::isBlank;
using tests::litPixels;

constexpr int kRasterMask = 6;
constexpr int kContour = 8;

// Alpha and color on the scale of 255.
struct Color {
  int alpha, red, green, blue;
};

constexpr Color kClear{0, 0, 0, 0};
constexpr Color kWhite{255, 255, 255, 255};

using ColorAt = std::function<Color(A_long x, A_long y)>;

World painted(const FrameShape& shape, const ColorAt& colorAt) {
  World world(shape.width, shape.height, shape.depth, shape.input);
  for (A_long y = 0; y < shape.height; ++y) {
    for (A_long x = 0; x < shape.width; ++x) {
      const Color c = colorAt(x, y);
      const auto at = static_cast<std::size_t>(x);
      if (shape.depth == Depth::Bits16) {
        const auto deep = [](int v) { return static_cast<A_u_short>(v * 32768 / 255); };
        world.row16(y)[at] = {deep(c.alpha), deep(c.red), deep(c.green), deep(c.blue)};
      } else {
        const auto byte = [](int v) { return static_cast<A_u_char>(v); };
        world.row8(y)[at] = {byte(c.alpha), byte(c.red), byte(c.green), byte(c.blue)};
      }
    }
  }
  return world;
}

ColorAt disc(double centerX, double centerY, double radius) {
  return [=](A_long x, A_long y) {
    const double distance = std::hypot(static_cast<double>(x) - centerX, y - centerY);
    return distance <= radius ? kWhite : kClear;
  };
}

class EmittersTest : public tests::DepthTest {
 protected:
  void emit(int standardPath, int stars, const FrameShape& frame) {
    tests::openWithDefaults(session, frame);
    tests::set(session, "Standard path", standardPath);
    tests::emitDots(session, stars);
  }

  World firstFrame(const ColorAt& colorAt, const FrameShape& frame) {
    World input = painted(frame, colorAt);
    return renderOver(input, session, frame);
  }

  const FrameShape shape{.depth = GetParam(), .input{.rowPadding = 6}};
};

INSTANTIATE_TEST_SUITE_P(, EmittersTest,
                         ::testing::Values(hostkit::Depth::Bits8, hostkit::Depth::Bits16),
                         tests::depthName);

// Deaths put births off by more than a step, so that even stars of short life are young for long.
TEST_P(EmittersTest, StarsThatFindNoPlaceAreNeverSeen) {
  for (const int type : {1, 2}) {  // Dots and Type1
    emit(kRasterMask, 20, shape);
    tests::set(session, "Type", type);
    tests::set(session, "Terminate type", 2);
    tests::set(session, "Initial speed", 10);
    World black = painted(shape, [](A_long, A_long) { return Color{255, 0, 0, 0}; });
    for (A_long frame = 0; frame < 12; ++frame) {
      EXPECT_TRUE(isBlank(renderOver(black, session, shape, {.frame = frame})));
    }
    session.close();
  }
}

TEST_P(EmittersTest, TheContourIsTracedAgainInEveryFrame) {
  emit(kContour, 100, shape);
  const auto starsOn = [](const World& frame, double centerX) {
    return std::ranges::count_if(litPixels(frame), [=](const PF_Point& p) {
      return std::abs(std::hypot(p.h - centerX, p.v - 24.0) - 8) <= 2;
    });
  };
  const World before = firstFrame(disc(15, 24, 8), shape);
  const auto onTheLeft = starsOn(before, 15);
  EXPECT_EQ(onTheLeft, std::ssize(litPixels(before)));
  World right = painted(shape, disc(48, 24, 8));
  const World after = renderOver(right, session, shape, {.frame = 1});
  EXPECT_GT(starsOn(after, 48), 20);
  EXPECT_EQ(starsOn(after, 15), onTheLeft) << "the stars that are there stay";
  EXPECT_EQ(starsOn(after, 48) + onTheLeft, std::ssize(litPixels(after)));
}

}  // namespace
