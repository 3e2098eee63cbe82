// The line that tells how far the work is.
#include "cli/pipeline/progress.h"

#include <gtest/gtest.h>

namespace {

using cli::progressLine;

TEST(ProgressLine, TheBarFillsWithTheFramesDone) {
  EXPECT_EQ(progressLine({"a.mp4", 25, 100, 12.5}, 80),
            "a.mp4 [######                  ] 25/100  12.5 fps  0:06 left");
  EXPECT_EQ(progressLine({"a.mp4", 99, 100, 0.01}, 80),
            "a.mp4 [####################### ] 99/100  0.0 fps  1:40 left");
  EXPECT_EQ(progressLine({"a.mp4", 1'000'000, 1'000'000, 60}, 80),
            "a.mp4 [########################] 1000000/1000000  60.0 fps  0:00 left");
  EXPECT_EQ(progressLine({"a.mp4", 500, 1000, 250, true}, 80),
            "a.mp4 [############            ] step 500/1000  0:02 left");
}

TEST(ProgressLine, NarrowTerminalsLoseBarThenSpeedThenName) {
  EXPECT_EQ(progressLine({"a.mp4", 5, 10, 2}, 46), "a.mp4 [######      ] 5/10  2.0 fps  0:03 left");
  EXPECT_EQ(progressLine({"a.mp4", 5, 10, 2}, 40), "a.mp4 [#######        ] 5/10  0:03 left");
  EXPECT_EQ(progressLine({"sparkle_\u00e9_\u00fc.mp4", 5, 10, 2}, 40),
            "sparkle_\u00e9... [####    ] 5/10  0:03 left");
  EXPECT_EQ(progressLine({"%04d.png", 999'999, 1'000'000, 0.01}, 40).size(), 39u);
}

}  // namespace
