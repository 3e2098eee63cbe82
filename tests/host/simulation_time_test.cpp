// One render is one step; only a render at time 0 or before starts over.
#include <gtest/gtest.h>

#include <vector>

#include "hosted_effect.h"

namespace {

using hostkit::World;
using hosttest::EffectTest;
using hosttest::FrameShape;
using hosttest::instanceRecord;
using hosttest::isBlank;
using hosttest::renderFrame;

class SimulationTimeTest : public EffectTest {
 protected:
  void SetUp() override { hosttest::openWithDefaults(session); }

  World render(A_long frame) { return renderFrame(session, {}, frame); }

  // Drawn at birth, the first field of the first star's record.
  float randomFactorOfOldest() { return *static_cast<const float*>(instanceRecord(session).stars); }
};

TEST_F(SimulationTimeTest, DefaultsDrawStars) {
  render(0);
  EXPECT_FALSE(isBlank(render(1)));
}

TEST_F(SimulationTimeTest, TimeZeroStartsOver) {
  const World first = render(0);
  const World second = render(1);
  EXPECT_FALSE(samePixels(first, second));
  EXPECT_TRUE(samePixels(render(0), first));
  EXPECT_TRUE(samePixels(render(-7), first)) << "before the start is the start";
  EXPECT_TRUE(samePixels(render(1), second));
}

TEST_F(SimulationTimeTest, AJumpIsOneStep) {
  render(0);
  const World second = render(1);
  const World third = render(2);
  render(0);
  EXPECT_TRUE(samePixels(render(10), second));
  EXPECT_TRUE(samePixels(render(10), third)) << "the same frame again is another step";
  EXPECT_EQ(instanceRecord(session).stepCounter, 3);
}

TEST_F(SimulationTimeTest, FrameRateDecidesNothingButWhereZeroIs) {
  const World first = render(0);
  const World second = render(1);
  const hostkit::RenderRequest ntsc{.frame = 0, .rateNum = 30000, .rateDen = 1001};
  EXPECT_TRUE(samePixels(renderFrame(session, {}, ntsc), first));
  EXPECT_EQ(session.inData().time_step, 1001);
  EXPECT_TRUE(samePixels(render(1), second));
}

// Drawing keeps state from frame to frame; time 0 clears it.
TEST_F(SimulationTimeTest, NothingIsLeftOfWhatWasRenderedBefore) {
  const auto animation = [&] {
    std::vector<World> frames;
    for (A_long frame = 0; frame < 12; ++frame) frames.push_back(render(frame));
    return frames;
  };
  const std::vector<World> fresh = animation();

  // Glows without a rainbow switch off the recolouring that the default rays read.
  hostkit::Session other(hosttest::theModule());
  hosttest::openWithDefaults(other);
  for (const auto& [label, value] :
       {std::pair("Type", 9), {"Type of halo", 3}, {"Color rainbow", 0}, {"Intensity", 40}}) {
    hosttest::set(other, label, value);
  }
  for (A_long frame = 0; frame < 5; ++frame) renderFrame(other, {}, frame);

  const std::vector<World> again = animation();
  for (std::size_t frame = 0; frame < fresh.size(); ++frame) {
    EXPECT_TRUE(samePixels(again[frame], fresh[frame])) << "frame " << frame;
  }
}

TEST_F(SimulationTimeTest, LoweringTheMaximumDropsTheYoungest) {
  hosttest::set(session, "Intensity", 40);
  hosttest::set(session, "Terminate type", 1);
  for (A_long frame = 0; frame < 5; ++frame) render(frame);
  EXPECT_EQ(instanceRecord(session).starCount, 100) << "20 stars a step";
  EXPECT_EQ(instanceRecord(session).capacity, 300);
  const float oldest = randomFactorOfOldest();

  hosttest::set(session, "Intensity", 0);
  hosttest::set(session, "Maximum number of stars", 10);
  render(5);
  EXPECT_EQ(instanceRecord(session).starCount, 10);
  EXPECT_EQ(instanceRecord(session).capacity, 10);
  EXPECT_EQ(randomFactorOfOldest(), oldest);

  hosttest::set(session, "Intensity", 40);
  hosttest::set(session, "Maximum number of stars", 0);
  render(6);
  EXPECT_EQ(instanceRecord(session).starCount, 10) << "the living live on, none is born";
  EXPECT_EQ(instanceRecord(session).capacity, 10);

  hosttest::set(session, "Maximum number of stars", 25);
  render(7);
  EXPECT_EQ(instanceRecord(session).starCount, 25);
  EXPECT_EQ(randomFactorOfOldest(), oldest);
}

TEST_F(SimulationTimeTest, LowQualityAndDownsamplingRender) {
  const FrameShape half{.width = 32, .height = 24};
  for (const PF_Quality quality : {PF_Quality_LO, PF_Quality_HI, PF_Quality_DRAWING_AUDIO}) {
    const hostkit::RenderRequest request{.frame = 0,
                                         .quality = quality,
                                         .layerWidth = 64,
                                         .layerHeight = 48,
                                         .downsampleX = {1, 2},
                                         .downsampleY = {1, 2}};
    renderFrame(session, half, request);
    EXPECT_GT(instanceRecord(session).starCount, 0);
  }
}

}  // namespace
