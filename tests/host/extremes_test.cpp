// Every value a user can enter: renders stay inside the frame, on the scale, and end.
#include <gtest/gtest.h>

#include <random>

#include "hosted_effect.h"

namespace {

using hostkit::Parameter;
using hostkit::Range;
using hostkit::Session;
using hosttest::EffectTest;
using hosttest::FrameShape;
using hosttest::renderFrame;
using hosttest::withinFullScale;

constexpr Range kAngles{-32768, 32767};
constexpr Range kPoints{-32768, 32767};

class ExtremesTest : public EffectTest {
 protected:
  void renderFrames(const FrameShape& shape, A_long frames) {
    for (A_long frame = 0; frame < frames; ++frame) {
      ASSERT_TRUE(withinFullScale(renderFrame(session, shape, frame))) << "frame " << frame;
    }
  }
};

// Sets one parameter to a value chosen by `pick` from the range it may take.
template <class Pick>
void setFrom(Session& session, const Parameter& parameter, const Pick& pick) {
  hostkit::ParameterSet& parameters = session.parameters();
  switch (parameter.type()) {
    case PF_Param_SLIDER:
    case PF_Param_POPUP:
      return hosttest::set(session, parameter.label, std::trunc(pick(*validRange(parameter))));
    case PF_Param_FIX_SLIDER:
      return hosttest::set(session, parameter.label, pick(*validRange(parameter)));
    case PF_Param_ANGLE:
      return hosttest::set(session, parameter.label, pick(kAngles));
    case PF_Param_CHECKBOX:
      return parameters.setChecked(parameter.index, pick({0, 1}) > 0.5);
    case PF_Param_POINT:
      return parameters.setPoint(parameter.index, pick(kPoints), pick(kPoints));
    case PF_Param_COLOR: {
      const auto channel = [&] { return static_cast<A_u_char>(pick({0, 255})); };
      return parameters.setColor(parameter.index, channel(), channel(), channel());
    }
    default:
      return;
  }
}

TEST_F(ExtremesTest, EachParameterAtEitherEndOfItsRange) {
  hosttest::openWithDefaults(session);
  for (const Parameter& parameter : session.parameters().list()) {
    SCOPED_TRACE(parameter.label);
    for (const bool high : {false, true}) {
      session.parameters().resetToDefaults(64, 48);
      setFrom(session, parameter, [&](Range range) { return high ? range.max : range.min; });
      renderFrames({}, 4);
    }
  }
}

TEST_F(ExtremesTest, RandomValuesOfEveryParameter) {
  const unsigned seed = std::random_device{}();
  RecordProperty("seed", static_cast<int>(seed));
  std::mt19937 random(seed);
  hosttest::openWithDefaults(session);
  const auto chance = [&](double probability) {
    return std::bernoulli_distribution(probability)(random);
  };
  // Mostly anything in the range, now and then one of its ends.
  const auto anyOf = [&](Range range) {
    if (chance(0.1)) return chance(0.5) ? range.min : range.max;
    return std::uniform_real_distribution(range.min, range.max)(random);
  };
  for (int round = 0; round < 100; ++round) {
    SCOPED_TRACE("seed " + std::to_string(seed) + ", round " + std::to_string(round));
    const FrameShape shape{
        .width = std::uniform_int_distribution(1, 90)(random),
        .height = std::uniform_int_distribution(1, 70)(random),
        .depth = chance(0.5) ? hostkit::Depth::k8 : hostkit::Depth::k16,
        .output = {.rowPadding = 2 * std::uniform_int_distribution(0, 9)(random)}};
    session.parameters().resetToDefaults(shape.width, shape.height);
    const double share = std::uniform_real_distribution(0.0, 1.0)(random);
    for (const Parameter& parameter : session.parameters().list()) {
      if (chance(share)) setFrom(session, parameter, anyOf);
    }
    renderFrames(shape, 3);
    if (HasFailure()) return;
  }
}

}  // namespace
