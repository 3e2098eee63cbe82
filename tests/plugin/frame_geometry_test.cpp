// Frames in memory: padding has no influence, and is cleared.
#include <gtest/gtest.h>

#include "tests/plugin/hosted_effect.h"

namespace {

using hostkit::Depth;
using hostkit::World;
using tests::FrameShape;
using tests::isBlank;
using tests::renderFrame;

class FrameGeometryTest : public tests::DepthTest {
 protected:
  // A population that reaches over every edge, with all that reads the input.
  void openCrowded(const FrameShape& shape) {
    tests::openWithDefaults(session, shape);
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
      tests::set(session, label, value);
    }
  }

  World lastOf(const FrameShape& shape, A_long frames) {
    for (A_long frame = 0; frame + 1 < frames; ++frame) renderFrame(session, shape, frame);
    return renderFrame(session, shape, frames - 1);
  }
};

INSTANTIATE_TEST_SUITE_P(, FrameGeometryTest,
                         ::testing::Values(hostkit::Depth::Bits8, hostkit::Depth::Bits16),
                         tests::depthName);

TEST_P(FrameGeometryTest, PaddingAndAlignmentChangeNoPixel) {
  const FrameShape tight{.width = 101, .height = 57, .depth = GetParam()};
  openCrowded(tight);
  const World expected = lastOf(tight, 6);
  EXPECT_FALSE(isBlank(expected));

  const A_long odd = GetParam() == Depth::Bits16 ? 2 : 1;  // bytes off any wider alignment
  for (const A_long padding : {odd, A_long{12}, A_long{4096}}) {
    FrameShape padded = tight;
    padded.input = {.rowPadding = padding, .guardBytes = 64 + odd};
    padded.output = {.rowPadding = padding + 2 * odd, .guardBytes = 128 + odd};
    EXPECT_TRUE(samePixels(lastOf(padded, 6), expected)) << padding;
  }
}

TEST_P(FrameGeometryTest, ClearingReachesThePaddingAndNoFurther) {
  const FrameShape shape{.depth = GetParam()};
  tests::openWithDefaults(session, shape);
  tests::set(session, "Intensity", 0);
  World input = tests::patternedInput(shape);
  World output(64, 48, GetParam(), {.rowPadding = 14});
  output.fill(0xFF);
  session.render(input, output, {});
  EXPECT_TRUE(output.guardsIntact());
  for (const std::uint8_t byte : output.bytes()) ASSERT_EQ(byte, 0);
}

}  // namespace
