// `brisel render` on real files: what is written.
#include <gtest/gtest.h>

#include <sstream>

#include "tests/cli/commands/render_fixture.h"

namespace {

using cli::Depth;
using cli::Frame;
using tests::CommandResult;
using tests::kScene;
using tests::Names;
using tests::RenderTest;

TEST_F(RenderTest, ProgressInALogHasNoControlCharacters) {
  const CommandResult result = render("s.toml -o o.mov");
  EXPECT_TRUE(result.out.empty());
  EXPECT_EQ(result.err.find_first_of("\r\x1b\b"), std::string::npos);
  EXPECT_NE(result.err.find("o.mov: 6 frames in "), std::string::npos) << result.err;
}

// Nothing in the scene changes, so that the steps may be frames or pre-roll.
TEST_F(RenderTest, FrameZeroFollowsThePreroll) {
  renders("s.toml -o all_%d.png");
  renders("s.toml -o rolled_%d.png --preroll 3 --frames 0-2");
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(read("rolled_" + std::to_string(i) + ".png"),
              read("all_" + std::to_string(i + 3) + ".png"));
  }
  ffmpeg("-f lavfi -i testsrc2=s=64x36 -frames:v 6 -c:v png in.mov");
  write("in.toml", "[scene]\ninput = \"in.mov\"\npreroll = 4\n[params]\n\"Intensity\" = 0\n");
  renders("in.toml -o on.mov --codec png");
  const auto in = frames("in.mov");
  const auto out = frames("on.mov");
  ASSERT_EQ(out.size(), 6u);
  for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(out[i].bytes, in[i].bytes) << i;
}

// With pre-roll, frames that are only stepped, and a clip that ends before the scene does.
TEST_F(RenderTest, AnyNumberOfJobsWritesTheSameFrames) {
  ffmpeg("-f lavfi -i testsrc2=s=320x180 -frames:v 9 -pix_fmt yuv420p in.mp4");
  write("in.toml", "[scene]\ninput = \"in.mp4\"\npreroll = 4\nframes = 30\n");
  for (const std::string jobs : {"1", "2", "7"}) {
    const CommandResult result =
        render("in.toml -o " + jobs + "_%d.png --frames 3-29 --jobs " + jobs);
    ASSERT_EQ(result.exitCode, 0) << result.err;
    EXPECT_NE(result.err.find("27 frames and 7 steps in "), std::string::npos) << result.err;
  }
  for (int i = 3; i < 30; ++i) {
    const std::string name = "_" + std::to_string(i) + ".png";
    EXPECT_EQ(read("2" + name), read("1" + name)) << i;
    EXPECT_EQ(read("7" + name), read("1" + name)) << i;
  }
  EXPECT_EQ(render("in.toml -o o.mov --jobs 0").exitCode, 2);
}

TEST_F(RenderTest, AlphaAndDepthGoThrough) {
  // Nothing is emitted, and what is not covered by a star is the input.
  write("s.toml", "[params]\n\"Intensity\" = 0\n\"Mix with original\" = \"Normal\"\n");
  for (const Depth depth : {Depth::Bits8, Depth::Bits16}) {
    const bool deep = depth == Depth::Bits16;
    ffmpeg(
        "-f lavfi -i testsrc2=s=64x36,format=rgba64,"
        "geq=r='r(X,Y)':g='X*900':b='Y*1700':a='X*1000+Y*30' -frames:v 5 -c:v png -pix_fmt " +
        std::string(deep ? "rgba64be" : "rgba") + " in.mov");
    renders(std::string("s.toml -i in.mov -o out.mov --codec png --overwrite --depth ") +
            (deep ? "16" : "8"));
    const auto in = frames("in.mov", depth);
    const auto out = frames("out.mov", depth);
    ASSERT_EQ(out.size(), 5u);
    for (std::size_t i = 0; i < 5; ++i) {
      hostkit::World world(64, 36, depth);
      copyToWorld(in[i], world);
      Frame expected({64, 36}, depth);
      copyFromWorld(world, expected);
      EXPECT_EQ(out[i].bytes, expected.bytes) << i << ": 16 bits keep 15 and a little";
    }
  }
}

TEST_F(RenderTest, SizeLengthAndRateComeFromTheInput) {
  ffmpeg("-f lavfi -i testsrc=s=80x46:r=30000/1001 -frames:v 7 -pix_fmt yuv420p in.mp4");
  write("open.toml", "[scene]\ninput = \"in.mp4\"\n");
  renders("open.toml -o out.mov");
  const cli::MediaInfo info = tests::infoOf(path("out.mov"));
  EXPECT_EQ(info.size, (cli::FrameSize{80, 46}));
  EXPECT_EQ(info.frameCount, 7);
  EXPECT_EQ(info.rate, (scene::FrameRate{30000, 1001}));
}

TEST_F(RenderTest, StarsAreAddedToAnInputUnlessTheSceneSaysHowToMix) {
  ffmpeg("-f lavfi -i testsrc2=s=64x36 -frames:v 1 in.png");
  write("open.toml", "[scene]\ninput = \"in.png\"\nframes = 1\n[params]\n\"Intensity\" = 0\n");
  const std::string note = "brisel: note: \"Mix with original\" is not set";
  const CommandResult open = render("open.toml -o open.png");
  EXPECT_TRUE(open.err.starts_with(note)) << open.err;
  EXPECT_EQ(frames("open.png")[0].bytes, frames("in.png")[0].bytes);

  const CommandResult replaced =
      brisel({"render", "open.toml", "-o", "alone.png", "--set", "Mix with original=Replace"});
  EXPECT_EQ(replaced.err.find(note), std::string::npos) << replaced.err;
  EXPECT_TRUE(isBlank(frames("alone.png")[0]));
  EXPECT_EQ(render("s.toml -o none.mov").err.find(note), std::string::npos) << "no input";
}

TEST_F(RenderTest, SeveralScenesAreRenderedEachUnderItsName) {
  write("t.toml", std::string(kScene) + "\"Type\" = \"Dots\"\n");
  renders("s.toml t.toml -o a_{scene}_%d.png --frames 4-5");
  renders("t.toml -o {scene}.png --frames 5");
  EXPECT_EQ(names(), (Names{"a_s_4.png", "a_s_5.png", "a_t_4.png", "a_t_5.png", "s.toml", "t.png",
                            "t.toml"}));
  EXPECT_EQ(read("a_t_5.png"), read("t.png"));
  EXPECT_NE(read("a_t_5.png"), read("a_s_5.png"));

  write("ffmpeg", "#!/bin/sh\necho worn out >&2\nexit 1\n");
  std::filesystem::permissions(path("ffmpeg"), std::filesystem::perms::owner_all);
  ffmpeg("-f lavfi -i testsrc2=s=64x36 -frames:v 6 -c:v png in.mov");
  write("in.toml", "[scene]\ninput = \"in.mov\"\n[params]\n\"Mix with original\" = 2\n");
  const CommandResult result = run({"sh", "-c",
                                    "PATH=.:$PATH exec " BRISEL_PROGRAM
                                    " render s.toml in.toml t.toml -o '{scene}_%d.png'"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_NE(result.err.find("\nbrisel: in.toml: cannot read the input \"in.mov\": worn out\n"),
            std::string::npos)
      << result.err;
  EXPECT_TRUE(std::filesystem::exists(path("s_5.png")));
  EXPECT_FALSE(std::filesystem::exists(path("t_0.png")));
}

TEST_F(RenderTest, StarsThatCannotBeSeenAreExplained) {
  ffmpeg("-f lavfi -i color=black:s=64x36 -frames:v 1 black.png");
  write("far.toml", std::string(kScene) + "[mask]\npath = \"M 100 0 L 200 50\"\n");
  const auto warnings = [this](const Names& words) {
    Names arguments = {"render", "-o", "o.mov", "--overwrite", "--frames", "0-2"};
    arguments.insert(arguments.end(), words.begin(), words.end());
    const CommandResult result = brisel(arguments);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    std::string found;
    std::istringstream lines(result.err);
    for (std::string line; std::getline(lines, line);) {
      if (line.starts_with("brisel: warning: ")) found += line.substr(17) + "\n";
    }
    return found;
  };
  const std::string no = "no frame shows a star: ";
  EXPECT_EQ(warnings({"s.toml"}), "");
  EXPECT_EQ(warnings({"s.toml", "--set", "Size depend on source=true", "--set", "Type=Dots"}), "");
  EXPECT_EQ(warnings({"s.toml", "--set", "Intensity=0"}), no + "\"Intensity\" is 0\n");
  EXPECT_EQ(warnings({"far.toml"}), no + "the mask lies outside the frame of 64x36 pixels\n");
  const std::string raster = "Standard path=Source as raster mask";
  EXPECT_EQ(
      warnings({"s.toml", "--set", raster}),
      "\"Standard path\" is \"Source as raster mask\", but there is no input, so that nothing "
      "is bright enough for a star; give one with -i\n");
  EXPECT_EQ(
      warnings({"s.toml", "-i", "black.png", "--set", raster, "--set", "Mix with original=Add"}),
      no + "\"Standard path\" is \"Source as raster mask\", and the input may be too dark or "
           "too transparent for that\n");
  EXPECT_TRUE(warnings({"s.toml", "--set", "Start=9,9", "--set", "End=9,9", "--set",
                        "Control start=9,9", "--set", "Control end=9,9"})
                  .starts_with(no + "they may be too small"));
}

TEST_F(RenderTest, OptionsWinOverTheScene) {
  renders("s.toml -o out.mov --codec png --size 40x20 --fps 50 --set Intensity=0 --quality low");
  const cli::MediaInfo info = tests::infoOf(path("out.mov"));
  EXPECT_EQ(info.size, (cli::FrameSize{40, 20}));
  EXPECT_EQ(info.rate, (scene::FrameRate{50, 1}));
  for (const Frame& frame : frames("out.mov")) EXPECT_TRUE(isBlank(frame));
}

TEST_F(RenderTest, KeyframesAreFollowed) {
  write("k.toml", std::string(kScene) +
                      "\"Time life\" = [{frame=0, value=50}]\n\"Initial speed\" = 0\n"
                      "\"Value\" = [ {frame=3, value=0}, {frame=4, value=100} ]\n"
                      "\"Value dispersion\" = 0\n");
  renders("k.toml -o k.mov --codec png");
  const auto all = frames("k.mov");
  for (std::size_t i = 0; i < all.size(); ++i) EXPECT_EQ(isBlank(all[i]), i < 4) << i;
}

TEST_F(RenderTest, MissingAndTornFramesAreFilledIn) {
  renders("s.toml -o f.####.png --start-number 1001");
  renders("s.toml -o e_%d.exr");
  const std::string exr = read("e_2.exr");
  const std::string torn = read("f.1004.png");
  write("f.1004.png", torn.substr(0, torn.size() / 2));
  write("f.1002.png", torn);  // complete, so it stays
  write("e_2.exr", exr.substr(0, exr.size() * 2 / 3));
  const std::string last = read("f.1006.png");
  std::filesystem::remove(path("f.1006.png"));
  const CommandResult result = render("s.toml -o f.####.png --start-number 1001 --skip-existing");
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_NE(result.err.find("4 of 6 frames of \"f.####.png\" are there already"), std::string::npos)
      << result.err;
  EXPECT_EQ(read("f.1004.png"), torn);
  EXPECT_EQ(read("f.1002.png"), torn);
  EXPECT_EQ(read("f.1006.png"), last);
  const CommandResult other = render("s.toml -o e_%d.exr --skip-existing");
  EXPECT_NE(other.err.find("1 frame and 2 steps"), std::string::npos) << other.err;
  EXPECT_EQ(read("e_2.exr"), exr);
}

TEST_F(RenderTest, StandardOutputGetsTheOutputAlone) {
  renders("s.toml -o f_%d.png");
  std::string expected;
  for (int i = 0; i < 6; ++i) expected += read("f_" + std::to_string(i) + ".png");
  const CommandResult pictures = render("s.toml -o - --format png --stats");
  EXPECT_EQ(pictures.out, expected);
  EXPECT_NE(pictures.err.find("limited by"), std::string::npos) << pictures.err;
  for (const std::string format : {"mov", "mp4", "webm", "gif"}) {
    const CommandResult clip = render("s.toml -o - --format " + format);
    EXPECT_EQ(clip.exitCode, 0) << clip.err;
    write("piped." + format, clip.out);
    EXPECT_EQ(tests::infoOf(path("piped." + format)).frameCount, 6) << format;
  }
  const CommandResult unread =
      run({"sh", "-c", "(" BRISEL_PROGRAM " render s.toml -o - --format png; echo $? >&2) | true"});
  EXPECT_EQ(unread.err, "brisel: cannot write standard output: Broken pipe\n1\n");
  // More than a pipe holds.
  ffmpeg("-f lavfi -i testsrc2=s=640x360:d=1,noise=alls=60:allf=t -f lavfi -i sine=d=1 a.mp4");
  const CommandResult unheard =
      run({"sh", "-c",
           "(" BRISEL_PROGRAM " render s.toml -i a.mp4 --size 640x360 -o - --format mp4;"
           " echo $? >&2) | head -c 100"});
  EXPECT_NE(unheard.err.find("Broken pipe\n1\n"), std::string::npos) << unheard.err;
}

}  // namespace
