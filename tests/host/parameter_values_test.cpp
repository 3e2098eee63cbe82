#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "hostkit/error.h"
#include "hostkit/parameters.h"

namespace {

using hostkit::Error;
using hostkit::ParameterSet;

PF_ParamDef definition(PF_ParamType type, const char* label) {
  PF_ParamDef def{};
  def.param_type = type;
  std::strcpy(def.name, label);
  return def;
}

// 1 slider, 2 fixed slider, 3 popup, 4 point, 5 colour, 6 angle.
ParameterSet declared() {
  ParameterSet parameters;
  PF_ParamDef slider = definition(PF_Param_SLIDER, "Count");
  slider.u.sd.valid_max = 10;
  slider.u.sd.dephault = 4;
  PF_ParamDef fixed = definition(PF_Param_FIX_SLIDER, "Size");
  fixed.u.fd.valid_min = -2 * 65536;
  fixed.u.fd.valid_max = 2 * 65536;
  PF_ParamDef popup = definition(PF_Param_POPUP, "Kind");
  popup.u.pd = {1, 3, 2, "Ring|Blink|None"};
  PF_ParamDef point = definition(PF_Param_POINT, "Start");
  point.u.td.x_dephault = 25 * 65536;
  point.u.td.y_dephault = 50 * 65536;
  for (const PF_ParamDef& def : {slider, fixed, popup, point, definition(PF_Param_COLOR, "Tint"),
                                 definition(PF_Param_ANGLE, "Turn")}) {
    EXPECT_EQ(parameters.add(-1, def), PF_Err_NONE);
  }
  parameters.resetToDefaults(640, 360);
  return parameters;
}

TEST(ParameterValues, DefaultsAreTheDeclaredOnes) {
  const ParameterSet parameters = declared();
  EXPECT_EQ(parameters.value(1).u.sd.value, 4);
  EXPECT_EQ(parameters.value(3).u.pd.value, 2);
  EXPECT_EQ(parameters.value(4).u.td.x_value, 160 << 16);
  EXPECT_EQ(parameters.value(4).u.td.y_value, 180 << 16);
  EXPECT_EQ(parameters.list()[3].items, (std::vector<std::string>{"Ring", "Blink", "None"}));
}

TEST(ParameterValues, AreSetInTheUnitsAPersonSees) {
  ParameterSet parameters = declared();
  parameters.setNumber(1, 7);
  parameters.setNumber(2, -1.5);
  parameters.setItem(3, 3);
  parameters.setPoint(4, 12.5, -0.25);
  parameters.setColor(5, 1, 2, 3);
  parameters.setNumber(6, -725.25);
  EXPECT_EQ(parameters.value(1).u.sd.value, 7);
  EXPECT_EQ(parameters.value(2).u.fd.value, -98304);
  EXPECT_EQ(parameters.value(3).u.pd.value, 3);
  EXPECT_EQ(parameters.value(4).u.td.x_value, 819200);
  EXPECT_EQ(parameters.value(4).u.td.y_value, -16384);
  EXPECT_EQ(parameters.value(5).u.cd.value.blue, 3);
  EXPECT_EQ(parameters.value(6).u.ad.value, -47529984);
}

TEST(ParameterValues, OutOfRangeIsRefusedWithTheLabelAndTheRange) {
  ParameterSet parameters = declared();
  try {
    parameters.setNumber(2, 2.5);
    FAIL() << "2.5 lies above the valid range";
  } catch (const Error& error) {
    EXPECT_STREQ(error.what(), "\"Size\" takes -2 to 2, not 2.5");
  }
  EXPECT_THROW(parameters.setNumber(2, std::nan("")), Error);
  EXPECT_THROW(parameters.setNumber(1, 2.5), Error) << "a fraction";
  EXPECT_THROW(parameters.setNumber(6, INFINITY), Error);
  EXPECT_THROW(parameters.setPoint(4, 0, 1e9), Error);
  EXPECT_THROW(parameters.setItem(3, 0), Error);
  EXPECT_THROW(parameters.setItem(3, 4), Error);
  EXPECT_THROW(parameters.setItem(1, 1), Error) << "of another type";
  EXPECT_THROW(parameters.setNumber(3, 1), Error) << "of another type";
}

TEST(ParameterValues, ChangesAreNoticedOnce) {
  ParameterSet parameters = declared();
  EXPECT_TRUE(parameters.takeChanged());
  EXPECT_FALSE(parameters.takeChanged());
  parameters.setNumber(6, 1);
  EXPECT_TRUE(parameters.takeChanged());
}

TEST(ParameterValues, DeclarationsAHostCannotTakeAreRefused) {
  ParameterSet parameters;
  EXPECT_EQ(parameters.add(5, definition(PF_Param_ANGLE, "Turn")), PF_Err_INVALID_INDEX);
  EXPECT_EQ(parameters.add(-1, definition(PF_Param_POINT_3D, "Space")),
            PF_Err_UNRECOGNIZED_PARAM_TYPE);
  EXPECT_EQ(parameters.add(-1, definition(PF_Param_GROUP_END, "")), PF_Err_BAD_CALLBACK_PARAM);
  EXPECT_EQ(parameters.add(-1, definition(PF_Param_POPUP, "Kind")), PF_Err_BAD_CALLBACK_PARAM);
  PF_ParamDef endless = definition(PF_Param_ANGLE, "");
  std::memset(endless.name, 'x', sizeof endless.name);
  EXPECT_EQ(parameters.add(-1, endless), PF_Err_BAD_CALLBACK_PARAM);
  EXPECT_EQ(parameters.count(), 1);
}

}  // namespace
