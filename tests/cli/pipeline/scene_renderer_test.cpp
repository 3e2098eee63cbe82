// Rendering smaller pictures of a layer, as a host's reduced resolution does.
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
    cli::Scene scene = cli::readScene(path("s.toml"));
    applyOptions(scene, options);
    cli::SceneRenderer renderer(cli::planScene(std::move(scene)));
    for (int i = 0; i <= frame; ++i) renderer.renderNext();
    return renderer.picture();
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

double meanDifference(const cli::Frame& a, const cli::Frame& b) {
  std::vector<std::uint8_t> flatA, flatB;
  flattenOnBlack(a, flatA);
  flattenOnBlack(b, flatB);
  EXPECT_EQ(flatA.size(), flatB.size());
  double sum = 0;
  for (std::size_t i = 0; i < flatA.size(); ++i) sum += std::abs(flatA[i] - flatB[i]);
  return sum / static_cast<double>(flatA.size());
}

// Each pixel the mean of the `by` x `by` ones it replaces, as they look over black.
cli::Frame shrunk(const cli::Frame& frame, int by) {
  std::vector<std::uint8_t> flat;
  flattenOnBlack(frame, flat);
  cli::Frame small({frame.size.width / by, frame.size.height / by}, cli::Depth::k8);
  for (int y = 0; y < small.size.height; ++y) {
    for (int x = 0; x < small.size.width; ++x) {
      for (int channel = 0; channel < 3; ++channel) {
        int sum = 0;
        for (int i = 0; i < by * by; ++i) {
          const int pixel = (y * by + i / by) * frame.size.width + x * by + i % by;
          const int at = 3 * pixel + channel;
          sum += flat[static_cast<std::size_t>(at)];
        }
        small.row(y)[4 * x + channel] = static_cast<std::uint8_t>(sum / (by * by));
      }
      small.row(y)[4 * x + 3] = 255;
    }
  }
  return small;
}

// Speeds and gravity in pixels of the layer, sizes as shares of it, points and a preset's points.
TEST_F(SceneRendererTest, AReducedFrameLooksLikeTheFullOneShrunk) {
  const std::string scene = R"([scene]
size = [480, 264]
presets = ["fountain"]
[params]
"Initial speed" = 30
"Gravity" = 4
"Type" = "Type glow1"
"Size" = 12
)";
  const cli::Frame full = picture(scene, 40);
  const double light = meanDifference(full, cli::Frame(full.size, full.depth));
  ASSERT_GT(light, 4) << "something to compare";
  for (const int by : {2, 3, 4}) {
    const cli::Frame expected = shrunk(full, by);
    const cli::Frame reduced = picture(scene, 40, "1/" + std::to_string(by));
    ASSERT_EQ(reduced.size, expected.size);
    EXPECT_LT(meanDifference(reduced, expected), light / 6) << by;
    const std::string size =
        std::to_string(expected.size.width) + "x" + std::to_string(expected.size.height);
    EXPECT_GT(meanDifference(picture(scene, 40, "", size), expected), light / 2)
        << "a small layer is another thing";
  }
}

}  // namespace
