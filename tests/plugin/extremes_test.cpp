// Every value a user can enter: renders stay inside the frame, on the scale, and end.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "tests/plugin/hosted_effect.h"
#include "tests/support/seed.h"

namespace {

using hostkit::Parameter;
using hostkit::Range;
using hostkit::Session;
using tests::EffectTest;
using tests::FrameShape;
using tests::renderFrame;

// What a value may be, and where it usually lies.
struct Choice {
  Range all;
  Range usual;
};

constexpr Choice kAngle{{-32768, 32767}, {-360, 360}};
constexpr Choice kCoordinate{{-32768, 32767}, {-20, 110}};
constexpr Choice kChannel{{0, 255}, {0, 255}};

Choice choiceOf(const Parameter& parameter) {
  const Range all = *validRange(parameter);
  return {all, sliderRange(parameter).value_or(all)};
}

using ExtremesTest = EffectTest;

// Sets one parameter to a value that `pick` takes from its choice.
template <class Pick>
void setFrom(Session& session, const Parameter& parameter, const Pick& pick) {
  hostkit::ParameterSet& parameters = session.parameters();
  const PF_ParamIndex index = parameter.index;
  const auto channel = [&] { return static_cast<A_u_char>(pick(kChannel)); };
  switch (parameter.type()) {
    case PF_Param_SLIDER:
    case PF_Param_POPUP:
      return tests::set(session, parameter.label, std::round(pick(choiceOf(parameter))));
    case PF_Param_FIX_SLIDER:
      return parameters.setNumber(index, pick(choiceOf(parameter)));
    case PF_Param_ANGLE:
      return parameters.setNumber(index, pick(kAngle));
    case PF_Param_CHECKBOX:
      return parameters.setChecked(index, pick(kChannel) > 127);
    case PF_Param_POINT:
      return parameters.setPoint(index, pick(kCoordinate), pick(kCoordinate));
    case PF_Param_COLOR:
      return parameters.setColor(index, channel(), channel(), channel());
    default:
      return;
  }
}

TEST_F(ExtremesTest, EachParameterRendersAtEitherEndOfItsRange) {
  tests::openWithDefaults(session);
  for (const Parameter& parameter : session.parameters().list()) {
    SCOPED_TRACE(parameter.label);
    for (const bool high : {false, true}) {
      session.parameters().resetToDefaults(64, 48);
      setFrom(session, parameter,
              [&](const Choice& choice) { return high ? choice.all.max : choice.all.min; });
      for (A_long frame = 0; frame < 4; ++frame) renderFrame(session, {}, frame);
    }
  }
}

TEST_F(ExtremesTest, RandomValuesOfAllParametersRender) {
  std::mt19937 random(tests::seed());
  tests::openWithDefaults(session);
  const auto chance = [&](double probability) {
    return std::bernoulli_distribution(probability)(random);
  };
  // Mostly what people choose, often anything in the range, now and then one of its ends.
  const auto anyOf = [&](const Choice& choice) {
    if (chance(0.1)) return chance(0.5) ? choice.all.min : choice.all.max;
    const Range range = chance(0.7) ? choice.usual : choice.all;
    return std::uniform_real_distribution(range.min, range.max)(random);
  };
  for (int round = 0; round < 100; ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
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
    // Thousands of stars with a thousand rays each are valid, and take minutes; either is enough.
    const auto countOf = [&](const char* label) -> A_long& {
      return session.parameters().value(session.parameters().find(label)->index).u.sd.value;
    };
    const A_long rays = countOf("Rays count");
    A_long& stars = countOf("Maximum number of stars");
    stars = std::min(stars, A_long{rays > 50 ? 100 : 2000});
    for (A_long frame = 0; frame < 3; ++frame) renderFrame(session, shape, frame);
    if (HasFailure()) return;
  }
}

}  // namespace
