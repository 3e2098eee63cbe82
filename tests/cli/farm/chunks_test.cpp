// How frames are shared out.
#include "cli/farm/chunks.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace {

using cli::Chunk;
using cli::FrameCosts;
using cli::FrameRange;

double secondsOf(FrameRange chunk, const FrameCosts& costs) {
  double seconds = costs.startUp + costs.preroll;
  for (int frame = 0; frame <= chunk.last; ++frame) {
    seconds += (frame < chunk.first ? costs.steps : costs.draws)[static_cast<std::size_t>(frame)];
  }
  return seconds;
}

// The dearest chunk of the best way there is, found by trying all.
double leastDearest(FrameRange range, int count, const FrameCosts& costs) {
  if (count == 1 || range.count() == 1) return secondsOf(range, costs);
  double least = std::numeric_limits<double>::infinity();
  for (int last = range.first; last < range.last; ++last) {
    const double dearest = std::max(secondsOf({range.first, last}, costs),
                                    leastDearest({last + 1, range.last}, count - 1, costs));
    least = std::min(least, dearest);
  }
  return std::min(least, secondsOf(range, costs));
}

TEST(Chunks, TheDearestIsAsCheapAsCanBe) {
  std::mt19937 dice(7);
  std::uniform_real_distribution<double> upToOne(0, 1);
  for (int round = 0; round < 200; ++round) {
    FrameCosts costs;
    costs.startUp = 2 * upToOne(dice);
    costs.preroll = upToOne(dice);
    for (int frame = 0; frame < 9; ++frame) {
      costs.steps.push_back(upToOne(dice) * (round % 2 == 0 ? 0.05 : 1));
      costs.draws.push_back(costs.steps.back() + upToOne(dice));
    }
    const FrameRange range{round % 3, 8};
    const int count = 1 + round % 5;
    const std::vector<Chunk> chunks = cli::balancedChunks(range, count, costs);
    ASSERT_EQ(chunks.size(), static_cast<std::size_t>(count));
    double dearest = 0;
    int next = range.first;
    for (const Chunk& chunk : chunks) {
      ASSERT_EQ(chunk.range.first, next);
      ASSERT_GE(chunk.range.count(), 1);
      EXPECT_NEAR(chunk.seconds, secondsOf(chunk.range, costs), 1e-9);
      dearest = std::max(dearest, chunk.seconds);
      next = chunk.range.last + 1;
    }
    ASSERT_EQ(next, range.last + 1);
    EXPECT_NEAR(dearest, leastDearest(range, count, costs), 1e-6) << round;
  }
}

TEST(Chunks, AreNoMoreThanFrames) {
  FrameCosts costs;
  costs.steps = costs.draws = {1, 1, 1};
  EXPECT_EQ(cli::balancedChunks({0, 2}, 20, costs).size(), 3u);
}

TEST(Chunks, WordsStayWholeInAShell) {
  EXPECT_EQ(cli::shellCommand({"render", "my scene's.toml", "f_%04d.png", "--set", "Size=4", ""}),
            "render 'my scene'\\''s.toml' 'f_%04d.png' --set Size=4 ''");
}

}  // namespace
