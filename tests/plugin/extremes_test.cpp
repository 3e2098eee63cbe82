// Either end of what each parameter can be: renders stay inside the frame, on the scale, and end.
#include <gtest/gtest.h>

#include "tests/plugin/hosted_effect.h"

namespace {

using hostkit::Parameter;
using tests::EffectTest;

// Sets a parameter to the least or the most that it can be.
void setEnd(hostkit::Session& session, const Parameter& parameter, bool high) {
  hostkit::ParameterSet& parameters = session.parameters();
  const PF_ParamIndex index = parameter.index;
  const double far = high ? 32767 : -32768;
  const auto channel = static_cast<A_u_char>(high ? 255 : 0);
  switch (parameter.type()) {
    case PF_Param_SLIDER:
    case PF_Param_POPUP:
    case PF_Param_FIX_SLIDER: {
      const hostkit::Range range = *validRange(parameter);
      return tests::set(session, parameter.label, high ? range.max : range.min);
    }
    case PF_Param_ANGLE:
      return parameters.setNumber(index, far);
    case PF_Param_CHECKBOX:
      return parameters.setChecked(index, high);
    case PF_Param_POINT:
      return parameters.setPoint(index, far, far);
    case PF_Param_COLOR:
      return parameters.setColor(index, channel, channel, channel);
    default:
      return;
  }
}

TEST_F(EffectTest, EachParameterRendersAtEitherEndOfItsRange) {
  tests::openWithDefaults(session);
  for (const Parameter& parameter : session.parameters().list()) {
    SCOPED_TRACE(parameter.label);
    for (const bool high : {false, true}) {
      session.parameters().resetToDefaults(64, 48);
      setEnd(session, parameter, high);
      for (A_long frame = 0; frame < 4; ++frame) tests::renderFrame(session, {}, frame);
    }
  }
}

}  // namespace
