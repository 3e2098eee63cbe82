// Small readers of what people write: numbers, rates, names, outputs, values over time.
#include <gtest/gtest.h>

#include "cli/media/frame_rate.h"
#include "cli/scene/animation.h"
#include "cli/scene/effect.h"
#include "cli/scene/param_values.h"
#include "cli/scene/scene.h"
#include "cli/support/errors.h"
#include "cli/support/nearest_name.h"
#include "cli/support/numbers.h"
#include "tests/cli/scratch.h"

namespace {

using cli::FrameRate;
using cli::Setting;

constexpr cli::FrameSize kFrame{1000, 500};

TEST(Numbers, OnlyWholeFiniteTextIsANumber) {
  EXPECT_EQ(cli::parseNumber(" -12.5 "), -12.5);
  EXPECT_EQ(cli::parseNumber("+1e3"), 1000);
  for (const char* text : {"", "1.5x", "nan", "inf", "0x10", "1 2"}) {
    EXPECT_FALSE(cli::parseNumber(text)) << text;
  }
  EXPECT_EQ(cli::parseSize("1920x1080"), std::pair(1920, 1080));
  EXPECT_FALSE(cli::parseSize("1920"));
}

TEST(FrameRates, DecimalsBecomeTheFractionMeant) {
  EXPECT_EQ(cli::frameRateFromNumber(29.97), (FrameRate{30000, 1001}));
  EXPECT_EQ(cli::frameRateFromNumber(23.98), (FrameRate{24000, 1001}));
  EXPECT_EQ(cli::frameRateFromNumber(23.976), (FrameRate{24000, 1001}));
  EXPECT_EQ(cli::frameRateFromNumber(12.5), (FrameRate{25, 2}));
  EXPECT_EQ(cli::frameRateFromText("50/2"), (FrameRate{25, 1}));
  for (const char* text : {"0", "-25", "1001", "25/0", "0.0001", "fast", "1/2/3"}) {
    EXPECT_FALSE(cli::frameRateFromText(text)) << text;
  }
}

TEST(NearestName, WordsCountBeforeTyposAndSwapsAreOneTypo) {
  const std::vector<std::string> names = {
      "Blue",  "Type",          "Width",      "Rays count",   "Rays count dispersion",
      "Value", "Size",          "Type glow1", "Type glow2",   "Size dispersion",
      "Wind",  "Initial speed", "snow-grain", "driving-rain", "ring-of-fire"};
  for (const auto& [wanted, nearest] :
       {std::pair{"sise", "Size"},
        {"RAYS COUNTS", "Rays count"},
        {"glow1", "Type glow1"},
        {"type_glow2", "Type glow2"},
        {"Ring", "ring-of-fire"},
        {"rain", "driving-rain"},
        {"size dispersoin", "Size dispersion"},
        {"speed", "Initial speed"},
        {"strength of the wind", "Wind"},
        {"Vlaue", "Value"}}) {  // two edits if not swapped, as "Blue"
    EXPECT_EQ(cli::nearestName(wanted, names), nearest);
  }
  EXPECT_EQ(cli::nearestName("x", {}), "");
  EXPECT_NE(cli::nearestName("?", names), "");
}

TEST(Versions, AreUnpackedAsTheHostPacksThem) {
  EXPECT_EQ(cli::versionText((9u << 26 >> 3 << 3) | (1u << 19) | (5u << 15) | (3u << 11) |
                             (3u << 9) | 17u),
            "73.5.3 release, build 17");
}

// A module's declarations in miniature, one of each kind that takes a value.
class ValuesTest : public ::testing::Test {
 protected:
  ValuesTest() {
    add(PF_Param_FIX_SLIDER, "Size", [](PF_ParamDefUnion& u) {
      u.fd.valid_max = 1000 << 16;
      u.fd.slider_max = 150 << 16;
    });
    add(PF_Param_SLIDER, "Rays", [](PF_ParamDefUnion& u) { u.sd.valid_max = 30; });
    add(PF_Param_ANGLE, "Angle", [](PF_ParamDefUnion&) {});
    add(PF_Param_POINT, "Start", [](PF_ParamDefUnion&) {});
    add(PF_Param_COLOR, "Tint", [](PF_ParamDefUnion&) {});
    add(PF_Param_CHECKBOX, "On", [](PF_ParamDefUnion& u) { u.bd.text = ""; });
    add(PF_Param_POPUP, "Shape", [](PF_ParamDefUnion& u) {
      u.pd.num_choices = 3;
      u.pd.dephault = 1;
      u.pd.names = "Point|Bezier|Circle";
    });
    add(PF_Param_PATH, "Path", [](PF_ParamDefUnion&) {});
  }

  template <typename Fill>
  void add(PF_ParamType type, const char* label, Fill fill) {
    PF_ParamDef def{};
    def.param_type = type;
    std::snprintf(def.name, sizeof def.name, "%s", label);
    fill(def.u);
    ASSERT_EQ(parameters.add(-1, def), PF_Err_NONE) << label;
  }

  cli::Track bind(const Setting& setting) const {
    return cli::bindSettings({setting}, parameters, kFrame).front();
  }

  cli::ParamValue option(const std::string& text) const {
    return cli::valueAt(bind(cli::settingFromOption(text)), 0);
  }
  hostkit::ParameterSet parameters;
};

TEST_F(ValuesTest, OptionsAreReadAsTheirParameterNeedsThem) {
  EXPECT_EQ(option("Size=40")[0], 40);
  EXPECT_EQ(option(" Angle = -450.5 ")[0], -450.5);
  EXPECT_EQ(option("Start=0.5,-1"), (cli::ParamValue{0.5, -1}));
  EXPECT_EQ(option("Tint=#FFcc66"), (cli::ParamValue{255, 204, 102}));
  EXPECT_EQ(option("Tint=#fC6"), option("Tint=#ffcc66"));
  EXPECT_EQ(option("Tint=RebeccaPurple"), option("Tint=#663399"));
  EXPECT_EQ(option("Tint=yellowgreen"), (cli::ParamValue{154, 205, 50}));
  EXPECT_EQ(option("On=true")[0], 1);
  EXPECT_EQ(option("Shape=circle")[0], 3);
  EXPECT_EQ(option("Shape=2")[0], 2);
}

TEST_F(ValuesTest, WhatIsRefusedIsExplained) {
  const tests::Complaints cases = {
      {"Sise=1", "the nearest is \"Size\""},
      {"Size=1000.5", "takes a number from 0 to 1000, not 1000.5"},
      {"Size=nan", "takes a number from 0 to 1000, not \"nan\""},
      {"Size=1,2", "not [1, 2]"},
      {"Rays=4.5", "takes a whole number from 0 to 30, not 4.5"},
      {"Angle=40000", "from -32767 to 32767"},
      {"Start=0.5", "takes a point [x, y] in fractions of the frame, such as [0.5, 0.5], not 0.5"},
      {"Start=500,125",
       "takes a point [x, y], not [500, 125]; pixels? points are fractions of the "
       "frame, here [0.5, 0.25]"},
      {"Start=20,-66", "pixels? points are fractions of the frame, here [0.02, -0.132]"},
      {"Tint=1,2,300", "takes a colour such as"},
      {"Tint=#ffcc6", "takes a colour such as"},
      {"Tint=limegren", "not \"limegren\"; the nearest name is \"limegreen\""},
      {"Tint=FFCC6b", "not \"FFCC6b\"; such digits follow a #: \"#FFCC6b\""},
      {"On=1", "takes true or false, not 1"},
      {"Shape=Cirle", "has no item \"Cirle\"; the nearest is \"Circle\""},
      {"Shape=4", "an item's text or its number from 1 to 3, not 4"},
      {"Path=1", "a scene file gives as [mask]"},
      {"Size", "LABEL=VALUE"}};
  for (const auto& [setting, expected] : cases) {
    const std::string& text = setting;
    const auto message = tests::errorOf<cli::UsageError>([&] { option(text); });
    EXPECT_TRUE(message.starts_with("--set \"" + text + "\": ")) << message;
    EXPECT_NE(message.find(expected), std::string::npos) << text << ": " << message;
  }
}

TEST_F(ValuesTest, KeyframesBlendNumbersAndHoldChoices) {
  const auto animated = [this](const char* label, std::vector<Setting::Key> keys) {
    return bind({label, std::move(keys), "test"});
  };
  const cli::Track size = animated("Size", {{{10}, 100.0}, {{20}, 200.0}, {{40}, 0.0}});
  for (const auto& [frame, value] : {std::pair{0, 100}, {10, 100}, {15, 150}, {35, 50}, {99, 0}}) {
    EXPECT_EQ(cli::valueAt(size, frame)[0], value) << frame;
  }
  const cli::Track point =
      animated("Start", {{{0}, std::vector{0.0, 1.0}}, {{4}, std::vector{1.0, 0.0}}});
  EXPECT_EQ(cli::valueAt(point, 1), (cli::ParamValue{0.25, 0.75}));
  const cli::Track shape =
      animated("Shape", {{{0}, std::string("Point")}, {{10}, std::string("Circle")}});
  EXPECT_EQ(cli::valueAt(shape, 9.5)[0], 1);
  EXPECT_EQ(cli::valueAt(shape, 10)[0], 3);
}

TEST_F(ValuesTest, TheHostGetsPixelsAndRoundedNumbers) {
  const auto set = [this](const char* label, cli::ParamValue value) -> const PF_ParamDefUnion& {
    const hostkit::Parameter& parameter = *parameters.find(label);
    cli::setParameter(parameters, parameter, value, kFrame);
    return parameters.value(parameter.index).u;
  };
  EXPECT_EQ(set("Start", {0.25, 0.5}).td.x_value, 250 << 16);
  EXPECT_EQ(set("Start", {0.25, 0.5}).td.y_value, 250 << 16);
  EXPECT_EQ(set("Rays", {2.6}).sd.value, 3);
  EXPECT_EQ(set("Tint", {127.5, 0, 254.4}).cd.value.blue, 254);
  EXPECT_EQ(set("Angle", {-90}).ad.value, -90 * 65536);
  // Where an ease leads beyond the range.
  EXPECT_EQ(set("Rays", {-0.6}).sd.value, 0);
  EXPECT_EQ(set("Size", {1000.1}).fd.value, 1000 << 16);
  EXPECT_EQ(set("Tint", {-5, 300, 0}).cd.value.green, 255);
  EXPECT_EQ(set("Start", {90, 0}).td.x_value, 32767 << 16);
}

}  // namespace
