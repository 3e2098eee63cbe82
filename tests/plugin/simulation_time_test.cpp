// One render is one step; only a render at time 0 or before starts over.
#include <gtest/gtest.h>

#include "tests/plugin/hosted_effect.h"

namespace {

using hostkit::World;
using tests::EffectTest;
using tests::instanceRecord;
using tests::isBlank;
using tests::renderFrame;

class SimulationTimeTest : public EffectTest {
 protected:
  void SetUp() override { tests::openWithDefaults(session); }

  World render(A_long frame) { return renderFrame(session, {}, frame); }

  // Taken at birth: the first field of the first star's record.
  float randomFactorOfOldest() { return *static_cast<const float*>(instanceRecord(session).stars); }
};

TEST_F(SimulationTimeTest, TimeZeroStartsOver) {
  const World first = render(0);
  const World second = render(1);
  EXPECT_FALSE(isBlank(second));
  EXPECT_FALSE(samePixels(first, second));
  EXPECT_TRUE(samePixels(render(0), first));
  EXPECT_TRUE(samePixels(render(-7), first)) << "before the start is the start";
  EXPECT_TRUE(samePixels(render(1), second));
  const hostkit::RenderRequest ntsc{.frame = 0, .rateNum = 30000, .rateDen = 1001};
  EXPECT_TRUE(samePixels(renderFrame(session, {}, ntsc), first));
}

TEST_F(SimulationTimeTest, AJumpInTimeIsOneStep) {
  render(0);
  const World second = render(1);
  const World third = render(2);
  render(0);
  EXPECT_TRUE(samePixels(render(10), second));
  EXPECT_TRUE(samePixels(render(10), third)) << "the same frame again is another step";
  EXPECT_EQ(instanceRecord(session).stepCounter, 3);
}

TEST_F(SimulationTimeTest, LoweringTheMaximumDropsTheYoungest) {
  tests::set(session, "Terminate type", 1);
  struct Step {
    int intensity, maximum, stars, capacity;
  };
  float oldest = 0;
  A_long frame = 0;
  for (const auto& [intensity, maximum, stars, capacity] : {Step{40, 300, 20, 300},
                                                            {40, 300, 40, 300},
                                                            {0, 10, 10, 10},
                                                            {40, 0, 10, 10},
                                                            {40, 25, 25, 25}}) {
    tests::set(session, "Intensity", intensity);
    tests::set(session, "Maximum number of stars", maximum);
    render(frame);
    if (frame == 0) oldest = randomFactorOfOldest();
    EXPECT_EQ(instanceRecord(session).starCount, stars) << "frame " << frame;
    EXPECT_EQ(instanceRecord(session).capacity, capacity) << "frame " << frame;
    EXPECT_EQ(randomFactorOfOldest(), oldest) << "frame " << frame;
    ++frame;
  }
}

}  // namespace
