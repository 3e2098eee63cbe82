// `brisel checkpoint`, and renders that begin with its states.
#include <gtest/gtest.h>
#include <libdeflate.h>

#include "cli/scene/star_state.h"
#include "cli/support/errors.h"
#include "tests/cli/commands/render_fixture.h"
#include "tests/support/complaints.h"
#include "tests/support/dice.h"

namespace {

using tests::CommandResult;
using tests::Names;

// Two layers, one of which reads a moving input.
constexpr char kLayers[] = R"([scene]
size = [64, 36]
frames = 30
preroll = 4
input = "in_%d.png"
[params]
"Intensity" = [ { frame = 2, value = 6 }, { frame = 20, value = 14 } ]
"Initial speed" = 4
[[layer]]
[layer.params]
"Standard path" = "Source as raster mask"
"Size" = 14
[[layer]]
mask = "a.svg#m"
[layer.params]
"Type" = "Random"
"Size" = 10
)";

// With the checksum at its end.
std::string sealed(const std::string& bytes) {
  char checksum[9];
  std::snprintf(checksum, sizeof checksum, "%08x", libdeflate_crc32(0, bytes.data(), bytes.size()));
  return bytes + checksum;
}

class CheckpointTest : public tests::RenderTest {
 protected:
  CommandResult checkpoint(const std::string& text) const {
    Names arguments = tests::words(text);
    arguments.insert(arguments.begin(), "checkpoint");
    return brisel(arguments);
  }
  void makeStates(const std::string& text) const {
    const CommandResult result = checkpoint(text);
    ASSERT_EQ(result.exitCode, 0) << result.err;
  }

  // Frames that a render writes, one after another.
  std::string rendered(const std::string& text, int first, int last) const {
    renders(text + " -o o_%d.png --overwrite");
    std::string bytes;
    for (int i = first; i <= last; ++i) bytes += read("o_" + std::to_string(i) + ".png");
    return bytes;
  }
};

TEST_F(CheckpointTest, ARenderGoesOnFromAStateWithTheSameFrames) {
  ffmpeg(
      "-f lavfi -i color=0x101830:s=64x36,format=rgb24 -vf "
      "geq=r='if(lt(hypot(X-2*N,Y-18),9),255,r(X,Y))':g='g(X,Y)':b='b(X,Y)' -frames:v 30 "
      "-start_number 0 in_%d.png");
  write("a.svg", "<svg><path id=\"m\" d=\"M 9 9 C 30 0 60 30 50 30\"/></svg>");
  write("layers.toml", kLayers);
  renders("layers.toml -o o_%d.png");
  std::string whole;
  for (int i = 17; i <= 29; ++i) whole += read("o_" + std::to_string(i) + ".png");

  const CommandResult made = checkpoint("layers.toml --every 8");
  EXPECT_EQ(made.exitCode, 0);
  EXPECT_TRUE(made.err.starts_with("layers_%06d.state: 4 states in ")) << made.err;
  EXPECT_EQ(rendered("layers.toml --from-state layers_000008.state --frames 17-29", 17, 29), whole);
  EXPECT_EQ(rendered("layers.toml --from-state layers_######.state --frames 17-29", 17, 29), whole);
  EXPECT_EQ(rendered("layers.toml --from-state {scene}_%06d.state --frames 3-29", 17, 29), whole);
  const CommandResult rest = render("layers.toml --from-state layers_000016.state -o r_%d.png");
  EXPECT_NE(rest.err.find("r_%d.png: 14 frames in"), std::string::npos) << rest.err;
  EXPECT_EQ(read("r_29.png"), read("o_29.png"));

  // The same input by another name and folder.
  std::filesystem::create_directory(path("elsewhere"));
  for (int i = 0; i < 30; ++i) {
    std::filesystem::rename(path("in_" + std::to_string(i) + ".png"),
                            path("elsewhere/x." + std::to_string(100 + i) + ".png"));
  }
  const std::string moved = "layers.toml -i elsewhere/x.###.png --frames 17-29 --from-state ";
  EXPECT_EQ(rendered(moved + "layers_000016.state", 17, 29), whole);
  ffmpeg("-f lavfi -i testsrc2=s=64x36 -frames:v 1 elsewhere/x.116.png");
  EXPECT_NE(render(moved + "layers_000016.state -o n_%d.png").err.find("the input was 64x36 with"),
            std::string::npos);
}

TEST_F(CheckpointTest, EditsOfWhatFollowsLeaveAStateGood) {
  const std::string head = "[scene]\nsize = [64, 36]\nframes = 40\n[params]\n\"Size\" = ";
  write("s.toml", head + "[ { frame = 0, value = 5 }, { frame = 9, value = 20 } ]\n");
  makeStates("s.toml --every 10");
  write("longer.toml", head +
                           "[ { frame = 0, value = 5 }, { frame = 9, value = 20 }, "
                           "{ frame = 30, value = 3 } ]\n");
  const std::string end = " --frames 38-39";
  const std::string edited = rendered("longer.toml" + end, 38, 39);
  // Up to frame 9 both are the same; the second goes on to another size.
  EXPECT_EQ(rendered("longer.toml --from-state s_000010.state" + end, 38, 39), edited);
  EXPECT_NE(rendered("s.toml" + end, 38, 39), edited);
  EXPECT_EQ(
      render("longer.toml --from-state s_000020.state -o n_%d.png" + end).err,
      "brisel: the state \"s_000020.state\" is of another scene: before frame 20 the values of "
      "layer 1 have changed; \"brisel checkpoint\" makes new ones\n");
  EXPECT_EQ(brisel({"render", "s.toml", "--from-state", "s_000020.state", "--set",
                    "Mix with original=Normal", "-o", "n_%d.png"})
                .exitCode,
            0)
      << "stars are the same in every mix";
}

TEST_F(CheckpointTest, WhatCannotBeTakenIsRefusedByName) {
  makeStates("s.toml --every 2 -o a_%d.state");
  const std::string good = read("a_4.state");
  const auto forge = [&](const std::string& name, const std::string& from, const std::string& to) {
    std::string bytes = good;
    bytes.replace(bytes.find(from), from.size(), to).resize(bytes.size() - 8);
    write(name, sealed(bytes));
  };
  forge("newer.state", "state 1", "state 2");
  forge("swapped.state", "\"little\"", "\"big\"");
  forge("stars.state", "BRISELST", "BRISELXX");
  std::string layers = "\"layers\":[0";
  for (int i = 0; i < 600'000; ++i) layers += ",0";
  forge("head.state", "\"layers\":[", layers + ",");
  forge("frame.state", "\"frame\":4", "\"frame\":-4");
  write("cut.state", good.substr(0, good.size() / 2));
  write("bent.state", good.substr(0, 900) + '?' + good.substr(901));
  write("two.toml", std::string(tests::kScene) + "[[layer]]\n[[layer]]\n");
  const std::string end = "; \"brisel checkpoint\" makes new ones";
  const std::string other = " is of another scene: before frame 4 the ";
  const tests::Complaints complaints = {
      {"newer.state", "the state \"newer.state\" is of another version" + end},
      {"swapped.state", "the state \"swapped.state\" was saved on a machine of another byte order"},
      {"cut.state", "the state \"cut.state\" is damaged or not complete" + end},
      {"bent.state", "the state \"bent.state\" is damaged or not complete" + end},
      {"head.state", "the state \"head.state\" is damaged" + end},
      {"frame.state", "the state \"frame.state\" is damaged" + end},
      {"stars.state",
       "the state \"stars.state\" cannot be taken: the effect module cannot restore"},
      {"s.toml", "the state \"s.toml\" is no state of stars" + end},
      {"b.state", "cannot read the state \"b.state\": No such file"},
      {"b_%d.state", "no file is named as the state \"b_%d.state\" says"},
      {"a_4.state --size 32x18", "the state \"a_4.state\"" + other + "size was 64x36 and is 32x18"},
      {"a_4.state --scale 1/2", "the state \"a_4.state\"" + other + "scale was 1/1 and is 1/2"},
      {"a_4.state --preroll 3",
       "the state \"a_4.state\"" + other + "pre-roll was 0 and is 3" + end},
      {"a_4.state --frames 3-5", "the state \"a_4.state\" is later than frame 3, the first to"}};
  tests::expectComplaints(complaints, [&](const std::string& given) {
    const CommandResult result = render("s.toml -o o_%d.png --from-state " + given);
    EXPECT_NE(result.exitCode, 0) << given;
    EXPECT_TRUE(result.isOneSentence()) << result.err;
    return result.err.substr(8);
  });
  EXPECT_EQ(
      render("two.toml -o o_%d.png --from-state a_4.state").err,
      "brisel: the state \"a_4.state\" is of a scene with another number of layers" + end + "\n");
  EXPECT_NE(checkpoint("s.toml --every 2 -o a_%d.state").err.find("give --overwrite"),
            std::string::npos);
  EXPECT_EQ(
      checkpoint("s.toml").err,
      "brisel: --every 250: the scene has the frames 0-5, which leaves no state to be written\n");
  EXPECT_NE(checkpoint("s.toml -o a.state --every 2").err.find("such as name_%06d.state"),
            std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(path("o_4.png")));
}

TEST_F(CheckpointTest, AnyBytesAreSafe) {
  makeStates("s.toml --every 5 --preset sparkle");
  const std::string good = read("s_000005.state");
  tests::Dice dice(1);
  for (int i = 0; i < 2000; ++i) {
    std::string bytes = good.substr(0, good.size() - 8);
    const int edits = dice.integer(1, 4);
    for (int k = 0; k < edits; ++k) {
      const auto at = static_cast<std::size_t>(dice.integer(15, 500));
      bytes.replace(at, static_cast<std::size_t>(dice.integer(0, 3)),
                    std::string(static_cast<std::size_t>(dice.integer(0, 2)),
                                dice.oneOf({'0', '9', '"', '[', '{', '\n', '\xff'})));
    }
    write("x.state", sealed(bytes));
    try {
      const cli::StarState state = cli::readState(path("x.state"));
      std::size_t size = 0;
      for (const auto& layer : state.layers) size += layer.size();
      EXPECT_LE(size, bytes.size());
    } catch (const cli::WorkError& error) {
      EXPECT_NE(std::string(error.what()).find("x.state"), std::string::npos);
    }
  }
}

// Where stars do not read the input, steps do not decode it.
TEST_F(CheckpointTest, StepsReadTheInputOnlyWhereStarsDo) {
  ffmpeg("-f lavfi -i testsrc2=s=64x36 -frames:v 80 -c:v libx264 -g 10 -pix_fmt yuv420p in.mp4");
  write("ffmpeg", "#!/bin/sh\necho \"$@\" >>log\nPATH=${PATH#*:} exec ffmpeg \"$@\"\n");
  std::filesystem::permissions(path("ffmpeg"), std::filesystem::perms::owner_all);
  const auto asked = [&](const std::string& options) {
    write("log", "");
    const std::string command =
        "PATH=.:$PATH exec " BRISEL_PROGRAM " render s.toml -i in.mp4 " + options;
    EXPECT_EQ(run({"sh", "-c", command}).exitCode, 0) << command;
    return read("log");
  };
  write("s.toml",
        "[scene]\nsize = [64, 36]\n[params]\n\"Size\" = 9\n\"Mix with original\" = \"Add\"\n");
  const std::string source = " --set 'Color schema=Source'";
  for (const std::string& values : {std::string(), source}) {
    const std::string all = asked("-o all_%d.png --overwrite" + values);
    EXPECT_EQ(all.find("-ss"), std::string::npos) << all;
    const std::string some = asked("-o some_%d.png --overwrite --frames 70-79" + values);
    EXPECT_EQ(some.find("-ss") != std::string::npos, values.empty()) << some;
    for (int i = 70; i < 80; ++i) {
      const std::string name = "_" + std::to_string(i) + ".png";
      EXPECT_EQ(read("some" + name), read("all" + name)) << name << values;
    }
  }
}

}  // namespace
