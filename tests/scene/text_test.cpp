// Small readers of what people write: numbers, rates, names.
#include <gtest/gtest.h>

#include "scene/frame_rate.h"
#include "scene/text/nearest_name.h"
#include "scene/text/numbers.h"
#include "scene/text/printable.h"

namespace {

using scene::FrameRate;

TEST(Numbers, OnlyWholeFiniteTextIsANumber) {
  EXPECT_EQ(scene::parseNumber(" -12.5 "), -12.5);
  EXPECT_EQ(scene::parseNumber("+1e3"), 1000);
  for (const char* text : {"", "1.5x", "nan", "inf", "0x10", "1 2"}) {
    EXPECT_FALSE(scene::parseNumber(text)) << text;
  }
  EXPECT_EQ(scene::parseSize("1920x1080"), std::pair(1920, 1080));
  for (const char* text : {"1920", "x1080", "1920x", "axb"}) {
    EXPECT_FALSE(scene::parseSize(text)) << text;
  }
}

TEST(FrameRates, DecimalsBecomeTheFractionMeant) {
  EXPECT_EQ(scene::frameRateFromNumber(29.97), (FrameRate{30000, 1001}));
  EXPECT_EQ(scene::frameRateFromNumber(23.98), (FrameRate{24000, 1001}));
  EXPECT_EQ(scene::frameRateFromNumber(23.976), (FrameRate{24000, 1001}));
  EXPECT_EQ(scene::frameRateFromNumber(12.5), (FrameRate{25, 2}));
  EXPECT_EQ(scene::frameRateFromText("50/2"), (FrameRate{25, 1}));
  for (const char* text : {"0", "-25", "1001", "25/0", "0.0001", "fast", "1/2/3"}) {
    EXPECT_FALSE(scene::frameRateFromText(text)) << text;
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
    EXPECT_EQ(scene::nearestName(wanted, names), nearest);
  }
  EXPECT_EQ(scene::nearestName("x", {}), "");
  EXPECT_NE(scene::nearestName("?", names), "");
  EXPECT_EQ(scene::orNearest("sise", names), "; the nearest is \"Size\"");
  EXPECT_EQ(scene::orNearest("x", {}), "");
  EXPECT_EQ(scene::orNearest(std::string(257, 'x'), names), "");
  EXPECT_EQ(scene::orNearest(std::string(200, 'x'), {std::string(1 << 20, 'x')}), "");
}

TEST(Messages, TextOfOthersIsNoCommandToATerminal) {
  EXPECT_EQ(scene::printable("\x1B]0;x\a\n\x7F \u009B2J \u00A0é\xC2"),
            "\\x1B]0;x\\x07\\x0A\\x7F \\x9B2J \u00A0é\xC2");
  EXPECT_EQ(scene::printable(std::string_view("a\0b", 3)), "a\\x00b");
  std::string euros;  // of three bytes, and not to be cut apart
  while (euros.size() < 1'000'000) euros += "€";
  const std::string shown = scene::printable(euros);
  EXPECT_EQ(shown.size(), 2 * 1998 + 7u);
  EXPECT_TRUE(shown.starts_with("€€") && shown.ends_with("€€"));
  EXPECT_NE(shown.find("€ [...] €"), shown.npos);
}

}  // namespace
