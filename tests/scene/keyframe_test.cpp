// Eases against worked numbers, and keyframes from the scene's text to a frame's value.
#include <gtest/gtest.h>

#include "scene/layer_values.h"
#include "scene/text/errors.h"
#include "tests/support/complaints.h"
#include "tests/support/folder_test.h"

namespace {

TEST(Eases, FollowTheCurveOfTheirHandles) {
  // With these handles time runs evenly along the curve: the share is t^2 (3 - 2t).
  const scene::Ease smooth{false, 1.0 / 3, 0, 2.0 / 3, 1};
  EXPECT_NEAR(smooth.share(0.25), 0.15625, 1e-12);
  EXPECT_NEAR(smooth.share(0.5), 0.5, 1e-12);
  EXPECT_NEAR(smooth.share(0.75), 0.84375, 1e-12);
  // Halfway along the curve, at (1 + 3 (x1 + x2)) / 8 and likewise for y.
  EXPECT_NEAR((scene::Ease{false, 0.25, 0.1, 0.25, 1}.share(0.3125)), 0.5375, 1e-12);
  EXPECT_NEAR((scene::Ease{false, 0, 2, 1, 2}.share(0.5)), 1.625, 1e-12) << "beyond the end";
  EXPECT_NEAR((scene::Ease{false, 0, 0, 0, 1}.share(0.125)), 0.5, 1e-12);
}

TEST(Eases, NamesAreThoseOfStyleSheets) {
  const auto at = [](const char* name, double time) {
    return scene::easeByName(name).value().share(time);
  };
  EXPECT_EQ(at("linear", 0.3), 0.3);
  EXPECT_EQ(at("hold", 0.999), 0);
  EXPECT_NEAR(at("in", 0.6575), 0.5, 1e-12) << "halfway along (0.42, 0) and (1, 1)";
  EXPECT_NEAR(at("in-out", 0.5), 0.5, 1e-12);
  for (const double time : {0.0, 0.1, 0.5, 0.9}) {
    EXPECT_NEAR(at("in", time), 1 - at("out", 1 - time), 1e-12);
    EXPECT_LE(at("in", time), time);
  }
  EXPECT_FALSE(scene::easeByName("ease"));
}

class KeyframeTest : public tests::FolderTest {
 protected:
  scene::LayerValues layer(const std::string& text) const {
    write("s.toml", text);
    const scene::Scene read = scene::readScene(path("s.toml"));
    return {read,
            0,
            {{100, 100}, read.rate.value_or(scene::FrameRate{})},
            scene::PresetLibrary(path(""))};
  }

  static double maskAt(const scene::LayerValues& layer, double frame) {
    return layer.maskAt(frame).value().vertices[0].point.x;
  }
};

TEST_F(KeyframeTest, SecondsAreCountedAtTheScenesRate) {
  const auto at50 = layer(R"([params]
"Size" = [ { frame = 10, value = 1 }, { frame = "0.5s", value = 2 }, { frame = 26, value = 3 } ]
[mask]
path = [ { frame = "1s", value = "M 0 0" }, { frame = "1.5 s", value = "M 8 0" } ]
[scene]
fps = 50
)");
  EXPECT_EQ(at50.at(25).number(brisel::kSize), 2);
  EXPECT_EQ(at50.at(25.5).number(brisel::kSize), 2.5);
  EXPECT_EQ(maskAt(at50, 50 + 6.25), 2);
  const auto ntsc = layer(
      "[scene]\nfps = 29.97\n[params]\n"
      "Size = [ { frame = 0, value = 0 }, { frame = '10.01s', value = 300 } ]\n");
  EXPECT_NEAR(ntsc.at(75).number(brisel::kSize), 75, 1e-9);
}

TEST_F(KeyframeTest, AMaskFollowsItsEase) {
  const auto eased = layer(R"([mask]
path = [ { frame = 0, value = "M 0 0", ease = "hold" },
         { frame = 4, value = "M 8 0", ease = [0, 2, 1, 2] }, { frame = 8, value = "M 16 0" } ]
)");
  EXPECT_EQ(maskAt(eased, 3.9), 0);
  EXPECT_NEAR(maskAt(eased, 6), 8 + 8 * 1.625, 1e-5);
}

TEST_F(KeyframeTest, BeforeFrame0AllStandsAsThere) {
  const auto moving = layer(R"([params]
"Size" = [ { frame = -10, value = 0 }, { frame = 10, value = 20 } ]
[mask]
path = [ { frame = -10, value = "M 0 0" }, { frame = 10, value = "M 8 0" } ]
)");
  EXPECT_EQ(moving.at(-5).number(brisel::kSize), 10);
  EXPECT_EQ(maskAt(moving, -5), 4);
}

TEST_F(KeyframeTest, WrongKeysAreRefused) {
  const auto complaint = [this](const std::string& text) {
    const auto message = tests::errorOf<scene::WorkError>([&] { layer(text); });
    return message.substr(std::min(message.size(), path("").string().size()));
  };
  tests::expectComplaints(
      {{"[params]\n\"Size\" = [{frame=26,value=1},\n{frame=\"1s\",value=1}]",
        "s.toml:3: \"Size\": the keyframe at frame 25 (1s) does not come after the one at frame "
        "26"},
       {"[mask]\npath = [{frame=0,value=\"M 0 0\"},\n{frame=0,value=\"M 0 0\"}]",
        "s.toml:3: \"path\": the keyframe at frame 0 does not come after the one at frame 0"},
       {"[params]\n\"Type\" = [{frame=0,value=1,ease=\"in\"},{frame=9,value=2}]",
        "s.toml:2: \"Type\" holds from keyframe to keyframe and takes no ease"}},
      complaint);
}

}  // namespace
