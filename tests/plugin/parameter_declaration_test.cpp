// The declarations of all parameters, as parameters.txt has them.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "tests/plugin/hosted_effect.h"

namespace {

using hostkit::Parameter;
using hostkit::Range;
using tests::EffectTest;

std::ostream& operator<<(std::ostream& out, const std::optional<Range>& range) {
  if (range) out << ' ' << range->min << ".." << range->max;
  return out;
}

// One line as in parameters.txt, a popup's items on a second one.
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
  std::string declared;
  for (const Parameter& parameter : session.parameters().list()) {
    if (parameter.index > 0) declared += describe(parameter) + '\n';
  }
  std::ifstream file(BRISEL_PARAMETERS_PATH);
  std::string expected;
  for (std::string line; std::getline(file, line);) {
    if (!line.starts_with('#')) expected += line + '\n';
  }
  EXPECT_EQ(declared, expected);
  EXPECT_EQ(session.report().numParams, 82);
  EXPECT_EQ(session.parameters().count(), 82);
  EXPECT_EQ(session.parameters().openGroups(), 0);
  ASSERT_TRUE(session.records().customUI.has_value());
  EXPECT_EQ(session.records().customUI->events,
            PF_CustomEFlag_COMP | PF_CustomEFlag_LAYER | PF_CustomEFlag_EFFECT);
}

TEST_F(EffectTest, DeclarationsHoldOnlyWhatIsAsked) {
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
