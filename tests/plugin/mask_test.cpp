// Stars along a mask of the layer, as the host hands it out: every kind of outline, and hosts that
// refuse at any step. Stars are single pixels that stay where they were born.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

#include "hostkit/path_suites.h"
#include "tests/plugin/hosted_effect.h"

namespace {

using hostkit::MaskShape;
using hostkit::MaskTime;
using hostkit::World;
using tests::FrameShape;
using tests::litPixels;

const hostkit::SuiteName kDataSuite{kPFPathDataSuite, kPFPathDataSuiteVersion1};

PF_PathVertex corner(double x, double y) {
  return {x, y, x, y, x, y};
}

// Clockwise from its upper left corner.
MaskShape rectangle(bool closed = true) {
  return {{corner(10, 8), corner(50, 8), corner(50, 38), corner(10, 38)}, closed};
}

// Whether stars lie near the middle of the rectangle's top, right, bottom and left side.
std::array<bool, 4> litSides(const World& world) {
  const PF_Point middles[] = {{30, 8}, {50, 23}, {30, 38}, {10, 23}};
  std::array<bool, 4> lit{};
  for (const PF_Point& p : litPixels(world)) {
    for (std::size_t side = 0; side < 4; ++side) {
      if (std::hypot(p.h - middles[side].h, p.v - middles[side].v) < 5) lit[side] = true;
    }
  }
  return lit;
}

class MaskTest : public tests::EffectTest {
 protected:
  void SetUp() override {
    tests::openWithDefaults(session, shape);
    tests::emitDots(session, 600);
  }

  void choose(PF_PathID id) { session.parameters().setPath(tests::indexOf(session, "Path"), id); }
  void choose(const MaskShape& mask, bool inverted = false) {
    choose(session.records().masks.add([mask](const MaskTime&) { return mask; }, inverted));
  }

  World firstFrame() { return tests::renderFrame(session, shape, 0); }

  // What a missing mask gives: the curve through the control points.
  World bezierFrame() {
    const PF_ParamDef path = session.parameters().value(tests::indexOf(session, "Path"));
    choose(PF_PathID{0});
    World frame = firstFrame();
    choose(path.u.path_d.path_id);
    return frame;
  }

  void expectNothingKept() {
    EXPECT_TRUE(session.records().masks.balanced());
    EXPECT_TRUE(session.records().suites.balanced());
  }

  const FrameShape shape{};
};

TEST_F(MaskTest, StarsStartAtTheFirstVertexAndRunBackwardsWhenInverted) {
  struct Case {
    bool closed, inverted;
    int completeness;
    std::array<bool, 4> lit;  // top, right, bottom, left
  };
  for (const auto& [closed, inverted, completeness, lit] :
       {Case{true, false, 100, {true, true, true, true}},
        {false, false, 100, {true, true, true, false}},
        {true, false, 50, {true, true, false, false}},
        {true, true, 50, {false, false, true, true}},
        {false, true, 30, {false, false, true, false}}}) {
    tests::set(session, "Completeness of path", completeness);
    choose(rectangle(closed), inverted);
    EXPECT_EQ(litSides(firstFrame()), lit);
  }
}

TEST_F(MaskTest, TheMaskIsFetchedForTheTimeOfTheRender) {
  MaskTime asked{};
  choose(session.records().masks.add([&](const MaskTime& time) {
    asked = time;
    return rectangle();
  }));
  renderFrame(session, shape, {.frame = 12, .rateNum = 30000, .rateDen = 1001});
  EXPECT_EQ(asked.time, 12 * 1001);
  EXPECT_EQ(asked.step, 1001);
  EXPECT_EQ(asked.scale, 30000u);
}

TEST_F(MaskTest, TheHostIsNotAskedWithoutAMask) {
  firstFrame();  // with new values the effect grays parameters, which takes another suite
  const int before = session.records().suites.acquisitions();
  firstFrame();
  EXPECT_EQ(session.records().suites.acquisitions(), before);
}

TEST_F(MaskTest, WithoutASuiteTheBezierCurveIsUsed) {
  choose(rectangle());
  const World bezier = bezierFrame();
  tests::set(session, "Standard path", 3);
  const World withMask = firstFrame();
  EXPECT_FALSE(samePixels(withMask, bezier));
  for (const int nth : {1, 2}) {
    session.records().suites.refuseAcquisition(nth);
    EXPECT_TRUE(samePixels(firstFrame(), bezier)) << "acquisition " << nth;
    expectNothingKept();
    EXPECT_TRUE(samePixels(firstFrame(), withMask));
  }
}

TEST_F(MaskTest, EveryMaskIsGivenBackWhicheverCallFails) {
  choose(rectangle());
  const World bezier = bezierFrame();
  hostkit::MaskTable& masks = session.records().masks;
  const int before = masks.calls();
  const World withMask = firstFrame();
  const int calls = masks.calls() - before;
  EXPECT_EQ(calls, 9) << "check-out, three questions, four vertices, check-in";
  for (int nth = 1; nth <= calls; ++nth) {
    masks.failCall(nth);
    const World rendered = firstFrame();
    EXPECT_TRUE(samePixels(rendered, nth == calls ? withMask : bezier)) << "call " << nth;
    expectNothingKept();
    EXPECT_TRUE(samePixels(firstFrame(), withMask)) << "after call " << nth;
  }
}

TEST_F(MaskTest, WithoutVerticesTheBezierCurveIsUsed) {
  choose(rectangle());
  const World bezier = bezierFrame();
  choose({{}, true});
  EXPECT_TRUE(samePixels(firstFrame(), bezier));
  choose(PF_PathID{77});
  EXPECT_TRUE(samePixels(firstFrame(), bezier)) << "deleted";

  choose(rectangle());
  static A_long claimed;
  PF_PathDataSuite1 lying = hostkit::pathDataSuite();
  lying.PF_PathNumSegments = [](PF_ProgPtr, PF_PathOutlinePtr, A_long* count) -> PF_Err {
    *count = claimed;
    return PF_Err_NONE;
  };
  session.records().suites.offer(kDataSuite, &lying);
  using Limits = std::numeric_limits<A_long>;
  for (const A_long count : {-1, Limits::min(), 5, Limits::max()}) {
    claimed = count;
    EXPECT_TRUE(samePixels(firstFrame(), bezier)) << "claimed to have " << count << " segments";
    expectNothingKept();
  }
}

}  // namespace
