// Scene files: what they say, and what is said about wrong ones.
#include <gtest/gtest.h>

#include "cli/errors.h"
#include "cli/scene.h"
#include "scratch.h"

namespace {

class SceneTest : public clitest::ScratchTest {
 protected:
  cli::Scene scene(const std::string& text) const {
    write("s.toml", text);
    return cli::readScene(path("s.toml"));
  }

  // The message without the folder: "s.toml:2: ...".
  std::string complaint(const std::string& text) const {
    try {
      scene(text);
    } catch (const cli::WorkError& error) {
      const std::string message = error.what();
      return message.substr(message.find("s.toml"));
    }
    return "none";
  }
};

TEST_F(SceneTest, ReadsEverything) {
  const cli::Scene read = scene(R"(
[scene]
size = [1920, 1080]
frames = 120
fps = 29.97
depth = 16
quality = "low"
input = "media/title.png"
[params]
"Type" = "Type glow1"
"Size" = [ { frame = 0, value = 1 }, { frame = 10.5, value = 2.5 } ]
"Size depend on source" = true
"Start" = [0.5, 1]
)");
  EXPECT_EQ(read.size, (cli::FrameSize{1920, 1080}));
  EXPECT_EQ(read.frames, 120);
  EXPECT_EQ(read.rate, (cli::FrameRate{30000, 1001}));
  EXPECT_EQ(read.depth, cli::Depth::k16);
  EXPECT_FALSE(read.highQuality);
  EXPECT_EQ(read.input, path("media/title.png")) << "relative to the scene";
  ASSERT_EQ(read.settings.size(), 4u);
  EXPECT_EQ(read.settings[0].label, "Type") << "in the order of the file";
  ASSERT_EQ(read.settings[1].keys.size(), 2u);
  EXPECT_EQ(read.settings[1].keys[1].frame, 10.5);
  EXPECT_EQ(std::get<double>(read.settings[1].keys[1].value), 2.5);
  EXPECT_EQ(std::get<bool>(read.settings[2].keys[0].value), true);
  EXPECT_EQ(std::get<std::vector<double>>(read.settings[3].keys[0].value), (std::vector{0.5, 1.0}));
}

TEST_F(SceneTest, AnEmptySceneLeavesAllOpen) {
  const cli::Scene read = scene("");
  EXPECT_FALSE(read.size || read.frames || read.rate);
  EXPECT_TRUE(read.input.empty() && read.highQuality && read.settings.empty());
}

TEST_F(SceneTest, ErrorsNameLineKeyAndWhatIsValid) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"[scene]\nsizes = [1, 2]", "s.toml:2: unknown key \"sizes\"; the nearest is \"size\""},
      {"[parms]\n", "s.toml:1: unknown table \"parms\"; the nearest is \"params\""},
      {"scene = 3", "s.toml:1: \"scene\" is a table"},
      {"[scene]\nsize = [0, 2]", "s.toml:2: size is [WIDTH, HEIGHT], each from 1 to 30000"},
      {"[scene]\nsize = 5", "s.toml:2: size is [WIDTH, HEIGHT]"},
      {"[scene]\nframes = 0", "s.toml:2: frames is a whole number from 1 to 1000000"},
      {"[scene]\nframes = 1.5", "s.toml:2: frames is a whole number"},
      {"[scene]\nfps = -1", "s.toml:2: fps is a number above 0"},
      {"[scene]\nfps = nan", "s.toml:2: fps is a number above 0"},
      {"[scene]\ndepth = 32", "s.toml:2: depth is 8 or 16"},
      {"[scene]\nquality = \"best\"", "s.toml:2: quality is \"high\" or \"low\", not \"best\""},
      {"[scene]\ninput = 3", "s.toml:2: input is text in quotes"},
      {"[mask]\npath = \"M 0 0\"", "s.toml:1: [mask]: masks are not supported yet"},
      {"\n[params]\n\"Size\" = inf", "s.toml:3: \"Size\": a number must be finite"},
      {"[params]\n\"Start\" = [0.5, \"x\"]", "s.toml:2: \"Start\": a list holds numbers only"},
      {"[params]\n\"Size\" = 1979-05-27", "s.toml:2: \"Size\": a value is a number"},
      {"[params]\n\"Size\" = [{frame=0,value=1},\n{frame=0,value=2}]",
       "s.toml:3: \"Size\": the key"},
      {"[params]\n\"Size\" = [{frame=0}]", "s.toml:2: \"Size\": a keyframe reads {"},
      {"[params]\n\"Size\" = [{frame=0,value=[{frame=0,value=1}]}]", "s.toml:2: \"Size\": a list"},
      {"[scene]\nfps = 25\nfps = 30", "s.toml:3: "},
      {"[scene\n", "s.toml:1: "}};
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(complaint(text).substr(0, expected.size()), expected) << complaint(text);
  }
}

TEST_F(SceneTest, AMissingSceneIsNamed) {
  EXPECT_THROW(cli::readScene(path("none.toml")), cli::WorkError);
  EXPECT_THROW(cli::readScene(path("")), cli::WorkError);
}

}  // namespace
