// Eases against worked numbers, and keyframes from the scene's text to a frame's value.
#include <gtest/gtest.h>

#include "cli/scene/scene_plan.h"
#include "cli/support/errors.h"
#include "tests/cli/scratch.h"

namespace {

TEST(Eases, FollowTheCurveOfTheirHandles) {
  // With these handles time runs evenly along the curve: the share is t^2 (3 - 2t).
  const cli::Ease smooth{false, 1.0 / 3, 0, 2.0 / 3, 1};
  EXPECT_NEAR(smooth.share(0.25), 0.15625, 1e-12);
  EXPECT_NEAR(smooth.share(0.5), 0.5, 1e-12);
  EXPECT_NEAR(smooth.share(0.75), 0.84375, 1e-12);
  // Halfway along the curve, at (1 + 3 (x1 + x2)) / 8 and likewise for y.
  EXPECT_NEAR((cli::Ease{false, 0.25, 0.1, 0.25, 1}.share(0.3125)), 0.5375, 1e-12);
  EXPECT_NEAR((cli::Ease{false, 0, 2, 1, 2}.share(0.5)), 1.625, 1e-12) << "beyond the end";
  EXPECT_NEAR((cli::Ease{false, 0, 0, 0, 1}.share(0.125)), 0.5, 1e-12);
}

TEST(Eases, NamesAreThoseOfStyleSheets) {
  const auto at = [](const char* name, double time) {
    return cli::easeByName(name).value().share(time);
  };
  EXPECT_EQ(at("linear", 0.3), 0.3);
  EXPECT_EQ(at("hold", 0.999), 0);
  EXPECT_NEAR(at("in", 0.6575), 0.5, 1e-12) << "halfway along (0.42, 0) and (1, 1)";
  EXPECT_NEAR(at("in-out", 0.5), 0.5, 1e-12);
  for (const double time : {0.0, 0.1, 0.5, 0.9}) {
    EXPECT_NEAR(at("in", time), 1 - at("out", 1 - time), 1e-12);
    EXPECT_LE(at("in", time), time);
  }
  EXPECT_FALSE(cli::easeByName("ease"));
}

class KeyframeTest : public tests::ScratchTest {
 protected:
  cli::ScenePlan plan(const std::string& text) const {
    write("s.toml", text);
    return cli::planScene(cli::readScene(path("s.toml")));
  }
};

TEST_F(KeyframeTest, SecondsAreCountedAtTheScenesRate) {
  const auto plan50 = plan(R"([params]
"Size" = [ { frame = 10, value = 1 }, { frame = "0.5s", value = 2 }, { frame = 26, value = 3 } ]
[mask]
path = [ { frame = "1s", value = "M 0 0" }, { frame = "1.5 s", value = "M 8 0" } ]
[scene]
fps = 50
)");
  EXPECT_EQ(plan50.scene.layers[0].settings[0].keys[1].time, 25);
  EXPECT_EQ(shapeAt(*plan50.scene.layers[0].mask, 50 + 6.25).vertices[0].x, 2);
}

TEST_F(KeyframeTest, AMaskFollowsItsEase) {
  const auto mask = *plan(R"([mask]
path = [ { frame = 0, value = "M 0 0", ease = "hold" },
         { frame = 4, value = "M 8 0", ease = [0, 2, 1, 2] }, { frame = 8, value = "M 16 0" } ]
)")
                         .scene.layers[0]
                         .mask;
  EXPECT_EQ(shapeAt(mask, 3.9).vertices[0].x, 0);
  EXPECT_NEAR(shapeAt(mask, 6).vertices[0].x, 8 + 8 * 1.625, 1e-9);
}

TEST_F(KeyframeTest, KeysOutOfOrderAreRefused) {
  const auto complaint = [this](const std::string& text) {
    const auto message = tests::errorOf<cli::WorkError>([&] { plan(text); });
    return message.substr(std::min(message.size(), path("").string().size()));
  };
  tests::expectComplaints(
      {{"[params]\n\"Size\" = [{frame=26,value=1},\n{frame=\"1s\",value=1}]",
        "s.toml:3: \"Size\": the keyframe at frame 25 (1s) does not come after the one at frame "
        "26"},
       {"[mask]\npath = [{frame=0,value=\"M 0 0\"},\n{frame=0,value=\"M 0 0\"}]",
        "s.toml:3: \"path\": the keyframe at frame 0 does not come after the one at frame 0"}},
      complaint);
}

TEST_F(KeyframeTest, ChoicesTakeNoEase) {
  write("s.toml",
        "[scene]\nsize = [8, 8]\n[params]\n"
        "\"Type\" = [{frame=0,value=1,ease=\"in\"},{frame=9,value=2}]\n");
  const auto result = brisel({"render", "s.toml", "-o", "o.mov"});
  EXPECT_EQ(result.err,
            "brisel: s.toml:4: \"Type\" holds from keyframe to keyframe and takes no ease\n");
}

}  // namespace
