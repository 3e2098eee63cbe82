// Parameter values, from what people write to what the effect takes.
#include <gtest/gtest.h>

#include <cmath>

#include "scene/animation.h"
#include "scene/color_text.h"
#include "tests/support/complaints.h"

namespace {

using scene::ParamValue;
using scene::Setting;
using scene::Track;

constexpr brisel::FrameSize kFrame{1000, 500};

Track bind(const Setting& setting) {
  return scene::bindSettings({setting}, kFrame, {}).front();
}

// Of "LABEL=VALUE".
ParamValue option(const std::string& text) {
  const std::size_t equals = text.find('=');
  const auto value = scene::userValueFromText(text.substr(equals + 1));
  return valueAt(bind({text.substr(0, equals),
                       {{{.time = 0, .place = "here"}, value}},
                       "here",
                       scene::Origin::Option}),
                 0);
}

TEST(Values, AreReadAsTheirParameterNeedsThem) {
  EXPECT_EQ(option("Size=40")[0], 40);
  EXPECT_EQ(option("Angle= -450.5 ")[0], -450.5);
  EXPECT_EQ(option("Start=0.5,-1"), (ParamValue{0.5, -1}));
  EXPECT_EQ(option("Terminate color=#FFcc66"), (ParamValue{255, 204, 102}));
  EXPECT_EQ(option("Terminate color=#fC6"), option("Terminate color=#ffcc66"));
  EXPECT_EQ(option("Terminate color=RebeccaPurple"), option("Terminate color=#663399"));
  EXPECT_EQ(option("Terminate color=yellowgreen"), (ParamValue{154, 205, 50}));
  EXPECT_EQ(option("Size depend on source=true")[0], 1);
  EXPECT_EQ(option("Size depend on source= true ")[0], 1);
  EXPECT_EQ(option("Standard path=circle")[0], 5);
  EXPECT_EQ(option("Standard path=2")[0], 2);
}

// A checksum of CSS's table, made when it was compared with that of another program.
TEST(Values, ColorsHaveTheNamesOfCss) {
  const auto names = scene::colorNames();
  double sum = 0;
  for (const std::string& name : names) {
    const auto color = scene::colorFromText(name).value();
    for (const double channel : color) sum = std::fmod(sum * 31 + channel, 1e9);
  }
  EXPECT_EQ(names.size(), 148);
  EXPECT_EQ(sum, 762121530);
}

TEST(Values, WhatIsRefusedIsExplained) {
  const tests::Complaints cases = {
      {"Sise=1", "here: the effect has no parameter \"Sise\"; the nearest is \"Size\""},
      {"Size=1000.5", "here: \"Size\" takes a number from 0 to 1000, not 1000.5"},
      {"Size=nan", "here: \"Size\" takes a number from 0 to 1000, not \"nan\""},
      {"Size=1,2", "here: \"Size\" takes a number from 0 to 1000, not [1, 2]"},
      {"Rays count=4.5", "here: \"Rays count\" takes a whole number from 0 to 1000, not 4.5"},
      {"Angle=40000", "here: \"Angle\" takes an angle in degrees, from -32767 to 32767, not 40000"},
      {"Start=0.5",
       "here: \"Start\" takes a point [x, y] in fractions of the frame, such as [0.5, 0.5], not "
       "0.5"},
      {"Start=500,125",
       "here: \"Start\" takes a point [x, y], not [500, 125]; pixels? points are fractions of the "
       "frame, here [0.5, 0.25]"},
      {"Terminate color=1,2,300", "here: \"Terminate color\" takes a color such as"},
      {"Terminate color=#ffcc6", "here: \"Terminate color\" takes a color such as"},
      {"Terminate color=limegren",
       "here: \"Terminate color\" takes a color such as \"#ffcc66\", \"gold\" or [255, 204, 102], "
       "not \"limegren\"; the nearest name is \"limegreen\""},
      {"Terminate color=FFCC6b",
       "here: \"Terminate color\" takes a color such as \"#ffcc66\", \"gold\" or [255, 204, 102], "
       "not \"FFCC6b\"; such digits follow a #: \"#FFCC6b\""},
      {"Size depend on source=1", "here: \"Size depend on source\" takes true or false, not 1"},
      {"Standard path=Cirle",
       "here: \"Standard path\" has no item \"Cirle\"; the nearest is \"Circle\""},
      {"Standard path=9",
       "here: \"Standard path\" takes an item's text or its number from 1 to 8, not 9"},
      {"Path=1", "here: \"Path\" takes a mask, which a scene file gives as [mask]"},
      {"Information=1", "here: \"Information\" is a panel, which has no value"},
      {"Geometry=1", "here: \"Geometry\" is a group start, which has no value"}};
  tests::expectComplaints(cases, [](const std::string& text) {
    return tests::errorOf<scene::UsageError>([&] { option(text); });
  });
}

TEST(Values, KeyframesBlendNumbersAndHoldChoices) {
  const auto animated = [](const char* label, std::vector<Setting::Key> keys) {
    return bind({label, std::move(keys), "test"});
  };
  const Track size = animated("Size", {{{10}, 100.0}, {{20}, 200.0}, {{40}, 0.0}});
  for (const auto& [frame, value] : {std::pair{0, 100}, {10, 100}, {15, 150}, {35, 50}, {99, 0}}) {
    EXPECT_EQ(valueAt(size, frame)[0], value) << frame;
  }
  const Track point =
      animated("Start", {{{0}, std::vector{0.0, 1.0}}, {{4}, std::vector{1.0, 0.0}}});
  EXPECT_EQ(valueAt(point, 1), (ParamValue{0.25, 0.75}));
  const Track path =
      animated("Standard path", {{{0}, std::string("Point")}, {{10}, std::string("Circle")}});
  EXPECT_EQ(valueAt(path, 9.5)[0], 1);
  EXPECT_EQ(valueAt(path, 10)[0], 5);
}

TEST(Values, TheEffectGetsPixelsAndRoundedNumbers) {
  const auto given = [](brisel::ParamIndex index, const ParamValue& value) {
    brisel::Values values;
    scene::setParameter(values, index, value, kFrame);
    return values[index];
  };
  const auto color = [&](const ParamValue& value) {
    return brisel::toColor(given(brisel::kTerminateColor, value));
  };
  EXPECT_EQ(given(brisel::kStart, {0.25, 0.5}), (brisel::Value{250 << 16, 250 << 16}));
  EXPECT_EQ(given(brisel::kRaysCount, {2.6}).number, 3);
  EXPECT_EQ(color({127.5, 0, 254.4}).blue, 254);
  EXPECT_EQ(given(brisel::kAngle, {-90}).number, -90 * 65536);
  // Where an ease leads beyond the range.
  EXPECT_EQ(given(brisel::kRaysCount, {-0.6}).number, 0);
  EXPECT_EQ(given(brisel::kSize, {1000.1}).number, 1000 << 16);
  EXPECT_EQ(color({-5, 300, 0}).green, 255);
  EXPECT_EQ(given(brisel::kStart, {90, 0}).number, 32767 << 16);
}

}  // namespace
