// The identity of every parameter. Projects store values by position and items by number, so what
// stands here may not change.
#include <gtest/gtest.h>

#include <sstream>

#include "hosted_effect.h"

namespace {

using hostkit::Parameter;
using hostkit::Range;
using hosttest::EffectTest;

constexpr char kDeclared[] = R"(
panel "Information" 470x125
group start "Emmiter"
  panel "Emmiter presets" 1025x75
  path "Path"
  popup "Standard path" default 2
    Point|Bezier|Line|Polyline|Circle|Source as raster mask|Whole field|Contour alpha channel
  group start "Control points"
    point "Start" default 20 % 50 %
    point "End" default 65 % 35 %
    point "Control start" default 35 % 35 %
    point "Control end" default 80 % 50 %
  group end
  popup "Orientation" default 3
    Direct|Centripetal|Perpendicularly|Perpendicularly opposite|Perpendicularly random|Along|Along opposite|Add angle|Random all directions
  angle "Direction" default 0
  fixed slider "Direction dispersion" 0..10000 1..100 default 5
  fixed slider "Completeness of path" -10000..10000 -100..100 default 100
  angle "Shift of path" default 0
  fixed slider "Intensity" 0..10000 0..50 default 5
  slider "Maximum number of stars" 0..30000 10..500 default 300
  fixed slider "Initial speed" -10000..10000 0..100 default 50
  fixed slider "Speed dispersion" 0..10000 1..100 default 5
  fixed slider "Grow up" -10000..10000 -250..250 default 0
  group start "Terminate"
    popup "Terminate type" default 3
      Infinity|Time limited|Fade|Explode|Explode glow|Explode sparks|Flash|Flash glow|Mixt
    fixed slider "Time life" 0..10000 1..100 default 35
    fixed slider "Time life dispersion" 0..100 1..100 default 5
    fixed slider "Time fade" -200..200 -100..100 default 100
    fixed slider "Time of explode" 0..200 1..100 default 75
    popup "Terminate color schema" default 1
      Initial|Custom|Random
    colour "Terminate color" default 1 255 255 255
  group end
  fixed slider "Gravity" -10000..10000 -15..15 default 0
  fixed slider "Wind" -10000..10000 0..100 default 0
  angle "Direction of wind" default 90
  popup "Oscillation" default 1
    None|Swing|Swing synchronous|Round|Round synchronous
  fixed slider "Amplitude of oscillation" -10000..10000 0..100 default 10
  fixed slider "Frequency of oscillation" -10000..10000 0..100 default 10
group end
panel "Stars presets" 1025x75
group start "Geometry"
  popup "Type" default 2
    Dots|Type1|Type2|Type3|Type4|Type5|Type 6|Type 7|Type glow1|Type glow2|Type blics|Random
  fixed slider "Size" 0..1000 0..150 default 25
  checkbox "Size depend on source" default 0
  fixed slider "Size dispersion" 0..1000 0..150 default 5
  fixed slider "Size amplitude of oscillation" -1000..1000 0..100 default 25
  fixed slider "Size frequency of oscillation" 0..1000 0..100 default 25
  fixed slider "Size jittering" 0..1000 0..100 default 25
  fixed slider "Width" 0..1000 0..150 default 50
  slider "Rays count" 0..1000 0..25 default 4
  fixed slider "Rays count dispersion" 0..1000 0..150 default 0
  angle "Angle" default 30
  fixed slider "Angle dispersion" 0..1000 0..150 default 5
  popup "Angle oscillation" default 1
    None|Swing|Swing synchronous|Round|Round synchronous
  fixed slider "Angle amplitude of oscillation" -1000..1000 0..100 default 25
  fixed slider "Angle frequency of oscillation" 0..1000 0..100 default 25
  fixed slider "Angle jittering" 0..1000 0..100 default 0
  group start "Additional elements"
    popup "Type of halo" default 1
      None|Simple|Normal|Star|Random
    fixed slider "Volume of halo" 0..1000 0..150 default 75
    fixed slider "Size of halo" 0..1000 0..100 default 50
    popup "Type of blink" default 1
      None|Ring|Blink|Rainbow|Random
    fixed slider "Volume of blink" 0..1000 0..150 default 75
    fixed slider "Size of blink" 0..1000 0..100 default 50
    fixed slider "Volume dispersion of elements" 0..1000 0..100 default 25
    fixed slider "Size dispersion of elements" 0..1000 0..100 default 25
    fixed slider "Color dispersion of elements" 0..1000 0..100 default 25
  group end
group end
group start "Color"
  fixed slider "Value" -1000..1000 0..150 default 50
  fixed slider "Value dispersion" 0..1000 0..100 default 15
  popup "Color schema" default 1
    Solid|Source
  fixed slider "Colority" 0..1000 0..250 default 100
  fixed slider "Color dispersion" 0..1000 0..100 default 15
  fixed slider "Color rainbow" -10000..10000 -100..100 default 25
  fixed slider "Color amplitude of oscillation" -1000..1000 0..100 default 25
  fixed slider "Color frequency of oscillation" 0..1000 0..100 default 25
  fixed slider "Color jittering" 0..1000 0..100 default 25
  colour "Color of particles" default 0 255 255 255
group end
popup "Add mode" default 2
  Mode#1|Mode#2|Mode#3
popup "Mix with original" default 1
  Replace|Normal|Add
)";

std::ostream& operator<<(std::ostream& out, const std::optional<Range>& range) {
  if (range) out << ' ' << range->min << ".." << range->max;
  return out;
}

// One line as in the table above, a popup's items on a second one.
std::string describe(const Parameter& parameter) {
  const PF_ParamDef& def = parameter.declared;
  const std::string indent(2 * static_cast<std::size_t>(parameter.groupDepth), ' ');
  std::ostringstream line;
  line << indent << hostkit::typeName(def.param_type);
  if (!parameter.label.empty()) line << " \"" << parameter.label << '"';
  switch (def.param_type) {
    case PF_Param_POINT:
      line << " default " << def.u.td.x_dephault / 65536.0 << " % " << def.u.td.y_dephault / 65536.0
           << " %";
      break;
    case PF_Param_COLOR:
      line << " default " << +def.u.cd.dephault.alpha << ' ' << +def.u.cd.dephault.red << ' '
           << +def.u.cd.dephault.green << ' ' << +def.u.cd.dephault.blue;
      break;
    case PF_Param_NO_DATA:
      line << ' ' << def.ui_width << 'x' << def.ui_height;
      break;
    case PF_Param_POPUP:
      line << " default " << def.u.pd.dephault << '\n' << indent << "  " << def.u.pd.names;
      break;
    default:
      line << validRange(parameter) << sliderRange(parameter);
      if (const auto number = defaultNumber(parameter)) line << " default " << *number;
  }
  return line.str();
}

TEST_F(EffectTest, ParametersAreDeclaredInTheirOrderWithTheirLabelsRangesAndItems) {
  session.open();
  std::string declared = "\n";
  for (const Parameter& parameter : session.parameters().list()) {
    if (parameter.index > 0) declared += describe(parameter) + '\n';
  }
  EXPECT_EQ(declared, kDeclared);
  EXPECT_EQ(session.report().numParams, 82);
  EXPECT_EQ(session.parameters().count(), 82);
  EXPECT_EQ(session.parameters().openGroups(), 0);
  ASSERT_TRUE(session.records().customUI.has_value());
  EXPECT_EQ(session.records().customUI->events,
            PF_CustomEFlag_COMP | PF_CustomEFlag_LAYER | PF_CustomEFlag_EFFECT);
}

TEST_F(EffectTest, DeclarationsHoldNothingUnasked) {
  session.open();
  for (const Parameter& parameter : session.parameters().list()) {
    if (parameter.index == 0) continue;
    SCOPED_TRACE(parameter.label);
    const PF_ParamDef& def = parameter.declared;
    const bool isPanel = def.param_type == PF_Param_NO_DATA;
    EXPECT_EQ(def.uu.id, 0);
    EXPECT_EQ(def.flags, 0);
    EXPECT_EQ(def.ui_flags, isPanel ? PF_PUI_CONTROL : 0);
    EXPECT_EQ(parameter.checkboxText, "");
    if (def.param_type == PF_Param_FIX_SLIDER) {
      EXPECT_EQ(def.u.fd.precision, 2);
      EXPECT_EQ(def.u.fd.display_flags, 0);
      EXPECT_STREQ(def.u.fd.value_str, "");
      EXPECT_STREQ(def.u.fd.value_desc, "");
      EXPECT_EQ(def.u.fd.value, def.u.fd.dephault);
    } else if (def.param_type == PF_Param_POPUP) {
      EXPECT_EQ(def.u.pd.value, def.u.pd.dephault);
      EXPECT_EQ(std::size_t(def.u.pd.num_choices), parameter.items.size());
    } else if (def.param_type == PF_Param_POINT) {
      EXPECT_EQ(def.u.td.restrict_bounds, 0);
    }
  }
}

TEST_F(EffectTest, FirstRefusedParameterEndsTheDeclaration) {
  session.records().addParamError = 99;
  session.records().addParamErrorIndex = 40;
  EXPECT_EQ(session.call(PF_Cmd_PARAMS_SETUP), 99);
  EXPECT_EQ(session.parameters().count(), 40) << "nothing is added after the refused one";
  EXPECT_EQ(session.outData().num_params, 0) << "the count is left alone";
  EXPECT_FALSE(session.records().customUI.has_value());
}

TEST_F(EffectTest, RefusedPanelIsReported) {
  session.records().registerUIError = 77;
  EXPECT_EQ(session.call(PF_Cmd_PARAMS_SETUP), 77);
  EXPECT_EQ(session.outData().num_params, 82);
}

}  // namespace
