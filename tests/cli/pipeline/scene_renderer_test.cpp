// Rendering a scene: what the effect is given, and smaller pictures of a layer, as a host's reduced
// resolution makes them.
#include <gtest/gtest.h>

#include "cli/pipeline/scene_renderer.h"
#include "tests/cli/scratch.h"

namespace {

class SceneRendererTest : public tests::ScratchTest {
 protected:
  // The picture of one frame, at a --scale and a --size.
  cli::Frame picture(const std::string& text, int frame, const std::string& scale = {},
                     const std::string& size = {}) const {
    write("s.toml", text);
    cli::SceneOptions options;
    options.scale = scale;
    options.size = size;
    cli::SceneRenderer renderer(cli::planScene(scene::readScene(path("s.toml")), options));
    hostkit::World output = renderer.newOutput();
    for (int i = 0; i <= frame; ++i) renderer.renderNext(renderer.readNext(), output);
    cli::Frame picture;
    copyFromWorld(output, picture);
    return picture;
  }

  static std::string dots(const cli::Frame& frame) {
    std::string rows;
    for (int y = 0; y < frame.size.height; ++y) {
      for (int x = 0; x < frame.size.width; ++x) {
        rows += frame.row(y)[4 * x + 3] == 0 ? '.' : '*';
      }
      rows += '\n';
    }
    return rows;
  }
};

// One lasting dot, at rest.
constexpr char kDot[] = R"([scene]
size = [16, 7]
[params]
"Type" = "Dots"
"Initial speed" = 0
"Intensity" = 2
"Terminate type" = "Infinity"
)";

TEST_F(SceneRendererTest, PointsAndMasksAreReducedWithTheLayer) {
  const std::string point = std::string(kDot) +
                            "\"Standard path\" = \"Line\"\n\"Start\" = [0.75, 0.5]\n"
                            "\"Control end\" = [0.75, 0.5]\n";
  EXPECT_EQ(dots(picture(point, 0, "1/2")),
            "........\n"
            "......*.\n"
            "........\n"
            "........\n");
  const std::string mask = std::string(kDot) + "[mask]\npath = \"M 8 5\"\n";
  EXPECT_EQ(dots(picture(mask, 0, "1/3")),
            "......\n"
            "..*...\n"
            "......\n");
  EXPECT_EQ(dots(picture(mask, 0, "1/4")),
            "....\n"
            "..*.\n");
}

TEST_F(SceneRendererTest, SpeedsAreReducedWithTheLayer) {
  std::string falling = std::string(kDot) +
                        "\"Standard path\" = \"Line\"\n\"Start\" = [0.5, 0]\n"
                        "\"Control end\" = [0.5, 0]\n\"Gravity\" = 100\n";
  falling.replace(falling.find("16, 7"), 5, "16, 64");
  const auto lowestRow = [&](const std::string& scale) {
    const cli::Frame frame = picture(falling, 6, scale);
    return dots(frame).rfind('*') / static_cast<std::size_t>(frame.size.width + 1);
  };
  EXPECT_EQ(lowestRow(""), 36u);
  EXPECT_EQ(lowestRow("1/2"), 18u);
}

// Before frame 0, during the pre-roll, the mask stands as at frame 0.
TEST_F(SceneRendererTest, StarsAreBornWhereTheMaskIsAtTheTime) {
  const std::string mask = R"([mask]
path = [ { frame = 1, value = "M 2 0" }, { frame = 5, value = "M 10 0" } ]
)";
  for (const int preroll : {0, 2}) {
    std::string scene = kDot + mask;
    scene.insert(scene.find("[params]"), "preroll = " + std::to_string(preroll) + "\n");
    const auto firstRow = [&](int frame) {
      return dots(picture(scene, preroll + frame)).substr(0, 16);
    };
    EXPECT_EQ(firstRow(1), "..*.............");
    EXPECT_EQ(firstRow(3), "..*.*.*.........");
    EXPECT_EQ(firstRow(6), "..*.*.*.*.*.....");
  }
}

TEST(MaskTime, AWholeFrameIsFoundExactly) {
  for (const scene::FrameRate rate : {scene::FrameRate{25, 1}, {30000, 1001}, {1000, 1}, {1, 7}}) {
    for (const int frame : {0, 1, 3, 999'999}) {
      const hostkit::MaskTime time{frame * rate.seconds, rate.seconds,
                                   static_cast<A_u_long>(rate.frames)};
      EXPECT_EQ(cli::frameAt(time, rate), frame) << rate.text();
    }
  }
  EXPECT_EQ(cli::frameAt({1, 1, 50}, {25, 1}), 0.5) << "a host with another time scale";
}

}  // namespace
