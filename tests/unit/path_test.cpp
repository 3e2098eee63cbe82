// Where on the emitter a path parameter lies, and which way the emitter runs there.
#include "engine/emitter.h"
#include "random_settings.h"
#include "reference/simulation.h"

namespace {

using brisel::EmitterPoint;
using brisel::RenderSettings;
using brisel::StandardPath;
using unit::Dice;

EmitterPoint pointAt(const RenderSettings& s, float t) {
  return emitterPoint(s, prepareEmitter(s), t);
}

RenderSettings path(StandardPath kind, brisel::PointF start, brisel::PointF controlStart,
                    brisel::PointF end, brisel::PointF controlEnd) {
  RenderSettings s;
  s.standardPath = kind;
  s.start = start;
  s.controlStart = controlStart;
  s.end = end;
  s.controlEnd = controlEnd;
  return s;
}

RenderSettings line() {
  return path(StandardPath::Line, {100, 50}, {7, 7}, {8, 8}, {20, 50});
}

TEST(Path, EveryPointIsTheReferences) {
  for (std::uint32_t trial = 0; trial < 5000 && !HasFailure(); ++trial) {
    Dice dice(6000 + trial);
    SCOPED_TRACE(testing::Message() << "stream " << 6000 + trial);
    unit::Frame input(37, 23, false);
    const RenderSettings s = unit::anyEmitter(dice, input);
    const float t = static_cast<float>(dice.integer(0, 999)) / 1000.0f;
    const EmitterPoint p = pointAt(s, t);
    const reference::PathPoint q = reference::emitterPoint(s, t);
    EXPECT_EQ(p.x, q.x);
    EXPECT_EQ(p.y, q.y);
    EXPECT_EQ(p.dirX, q.dirX);
    EXPECT_EQ(p.dirY, q.dirY);
    EXPECT_EQ(p.tangentAngle, q.tangentAngle);
  }
}

TEST(Path, LineRunsFromStartToControlEnd) {
  const EmitterPoint p = pointAt(line(), 0.25f);
  EXPECT_EQ(p.x, 80.0f);
  EXPECT_EQ(p.y, 50.0f);
  EXPECT_EQ(p.dirX, -1.0f);
  EXPECT_EQ(p.dirY, 0.0f);
  EXPECT_FLOAT_EQ(p.tangentAngle, 3.14159265f);
}

TEST(Path, PolylineVisitsItsPointsInOrder) {
  const RenderSettings s = path(StandardPath::Polyline, {0, 0}, {10, 0}, {10, 20}, {40, 20});
  EXPECT_FLOAT_EQ(pointAt(s, 5.0f / 60.0f).x, 5.0f);
  EXPECT_FLOAT_EQ(pointAt(s, 20.0f / 60.0f).y, 10.0f);
  EXPECT_FLOAT_EQ(pointAt(s, 45.0f / 60.0f).x, 25.0f);
  EXPECT_FLOAT_EQ(pointAt(s, 20.0f / 60.0f).dirY, 1.0f);
  EXPECT_FLOAT_EQ(pointAt(s, 20.0f / 60.0f).tangentAngle, 1.57079633f);
}

TEST(Path, CircleStartsOnItsPointAndRunsClockwise) {
  for (const brisel::PointF on : {brisel::PointF{60, 50}, {40, 50}, {50, 40}, {50, 60}, {57, 41}}) {
    const RenderSettings s = path(StandardPath::Circle, {50, 50}, on, {}, {});
    const EmitterPoint first = pointAt(s, 0.0f);
    EXPECT_NEAR(first.x, on.x, 1e-4f);
    EXPECT_NEAR(first.y, on.y, 1e-4f);
    // A quarter turn clockwise on screen takes (dx, dy) to (-dy, dx).
    const EmitterPoint quarter = pointAt(s, 0.25f);
    EXPECT_NEAR(quarter.x, 50.0f - (on.y - 50.0f), 1e-4f);
    EXPECT_NEAR(quarter.y, 50.0f + (on.x - 50.0f), 1e-4f);
  }
}

TEST(Path, StraightBezierIsMeasuredExactly) {
  const brisel::CubicBezier curve{{0, 0}, {10, 0}, {20, 0}, {30, 0}};
  EXPECT_FLOAT_EQ(bezierLength(curve), 30.0f);
  EXPECT_EQ(bezierParameterAt(curve, 30.0f, 0.0f), 0.0f);
  EXPECT_EQ(bezierParameterAt(curve, 30.0f, 1.0f), 1.0f);
  EXPECT_NEAR(bezierParameterAt(curve, 30.0f, 0.3f), 0.3f, 1.0f / 1024.0f);
  EXPECT_FLOAT_EQ(bezierPoint(curve, 0.5f).x, 15.0f);
  EXPECT_FLOAT_EQ(bezierDerivative(curve, 0.5f).x, 30.0f);
}

TEST(Path, CompletenessAndShiftChooseThePart) {
  struct Case {
    float completeness, shift, t, along;  // along: the share of the line that the point lies at
  };
  const Case cases[] = {
      {0.5f, 0, 0.5f, 0.25f},     {-0.5f, 0, 0.5f, 0.75f},     {1.5f, 0, 0.5f, 0.75f},
      {-1.5f, 0, 0.5f, 0.25f},    {2.5f, 0, 0.5f, 0.25f},      {1, 0.25f, 0.5f, 0.75f},
      {1, 0.25f, 0.875f, 0.125f}, {1, -0.25f, 0.125f, 0.875f}, {1, -1.25f, 0.125f, 0.875f}};
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.completeness << ", " << c.shift << ", " << c.t);
    RenderSettings s = line();
    s.completenessOfPath = c.completeness;
    if (c.completeness != 1.0f) {
      s.completenessFraction =
          c.completeness - static_cast<float>(static_cast<int>(c.completeness));
      s.completenessParity = static_cast<int>(c.completeness) % 2;
    }
    s.shiftOfPath = c.shift;
    EXPECT_FLOAT_EQ(pointAt(s, c.t).x, 100.0f - 80.0f * c.along);
  }
}

TEST(Path, WithoutExtentItIsItsFirstPoint) {
  constexpr brisel::PointF kOnly = {30, 40};
  for (const StandardPath kind :
       {StandardPath::Line, StandardPath::Polyline, StandardPath::Bezier, StandardPath::Circle}) {
    const EmitterPoint p = pointAt(path(kind, kOnly, kOnly, kOnly, kOnly), 0.6f);
    EXPECT_FLOAT_EQ(p.x, 30.0f);
    EXPECT_FLOAT_EQ(p.y, 40.0f);
    if (kind == StandardPath::Circle) continue;  // its direction turns even so
    EXPECT_EQ(p.dirX, 0.0f);
    EXPECT_EQ(p.dirY, 0.0f);
  }
  // Legs of no length are passed over, at the very end of the path too.
  const RenderSettings s = path(StandardPath::Polyline, {0, 0}, {0, 0}, {10, 0}, {10, 0});
  EXPECT_EQ(pointAt(s, 0.0f).x, 0.0f);
  EXPECT_EQ(pointAt(s, 0.5f).x, 5.0f);
  EXPECT_EQ(pointAt(s, 1.0f).x, 10.0f);
}

}  // namespace
