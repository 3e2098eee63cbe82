// Resampling against the kernel's values worked out by hand.
#include "cli/pictures/frame_fit.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using cli::Depth;
using cli::Frame;

Frame grays(const std::vector<std::uint16_t>& columns) {
  Frame frame({static_cast<int>(columns.size()), 1}, Depth::Bits16);
  for (std::size_t x = 0; x < columns.size(); ++x) {
    const std::uint16_t rgba[4] = {columns[x], columns[x], columns[x], 65535};
    std::memcpy(frame.bytes.data() + x * sizeof rgba, rgba, sizeof rgba);
  }
  return frame;
}

int grayAt(const Frame& frame, int x, int y) {
  std::uint16_t gray;
  std::memcpy(&gray, frame.row(y) + frame.pixelBytes() * static_cast<std::size_t>(x), sizeof gray);
  return gray;
}

// An impulse of 12800 on 12800: each sample is 12800 and that share of it which Catmull-Rom has at
// its distance from the impulse, in sixteenths of 1/8 at the quarters between samples.
TEST(FrameFit, EnlargingShowsTheCubicKernel) {
  const Frame frame =
      fittedFrame(grays({12800, 12800, 12800, 12800, 25600, 12800, 12800, 12800, 12800}), {18, 2});
  const double kernel[] = {-0.0234375, -0.0703125, 0.2265625,
                           0.8671875};  // at 1.75, 1.25, 0.75, 0.25
  for (int i = 0; i < 4; ++i) {
    const int expected = static_cast<int>(12800 * (1 + kernel[i]) + 0.5);
    EXPECT_NEAR(grayAt(frame, 5 + i, 0), expected, 1) << i;
    EXPECT_NEAR(grayAt(frame, 12 - i, 1), expected, 1) << i;
  }
  EXPECT_EQ(grayAt(frame, 4, 0), 12800);
}

// At half the size the kernel is twice as wide: distances 0.25, 0.75, 1.25 and 1.75 of a result's
// sample on each side, with half the weight.
TEST(FrameFit, ReducingWeighsEverySample) {
  const Frame frame = fittedFrame(grays({12800, 12800, 12800, 12800, 12800, 12800, 12800, 25600,
                                         12800, 12800, 12800, 12800, 12800, 12800, 12800, 12800}),
                                  {8, 1});
  const double kernel[] = {-0.0703125, 0.8671875, 0.2265625, -0.0234375};
  for (int i = 0; i < 4; ++i) {
    EXPECT_NEAR(grayAt(frame, 2 + i, 0), 12800 * (1 + kernel[i] / 2), 1) << i;
  }
}

}  // namespace
