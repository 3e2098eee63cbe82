// Hosts that do what no host should: nothing crashes, nothing is written outside the output.
#include <gtest/gtest.h>

#include <cfenv>
#include <vector>

#include "tests/plugin/hosted_effect.h"
#include "tests/plugin/recording_painter.h"

namespace {

using hostkit::World;
using tests::EffectTest;
using tests::expectHarmlessRender;
using tests::isBlank;
using tests::renderFrame;

class WildHostTest : public EffectTest {
 protected:
  void SetUp() override {
    tests::openWithDefaults(session);
    for (A_long frame = 0; frame < 3; ++frame) renderFrame(session, {}, frame);
    output.fill(0xFF);
    session.prepareFrame(input, output, {.frame = 3});
  }

  World input = tests::patternedInput({});
  World output{64, 48, hostkit::Depth::Bits8};
};

TEST_F(WildHostTest, WithoutAnInstanceTheFrameIsEmptyAndNoStarIsLost) {
  const auto before = tests::instanceRecord(session);
  const PF_Handle handle = std::exchange(session.inData().sequence_data, nullptr);
  expectHarmlessRender(session, output);
  EXPECT_TRUE(isBlank(output));

  session.inData().sequence_data = handle;
  session.records().handles.refuseLocks(true);
  output.fill(0xFF);
  expectHarmlessRender(session, output);
  EXPECT_TRUE(isBlank(output));

  session.records().handles.refuseLocks(false);
  expectHarmlessRender(session, output);
  EXPECT_FALSE(isBlank(output));
  EXPECT_EQ(tests::instanceRecord(session).stepCounter, before.stepCounter + 1);
}

TEST_F(WildHostTest, WorldsThatCannotHoldTheirPixelsAreLeftAlone) {
  for (const auto& [width, height] : {std::pair<A_long, A_long>{0, 0}, {0, 5}, {5, 0}}) {
    World empty(width, height, hostkit::Depth::Bits8);
    session.prepareFrame(input, empty, {.frame = 0});
    expectHarmlessRender(session, empty);
    empty.record().data = nullptr;
    expectHarmlessRender(session, empty);
  }
  struct Spoilt {
    A_long width, height, rowBytes;
  };
  for (const auto& [width, height, rowBytes] : {Spoilt{-4, 4, 16}, {4, -4, 16}, {4, 4, 15}}) {
    World spoilt(4, 4, hostkit::Depth::Bits8);
    spoilt.fill(0xFF);
    spoilt.record().width = width;
    spoilt.record().height = height;
    spoilt.record().rowbytes = rowBytes;
    session.prepareFrame(input, spoilt, {.frame = 0});
    expectHarmlessRender(session, spoilt);
    for (const std::uint8_t byte : spoilt.bytes()) EXPECT_EQ(byte, 0xFF) << "left as it was";
  }
}

TEST_F(WildHostTest, TheHostsRoundingModeIsNeitherUsedNorLost) {
  const tests::FrameShape deep{.depth = hostkit::Depth::Bits16};  // shows the last bits
  const auto sixthFrame = [&] {
    for (A_long frame = 0; frame < 5; ++frame) renderFrame(session, deep, frame);
    return renderFrame(session, deep, 5);
  };
  const World expected = sixthFrame();
  std::fesetround(FE_UPWARD);
  const World rendered = sixthFrame();
  const int modeAfter = std::fegetround();
  std::fesetround(FE_TONEAREST);
  EXPECT_EQ(modeAfter, FE_UPWARD);
  EXPECT_TRUE(samePixels(rendered, expected));
}

TEST_F(WildHostTest, MissingParametersDoNoHarm) {
  std::vector<PF_ParamDef*> holes(session.parameters().pointers(),
                                  session.parameters().pointers() + 82);
  PF_UserChangedParamExtra changedType{40};
  const auto expectHarmless = [&] {
    output.fill(0xCD);
    for (const PF_Cmd cmd : {PF_Cmd_UPDATE_PARAMS_UI, PF_Cmd_USER_CHANGED_PARAM, PF_Cmd_RENDER}) {
      EXPECT_EQ(session.callWith(cmd, holes.data(), &output.record(), &changedType), PF_Err_NONE);
    }
    EXPECT_TRUE(output.guardsIntact());
    EXPECT_TRUE(isBlank(output));
  };
  for (PF_ParamDef*& hole : holes) {
    PF_ParamDef* kept = std::exchange(hole, nullptr);
    expectHarmless();
    hole = kept;
  }
  for (const std::size_t count : {81u, 41u, 5u, 2u, 1u}) {
    holes.resize(count);
    holes.shrink_to_fit();
    session.inData().num_params = static_cast<A_long>(count);
    expectHarmless();
  }
  session.inData().num_params = 82;
}

TEST_F(WildHostTest, ParametersThatTheHostDoesNotCountAreUsed) {
  session.inData().num_params = 0;
  expectHarmlessRender(session, output);
  EXPECT_FALSE(isBlank(output));
  tests::RecordingPainter painter;
  EXPECT_EQ(session.draw(1, {0, 0, 470, 125}, &painter).eventFlags, PF_EO_HANDLED_EVENT);
}

}  // namespace
