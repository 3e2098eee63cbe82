// Rendering a scene: what the effect is given, and smaller pictures of a layer, as a host's reduced
// resolution makes them.
#include <gtest/gtest.h>

#include "cli/pipeline/scene_renderer.h"
#include "effect/instance.h"
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

// What a plug-in renders that takes a scene's values without the module.
TEST_F(SceneRendererTest, TheEffectsLibraryMakesTheSameFramesOfALayersValues) {
  write("s.toml", R"([scene]
size = [96, 54]
presets = ["fountain", "sparkle"]
[params]
"Intensity" = [ { frame = 2, value = 40, ease = "in-out" }, { frame = 12, value = 4.7 } ]
"Rays count" = [ { frame = 0, value = 3 }, { frame = 9, value = 8 } ]
"Terminate type" = [ { frame = 0, value = "Fade" }, { frame = 5, value = "Explode" } ]
"Color of particles" = [ { frame = 0, value = "gold" }, { frame = 9, value = "navy" } ]
"Angle" = -33.3
[mask]
path = [ { frame = 0, value = "M 9.3 8 C 30 0 60 50 80 20 Z" },
         { frame = 8, value = "M 50 9 C 3 5.7 60 10 80 40 Z" } ]
inverted = true
)");
  const cli::ScenePlan plan = cli::planScene(scene::readScene(path("s.toml")));
  const scene::LayerValues layer(plan.scene, 0, {plan.layer, plan.rate},
                                 cli::presetsBeside(cli::findModule("")));
  cli::SceneRenderer renderer(plan);
  hostkit::World output = renderer.newOutput();
  brisel::Instance instance;
  hostkit::World alone(96, 54, plan.depth);
  for (int frame = 0; frame < 14; ++frame) {
    renderer.renderNext(renderer.readNext(), output);
    const brisel::MaskOutline mask = layer.maskAt(frame).value();
    const brisel::FrameViews views{
        {alone.bytes().data(), 96, 54, alone.rowBytes(), brisel::PixelFormat::Argb8}};
    ASSERT_TRUE(instance.render(layer.at(frame), frame, views, &mask));
    ASSERT_TRUE(samePixels(alone, output)) << frame;
  }
  EXPECT_GT(instance.starCount(), 20);
}

double meanDifference(cli::Frame a, cli::Frame b) {
  flattenOnBlack(a);
  flattenOnBlack(b);
  EXPECT_EQ(a.bytes.size(), b.bytes.size());
  double sum = 0;
  for (std::size_t i = 0; i < a.bytes.size(); ++i) sum += std::abs(a.bytes[i] - b.bytes[i]);
  return sum / (0.75 * static_cast<double>(a.bytes.size()));  // alpha is not counted
}

// Each pixel the mean of the `by` x `by` ones it replaces, as they look over black.
cli::Frame shrunk(cli::Frame frame, int by) {
  flattenOnBlack(frame);
  cli::Frame small({frame.size.width / by, frame.size.height / by}, cli::Depth::k8);
  for (int y = 0; y < small.size.height; ++y) {
    for (int x = 0; x < small.size.width; ++x) {
      for (int channel = 0; channel < 3; ++channel) {
        int sum = 0;
        for (int i = 0; i < by * by; ++i) {
          const int pixel = (y * by + i / by) * frame.size.width + x * by + i % by;
          const int at = 4 * pixel + channel;
          sum += frame.bytes[static_cast<std::size_t>(at)];
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
