// Scene files and their masks: what they say, and what is said about wrong ones.
#include <gtest/gtest.h>

#include "scene/mask.h"
#include "scene/scene.h"
#include "scene/text/errors.h"
#include "tests/support/complaints.h"
#include "tests/support/folder_test.h"

namespace {

class SceneTest : public tests::FolderTest {
 protected:
  scene::Scene sceneOf(const std::string& text) const {
    write("s.toml", text);
    return scene::readScene(path("s.toml"));
  }
  scene::Mask mask(const std::string& text) const {
    return sceneOf(text).layers.at(0).mask.value();
  }

  // The message without the folder in front: "s.toml:2: ...".
  std::string complaint(const std::string& text) const {
    std::string message = tests::errorOf<scene::WorkError>([&] { sceneOf(text); });
    const std::string folder = path("");
    for (std::size_t at; (at = message.find(folder)) != std::string::npos;) {
      message.erase(at, folder.size());
    }
    return message;
  }
};

TEST_F(SceneTest, EveryKeyIsRead) {
  const scene::Scene read = sceneOf(R"(
[scene]
size = [1920, 1080]
frames = 120
preroll = 50
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
  EXPECT_EQ(read.size, (brisel::FrameSize{1920, 1080}));
  EXPECT_EQ(read.frames, 120);
  EXPECT_EQ(read.preroll, 50);
  EXPECT_EQ(read.rate, (scene::FrameRate{30000, 1001}));
  EXPECT_EQ(read.depth, 16);
  EXPECT_EQ(sceneOf("[scene]\ndepth = 8\n").depth, 8);
  EXPECT_FALSE(read.highQuality);
  EXPECT_EQ(read.input, path("media/title.png")) << "relative to the scene";
  ASSERT_EQ(read.layers.size(), 1u);
  const auto& settings = read.layers[0].settings;
  ASSERT_EQ(settings.size(), 4u);
  EXPECT_EQ(settings[0].label, "Type") << "in the order of the file";
  ASSERT_EQ(settings[1].keys.size(), 2u);
  EXPECT_EQ(settings[1].keys[1].time, 10.5);
  EXPECT_EQ(std::get<double>(settings[1].keys[1].value), 2.5);
  EXPECT_EQ(std::get<bool>(settings[2].keys[0].value), true);
  EXPECT_EQ(std::get<std::vector<double>>(settings[3].keys[0].value), (std::vector{0.5, 1.0}));
}

TEST_F(SceneTest, ALayersMaskWinsOverTheScenes) {
  write("f.svg", "<svg><path id='dot' d='M5 5'/></svg>");
  const scene::Scene read = sceneOf(R"(
[[layer]]
name = "tail"
mask = "f.svg#dot"
[[layer]]
[layer.mask]
path = "M 1 1"
[[layer]]
[mask]
path = "M 0 0"
)");
  ASSERT_EQ(read.layers.size(), 3u);
  for (const auto& [layer, x] : {std::pair{0, 5}, {1, 1}, {2, 0}}) {
    const auto& mask = read.layers.at(static_cast<std::size_t>(layer)).mask.value();
    EXPECT_EQ(shapeAt(mask, 0).vertices[0].point.x, x);
  }
  EXPECT_EQ(layerPrefix(read, 0), "layer \"tail\": ");
  EXPECT_EQ(layerPrefix(read, 1), "layer 2: ");
  EXPECT_EQ(layerPrefix(sceneOf("[[layer]]\nname = \"alone\""), 0), "");
}

TEST_F(SceneTest, AMaskIsReadFromItsTable) {
  const scene::Mask read = mask("[mask]\npath = \"M 1 2 L 3 4 Z\"\ninverted = true\n");
  ASSERT_EQ(read.keys.size(), 1u);
  EXPECT_TRUE(read.inverted && read.keys[0].value.closed);
  EXPECT_EQ(read.keys[0].value.vertices.size(), 2u);
  EXPECT_EQ(shapeAt(read, 77).vertices[1].point.x, 3);
  EXPECT_FALSE(mask("[mask]\npath = \"\"\"\nM 1 2\n   3 4\n\"\"\"").inverted);
}

TEST_F(SceneTest, AMaskIsReadFromAnSvgFileBesideTheScene) {
  std::filesystem::create_directory(path("media"));
  write("media/a#b.svg", "<svg><path id='star' d='M0 0H5V5Z'/></svg>");
  const scene::Mask read = mask("[scene]\nmask = \"media/a#b.svg#star\"\n");
  EXPECT_EQ(shapeAt(read, 0).vertices.size(), 3u);
  EXPECT_TRUE(shapeAt(read, 0).closed);
}

TEST_F(SceneTest, MaskKeyframesBlendVertexByVertex) {
  const scene::Mask read = mask(R"([mask]
path = [ { frame = 10, value = "M 0 0 L 10 0" }, { frame = 20, value = "M 0 8 C 1 2 30 0 30 8" } ]
)");
  EXPECT_EQ(shapeAt(read, 0).vertices[1].point.x, 10) << "the first one holds before it";
  EXPECT_EQ(shapeAt(read, 99).vertices[1].point.x, 30);
  const scene::MaskShape shape = shapeAt(read, 12.5);
  EXPECT_FALSE(shape.closed);
  EXPECT_EQ(shape.vertices[0].point.y, 2);
  EXPECT_EQ(shape.vertices[0].out.x, 0.25);
  EXPECT_EQ(shape.vertices[1].in.x, 15);
}

TEST_F(SceneTest, ErrorsNameLineKeyAndWhatIsValid) {
  std::string tooManyLayers;
  for (int i = 0; i < 65; ++i) tooManyLayers += "[[layer]]\n";
  std::string tooManyKeyframes = "[params]\nSize=[";  // 50,000 for all, one of a layer's own
  for (int i = 0; i < 50'000; ++i) {
    tooManyKeyframes += "{frame=" + std::to_string(i) + ",value=1},";
  }
  tooManyKeyframes += "]\n[[layer]]\n[layer.params]\nWind=1\n";
  for (int i = 0; i < 4; ++i) tooManyKeyframes += "[[layer]]\n";
  write("f.svg", "<svg>\n<path id='bad' d='M 0 0 L 1'/><path id='ok' d='M0 0'/></svg>");
  const tests::Complaints cases = {
      {"[scene]\nsizes = [1, 2]", "s.toml:2: unknown key \"sizes\"; the nearest is \"size\""},
      {"[scene]\ninput = \"a.png\\u0000b\"", "s.toml:2: input holds a NUL character"},
      {"[scene]\nmask = \"a.svg\\u0000#b\"", "s.toml:2: mask holds a NUL character"},
      {"[scene]\n" + std::string(1'000'000, 'k') + " = 1", "s.toml:2: unknown key \"kkkk"},
      {"[parms]\n", "s.toml:1: unknown table \"parms\"; the nearest is \"params\""},
      {"size = [1, 2]", "s.toml:1: \"size\" belongs under [scene]"},
      {"scene = 3", "s.toml:1: \"scene\" is a table"},
      {"[scene]\nsize = [0, 2]", "s.toml:2: size is [WIDTH, HEIGHT], each from 1 to 30000"},
      {"[scene]\nframes = 1.5", "s.toml:2: frames is a whole number from 1 to 1000000"},
      {"[scene]\npreroll = -1", "s.toml:2: preroll is a whole number from 0 to 1000000"},
      {"[scene]\nfps = nan", "s.toml:2: fps is a number above 0"},
      {"[scene]\ndepth = 32", "s.toml:2: depth is 8 or 16"},
      {"[scene]\nquality = \"best\"", "s.toml:2: quality is \"high\" or \"low\", not \"best\""},
      {"[scene]\ninput = 3", "s.toml:2: input is text in quotes"},
      {"\n[params]\n\"Size\" = inf", "s.toml:3: \"Size\": a number must be finite"},
      {"[params]\n\"Start\" = [0.5, \"x\"]", "s.toml:2: \"Start\": a list holds numbers only"},
      {"[params]\n\"Size\" = 1979-05-27", "s.toml:2: \"Size\": a value is a number"},
      {"[params]\n\"Size\" = [{frame=0}]", "s.toml:2: \"Size\": a keyframe reads {"},
      {"[params]\n\"Size\" = [{frame=0,vaule=1}]", "s.toml:2: \"Size\": a keyframe reads {"},
      {"[params]\n\"Size\" = [{frame=0,value=1,eas=1}]",
       "s.toml:2: unknown key of a keyframe \"eas\"; the nearest is \"ease\""},
      {"[params]\n\"Size\" = [{frame=\"1.5\",value=1}]",
       "s.toml:2: \"Size\": frame is a number, or a time such as \"1.5s\""},
      {"[params]\n\"Size\" = [{frame=-1e308,value=1}]",
       "s.toml:2: \"Size\": frame is a number, or a time such as \"1.5s\", at most 1000000"},
      {"[params]\n\"Size\" = [{frame=0,value=1,ease=[0,1e308,1,0]}]",
       "s.toml:2: \"Size\": ease is a name such as \"in-out\", or the handles [x1, y1, x2, y2] of "
       "a curve, x1 and x2 from 0 to 1, y1 and y2 from -1000 to 1000"},
      {"[params]\n\"Size\" = [{frame=0,value=1,ease=\"inout\"}]",
       "s.toml:2: \"Size\": there is no ease \"inout\"; the nearest is \"in-out\""},
      {"[params]\n\"Size\" = [{frame=0,value=1,ease=[0,0,1.1,1]}]",
       "s.toml:2: \"Size\": ease is a name such as \"in-out\", or the handles"},
      {"[params]\n\"Size\" = [{frame=0,value=[{frame=0,value=1}]}]", "s.toml:2: \"Size\": a list"},
      {"[scene]\nfps = 25\nfps = 30", "s.toml:3: \"fps\" is given a second time"},
      {"[params]\n\"Time life\"=1\n \"Time life\"  = 2", "s.toml:3: \"Time life\" is given a sec"},
      {"[params]\n'a=b' = {x = 1,x = 2}", "s.toml:2: \"x\" is given a second time"},
      {"[scene]\n[params]\n[scene]  # again", "s.toml:3: [scene] is given a second time"},
      {"[scene\n", "s.toml:1: "},
      {"\n[layer]\n", "s.toml:2: \"layer\" is a list of tables, each written [[layer]]"},
      {"layer = []", "s.toml:1: \"layer\" is a list of tables"},
      {"[[layer]]\n[params]\n[[layer]]\n[params]",
       "s.toml:4: [params] is given a second time; a layer's own is [layer.params]"},
      {"[[layer]]\nframes = 3", "s.toml:2: \"frames\" belongs under [scene]"},
      {"[[layer]]\nSize = 3", "s.toml:2: \"Size\" belongs under [layer.params]"},
      {"path = \"M 0 0\"", "s.toml:1: \"path\" belongs under [mask]"},
      {"[[layer]]\n[layer.parms]",
       "s.toml:2: unknown key of a layer \"parms\"; the nearest is "
       "\"params\""},
      {"[[layer]]\n[layer.mask]\n", "s.toml:2: [layer.mask] has no path"},
      {"[[layer]]\nmask = \"f.svg\"", "s.toml:2: layer.mask is an SVG file and the id of a path"},
      {"[[layer]]\nparams = 3", "s.toml:2: \"layer.params\" is a table, written [layer.params]"},
      {tooManyLayers, "s.toml:65: a scene has 64 layers at most"},
      {tooManyKeyframes, "s.toml: its layers have 250001 keyframes in all, of 250000 at most"},
      {"mask = 3", "s.toml:1: \"mask\" is a table, written [mask]"},
      {"[mask]\n", "s.toml:1: [mask] has no path"},
      {"[mask]\npath = 3", "s.toml:2: path is SVG path data in quotes, or keyframes"},
      {"[mask]\npath = [{frame=0,value=3}]", "s.toml:2: path is SVG path data"},
      {"[mask]\npath = \"M 0 0 L 1\"", "s.toml:2: path: \"L\" takes 2 numbers at a time"},
      {"[mask]\npath = \"M 0 0\"\ninverted = 1", "s.toml:3: inverted is true or false"},
      {"[mask]\npath = [{frame=0,value=\"M 0 0 1 1\"},\n{frame=5,value=\"M 0 0\"}]",
       "s.toml:3: path: the outline at frame 5 has 1 vertex, the one at frame 0 has 2; all"},
      {"[mask]\npath = [{frame=0,value=\"M 0 0\"},\n{frame=5,value=\"M 0 0 Z\"}]",
       "s.toml:3: path: the outline at frame 5 is closed, the one at frame 0 open; all"},
      {"[scene]\nmask = \"f.svg\"", "s.toml:2: mask is an SVG file and the id of a path in it"},
      {"[scene]\nmask = \"none.svg#a\"", "s.toml:2: mask: \"none.svg\" does not exist"},
      {"[scene]\nmask = \"f.svg#bat\"",
       "s.toml:2: mask: \"f.svg\" has no path with the id \"bat\""},
      {"[scene]\nmask = \"f.svg#bad\"", "s.toml:2: mask: f.svg:2: \"L\" takes 2 numbers"},
      {"[mask]\npath = \"M0 0\"\n[scene]\nmask = \"f.svg#ok\"", "s.toml:4: the scene has a mask"}};
  tests::expectComplaints(cases, [this](const std::string& text) { return complaint(text); });
}

}  // namespace
