// `brisel render` of scenes with several layers, of frames that nobody sees, and on threads.
#include <gtest/gtest.h>

#include "tests/cli/commands/render_fixture.h"

namespace {

using tests::CommandResult;

const std::string kHead = "[scene]\nsize = [64, 36]\nframes = 6\n";

// Glows at the left, rays where the input is bright.
const std::string kGlows = R"("Standard path" = "Point"
"Start" = [0.2, 0.5]
"Type" = "Type glow1"
"Size" = 12
"Initial speed" = 5
"Intensity" = 8
)";
const std::string kRays = R"("Standard path" = "Source as raster mask"
"Type of halo" = "Normal"
"Size" = 16
"Initial speed" = 5
"Intensity" = 8
"Time fade" = 20
)";

std::string layer(const std::string& params, const std::string& keys = {}) {
  return "[[layer]]\n" + keys + "[layer.params]\n" + params;
}

class RenderLayersTest : public tests::RenderTest {
 protected:
  RenderLayersTest() {
    // A bright spot that crosses the right part.
    ffmpeg(
        "-f lavfi -i color=0x101830:s=64x36,format=rgb24 -vf "
        "geq=r='if(lt(hypot(X-40-3*N,Y-18),5),255,r(X,Y))':g='g(X,Y)':b='b(X,Y)' -frames:v 6 "
        "-start_number 0 in_%d.png");
    write("both.toml", kHead + layer(kGlows) + layer(kRays, "name = \"rays\"\n"));
  }

  // The bytes of the frames from the first on.
  std::string rendered(const std::string& arguments, int first = 0) const {
    renders(arguments + " -o o_%d.png --overwrite");
    std::string bytes;
    for (int i = first; i < 6; ++i) bytes += read("o_" + std::to_string(i) + ".png");
    return bytes;
  }
};

TEST_F(RenderLayersTest, EachGoesOverThoseBeforeIt) {
  write("below.toml", kHead + "[params]\n" + kGlows);
  write("above.toml", kHead + "[params]\n\"Size\" = 30\n");
  write("scene.toml", kHead + "[params]\n\"Size\" = 30\n" + layer(kGlows) + layer(""));
  for (const std::string options : {" -i in_%d.png", " -i in_0.png --still --depth 16"}) {
    const std::string depth = options.ends_with("16") ? " --depth 16" : "";
    renders("below.toml -o below_%d.png --overwrite" + options);
    EXPECT_EQ(rendered("scene.toml" + options), rendered("above.toml -i below_%d.png" + depth))
        << options;
  }
}

// Each looks as it does alone, and so the one below may be above.
TEST_F(RenderLayersTest, WithoutAnInputTheyAreAddedAsLight) {
  const std::string rays = "\"Start\" = [0.3, 0.5]\n\"Size\" = 30\n";
  write("rays.toml", kHead + "[params]\n" + rays);
  write("none.toml", kHead + layer("\"Intensity\" = 0\n") + layer(rays));
  write("scene.toml", kHead + layer(kGlows) + layer(rays));
  write("swapped.toml", kHead + layer(rays) + layer(kGlows));
  const std::string add = kHead + "[params]\n\"Mix with original\" = \"Add\"\n";
  write("added.toml", add + layer(kGlows) + layer(rays));
  write("added_swapped.toml", add + layer(rays) + layer(kGlows));
  for (const std::string depth : {"", " --depth 16"}) {
    EXPECT_EQ(rendered("none.toml" + depth), rendered("rays.toml" + depth));
    EXPECT_EQ(rendered("added.toml" + depth), rendered("added_swapped.toml" + depth));
    EXPECT_EQ(rendered("scene.toml" + depth), rendered("swapped.toml" + depth));
    const cli::Frame both = frames("o_5.png").front();
    rendered("rays.toml" + depth);
    const cli::Frame one = frames("o_5.png").front();
    bool isBrighter = false;
    for (std::size_t i = 3; i < one.bytes.size(); i += 4) {
      ASSERT_GE(both.bytes[i], one.bytes[i]);
      isBrighter |= both.bytes[i] > one.bytes[i] && one.bytes[i] > 0;
    }
    EXPECT_TRUE(isBrighter) << "they overlap";
  }
}

TEST_F(RenderLayersTest, EmittersReadTheInputAndNoLayerChangesAnothersStars) {
  const std::string input = " -i in_%d.png";
  write("swapped.toml", kHead + layer(kRays) + layer(kGlows));
  write("rays.toml", kHead + "[params]\n" + kRays);
  const std::string both = rendered("both.toml" + input);
  EXPECT_EQ(both, rendered("swapped.toml" + input)) << "they do not overlap";
  const auto rightOf = [this] {
    std::string bytes;
    for (const cli::Frame& frame : frames("o_5.png")) {
      for (int y = 0; y < 36; ++y) bytes.append(frame.row(y) + 4 * 32, frame.row(y) + 4 * 64);
    }
    return bytes;
  };
  const std::string right = rightOf();
  rendered("rays.toml" + input);
  EXPECT_EQ(right, rightOf());
  rendered("rays.toml --set Intensity=0" + input);
  EXPECT_NE(right, rightOf()) << "there are rays";
}

TEST_F(RenderLayersTest, FramesThatNobodySeesAndThreadsChangeNoPixel) {
  for (const std::string options : {" -i in_%d.png", " -i in_%d.png --depth 16 --preroll 3"}) {
    const std::string all = rendered("both.toml --threads 1" + options);
    const std::string last = read("o_5.png");
    EXPECT_TRUE(all == rendered("both.toml --threads 3" + options));
    EXPECT_NE(last, read("o_4.png"));
    std::filesystem::remove(path("o_5.png"));
    const CommandResult rest = render("both.toml -o o_%d.png --skip-existing" + options);
    const std::string steps = options.ends_with("3") ? "8" : "5";
    EXPECT_NE(rest.err.find("1 frame and " + steps + " steps in "), std::string::npos) << rest.err;
    EXPECT_EQ(read("o_5.png"), last) << options;
  }
}

TEST_F(RenderLayersTest, MixingIsForTheWholeSceneOrForOneLayer) {
  const std::string input = " -i in_0.png --still";
  const auto said = [&](const std::string& scene, const std::string& option = {}) {
    std::vector<std::string> arguments = {"render", scene,   "-i",       "in_0.png", "--still",
                                          "-o",     "o.png", "--frames", "5",        "--overwrite"};
    if (!option.empty()) arguments.insert(arguments.end(), {"--set", option});
    return brisel(arguments).err;
  };
  const std::string open = said("both.toml");
  EXPECT_TRUE(open.starts_with("brisel: note: layer 1: \"Mix with original\" is not set")) << open;
  EXPECT_EQ(open.find("note: layer \"rays\""), std::string::npos) << open;

  // Of the whole scene it leaves out the input, and no layer.
  said("both.toml", "Mix with original=Replace");
  const auto alone = frames("o.png").front();
  EXPECT_EQ(alone.row(0)[3], 0);
  const auto showsLight = [&](int left) {
    for (int y = 0; y < 36; ++y) {
      for (int x = left; x < left + 32; ++x) {
        if (alone.row(y)[4 * x + 3] > 0) return true;
      }
    }
    return false;
  };
  EXPECT_TRUE(showsLight(0) && showsLight(32));

  write("hides.toml", kHead + layer(kGlows) +
                          layer(kRays + "\"Mix with original\" = \"Replace\"\n") +
                          layer("\"Intensity\" = 0\n", "name = \"none\"\n"));
  const std::string hides = said("hides.toml");
  EXPECT_NE(hides.find("note: layer 2: \"Mix with original\" is \"Replace\", which hides"),
            std::string::npos)
      << hides;
  EXPECT_NE(hides.find("warning: layer \"none\": no frame shows a star: \"Intensity\" is 0"),
            std::string::npos)
      << hides;
  EXPECT_EQ(hides.find("warning: layer 1"), std::string::npos) << hides;
}

TEST_F(RenderLayersTest, AModuleThatKnowsNoMessagesRendersOneLayerAsBefore) {
  const std::string deaf = " --module " DEAF_MODULE_PATH;
  EXPECT_EQ(rendered("s.toml --threads 1" + deaf), rendered("s.toml"));
  renders("s.toml -o one.png --frames 5" + deaf);
  EXPECT_EQ(read("one.png"), read("o_5.png"));
  for (const std::string arguments : {"s.toml --threads 2", "both.toml"}) {
    const CommandResult result = render(arguments + " -o new.mov" + deaf);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.isOneSentence()) << result.err;
    EXPECT_NE(result.err.find("module does not know how to"), std::string::npos) << result.err;
    EXPECT_FALSE(std::filesystem::exists(path("new.mov")));
  }
}

}  // namespace
