// The same scene file rendered as `brisel render` does, and by the OpenFX plug-in in its small
// host.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "cli/pipeline/scene_renderer.h"
#include "hostkit/openfx/effect.h"
#include "tests/cli/scratch.h"

namespace {

using hostkit::Depth;
using hostkit::OpenFxPicture;
using hostkit::World;

constexpr OfxRectI kFrame{0, 0, 64, 36};
constexpr int kFrames = 13;
constexpr double kStep = 1.0 / 32768;

/// A channel from 0 to 1, in the host's place and order.
double channelOf(const World& world, int x, int y, std::size_t channel) {
  const int row = kFrame.y2 - 1 - y;
  const auto of = [channel](const auto& pixel, double full) {
    const int channels[] = {pixel.red, pixel.green, pixel.blue, pixel.alpha};
    return channels[channel] / full;
  };
  const auto column = static_cast<std::size_t>(x);
  if (world.depth() == Depth::Bits8) return of(world.row8(row)[column], 255);
  return of(world.row16(row)[column], 32768);
}

template <class Function>
void eachChannel(const Function& function) {
  for (int y = kFrame.y1; y < kFrame.y2; ++y) {
    for (int x = kFrame.x1; x < kFrame.x2; ++x) {
      for (std::size_t c = 0; c < 4; ++c) function(x, y, c);
    }
  }
}

class OpenFxFramesTest : public tests::ScratchTest {
 protected:
  /// The greatest difference of a channel, `above` added to those of the program.
  double differenceOf(const std::string& scene, const char* input, const char* depth,
                      double above) const {
    write("s.toml", scene);
    cli::SceneOptions options;
    if (*input != '\0') options.input = path(input).string();
    options.reading.still = *input != '\0';
    options.depth = depth == std::string(kOfxBitDepthByte) ? "8" : "16";
    cli::SceneRenderer renderer(cli::planScene(scene::readScene(path("s.toml")), options));
    World expected = renderer.newOutput();
    OpenFxPicture source({.depth = depth}, kFrame);
    for (int i = 0; i < kFrames; ++i) {
      cli::InputPicture& picture = renderer.readNext();
      renderer.renderNext(picture, expected);
      if (i > 0 || *input == '\0') continue;
      eachChannel([&](int x, int y, std::size_t c) {
        source.setChannel(x, y, c, channelOf(picture.world(), x, y, c));
      });
    }

    hostkit::OpenFxBinary binary(BRISEL_OFX_PATH);
    hostkit::OpenFxHost host;
    const bool isAlone = *input == '\0';
    hostkit::OpenFxEffect effect(host, *binary.plugin(0),
                                 isAlone ? kOfxContextGenerator : kOfxContextFilter);
    effect.parameter("scene").text = path("s.toml").string();
    OpenFxPicture output({.depth = depth}, kFrame);
    EXPECT_EQ(effect.render({.time = kFrames - 1.0, .source = isAlone ? nullptr : &source}, output),
              kOfxStatOK);
    EXPECT_EQ(host.complaints(), std::vector<std::string>());
    double greatest = 0, brightest = 0;
    eachChannel([&](int x, int y, std::size_t c) {
      const double shown = std::min(output.channel(x, y, c), 1.0);  // floats may be above
      const double program = channelOf(expected, x, y, c);
      greatest = std::max(greatest, std::abs(shown - program - above));
      if (isAlone) brightest = std::max(brightest, shown);
    });
    EXPECT_TRUE(brightest > 0.5 || !isAlone) << "there are no stars";
    return greatest;
  }
};

TEST_F(OpenFxFramesTest, AreThoseOfTheProgram) {
  ffmpeg("-f lavfi -i testsrc=s=64x36,format=rgb24 -frames:v 1 still.png");
  const std::string params =
      "[params]\n\"Intensity\" = 20\n\"Size\" = 12\n\"Type of halo\" = \"Normal\"\n"
      "\"Standard path\" = \"Circle\"\n\"Angle\" = [ { frame = 0, value = 10 }, { frame = 12, "
      "value = "
      "90 } ]\n\"Mix with original\" = ";
  const std::string mask = "[mask]\npath = \"M 10 10 L 50 12 L 30 30 Z\"\n";
  const std::string layer = "[[layer]]\n[layer.params]\n\"Size\" = 20\n";
  const std::string head = "[scene]\nsize = [64, 36]\n";
  const std::string over = head + params + "\"Add\"\n";
  const std::string replaced = head + params + "\"Replace\"\n";
  const std::string layers = head + params + "\"Normal\"\n" + mask + layer + layer;
  EXPECT_EQ(differenceOf(replaced, "", kOfxBitDepthByte, 0), 0);
  EXPECT_EQ(differenceOf(over, "still.png", kOfxBitDepthByte, 0), 0);
  EXPECT_EQ(differenceOf(layers, "still.png", kOfxBitDepthByte, 0), 0);
  EXPECT_LT(differenceOf(replaced, "", kOfxBitDepthShort, 0), 1.01 / 65535);
  EXPECT_LT(differenceOf(over, "still.png", kOfxBitDepthShort, 0), 1.01 / 65535);
  // Floats are what the program truncates to a step.
  EXPECT_LT(differenceOf(replaced, "", kOfxBitDepthFloat, 0), 0.01 * kStep);
  EXPECT_LT(differenceOf(over, "still.png", kOfxBitDepthFloat, kStep / 2), 0.51 * kStep);
}

}  // namespace
