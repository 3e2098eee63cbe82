// Frames of every shape: pixels inside, nothing outside, padding of no influence.
#include <gtest/gtest.h>

#include <cstring>

#include "hosted_effect.h"

namespace {

using hostkit::Depth;
using hostkit::World;
using hosttest::EffectTest;
using hosttest::FrameShape;
using hosttest::isBlank;
using hosttest::renderFrame;
using hosttest::withinFullScale;

class FrameGeometryTest : public EffectTest, public ::testing::WithParamInterface<Depth> {
 protected:
  // A population that reaches over every edge, with all that reads the input.
  void openCrowded(const FrameShape& shape) {
    hosttest::openWithDefaults(session, shape);
    for (const auto& [label, value] : {std::pair("Intensity", 60),
                                       {"Size", 80},
                                       {"Size dispersion", 100},
                                       {"Type", 12},
                                       {"Type of halo", 5},
                                       {"Type of blink", 5},
                                       {"Orientation", 9},
                                       {"Initial speed", 100},
                                       {"Color schema", 2},
                                       {"Size depend on source", 1},
                                       {"Mix with original", 2}}) {
      hosttest::set(session, label, value);
    }
  }

  World lastOf(const FrameShape& shape, A_long frames) {
    for (A_long frame = 0; frame + 1 < frames; ++frame) renderFrame(session, shape, frame);
    return renderFrame(session, shape, frames - 1);
  }
};

INSTANTIATE_TEST_SUITE_P(, FrameGeometryTest, ::testing::Values(Depth::k8, Depth::k16),
                         [](const auto& depth) {
                           return "Depth" + std::to_string(static_cast<int>(depth.param));
                         });

TEST_P(FrameGeometryTest, OddSizesStayWithinTheirFrame) {
  for (const auto& [width, height] : {std::pair<A_long, A_long>{1, 1},
                                      {1, 200},
                                      {2, 3},
                                      {7, 1},
                                      {31, 33},
                                      {4095, 2},
                                      {4096, 5},
                                      {333, 77}}) {
    SCOPED_TRACE(std::to_string(width) + "x" + std::to_string(height));
    const FrameShape shape{width, height, GetParam(), {.rowPadding = 6}, {.rowPadding = 10}};
    openCrowded(shape);
    EXPECT_TRUE(withinFullScale(lastOf(shape, 4)));
    session.close();
  }
}

TEST_P(FrameGeometryTest, PaddingAndAlignmentChangeNoPixel) {
  const FrameShape tight{.width = 101, .height = 57, .depth = GetParam()};
  openCrowded(tight);
  const World expected = lastOf(tight, 6);
  EXPECT_FALSE(isBlank(expected));

  const A_long odd = GetParam() == Depth::k16 ? 2 : 1;  // bytes off any wider alignment
  for (const A_long padding : {odd, A_long{12}, A_long{4096}}) {
    FrameShape padded = tight;
    padded.input = {.rowPadding = padding, .guardBytes = 64 + odd};
    padded.output = {.rowPadding = padding + 2 * odd, .guardBytes = 128 + odd};
    EXPECT_TRUE(samePixels(lastOf(padded, 6), expected)) << padding;
  }
}

TEST_P(FrameGeometryTest, ClearingReachesThePaddingAndNoFurther) {
  const FrameShape shape{.depth = GetParam()};
  hosttest::openWithDefaults(session, shape);
  hosttest::set(session, "Intensity", 0);
  World input = hosttest::patternedInput(shape);
  World output(64, 48, GetParam(), {.rowPadding = 14});
  output.fill(0xFF);
  session.render(input, output, {});
  EXPECT_TRUE(output.guardsIntact());
  for (const std::uint8_t byte : output.bytes()) ASSERT_EQ(byte, 0);
}

TEST_P(FrameGeometryTest, InputPixelsThatAreNotThereReadAsNothing) {
  const FrameShape shape{.depth = GetParam()};
  const FrameShape corner{.width = 20, .height = 11, .depth = GetParam()};
  openCrowded(shape);
  World small = hosttest::patternedInput(corner);
  World extended(64, 48, GetParam());
  for (A_long y = 0; y < corner.height; ++y) {
    const auto from = small.rowPixelBytes(y);
    std::memcpy(extended.row8(y).data(), from.data(), from.size());
  }

  World overSmall(64, 48, GetParam());
  World overExtended(64, 48, GetParam());
  for (A_long frame = 0; frame < 3; ++frame) session.render(extended, overExtended, {frame});
  for (A_long frame = 0; frame < 3; ++frame) session.render(small, overSmall, {frame});
  EXPECT_TRUE(samePixels(overSmall, overExtended));
}

}  // namespace
