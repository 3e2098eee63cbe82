// `brisel render` on real files: what is written, what is refused, what is left behind.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mount.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <sstream>
#include <thread>
#include <tuple>

#include "tests/cli/pictures_of.h"
#include "tests/cli/scratch.h"

namespace {

using cli::Depth;
using cli::Frame;
using tests::CommandResult;
using Names = std::vector<std::string>;

constexpr char kScene[] = R"([scene]
size = [64, 36]
frames = 6
[params]
"Intensity" = 20
"Size" = 20
"Mix with original" = "Replace"
)";

class RenderTest : public tests::ScratchTest {
 protected:
  RenderTest() { write("s.toml", kScene); }

  // "render" and the words.
  CommandResult render(const std::string& text) const {
    Names arguments = tests::words(text);
    arguments.insert(arguments.begin(), "render");
    return brisel(arguments);
  }
  void renders(const std::string& text) const {
    const CommandResult result = render(text);
    ASSERT_EQ(result.exitCode, 0) << text << "\n" << result.err;
  }

  // All frames of a clip or still at its own size.
  std::vector<Frame> frames(const std::string& name, Depth depth = Depth::k8) const {
    return tests::picturesOf(path(name), depth);
  }
  static bool isBlank(const Frame& frame) {
    return std::ranges::all_of(frame.bytes, [](std::uint8_t byte) { return byte == 0; });
  }

  // Of a folder in which there is nothing but numbered frames.
  void expectWholeFrames(const std::string& folder) const {
    for (const auto& entry : std::filesystem::directory_iterator(path(folder))) {
      const std::string name = entry.path().filename();
      if (name.starts_with(".std")) continue;
      EXPECT_TRUE(name.starts_with("f_")) << name;
      EXPECT_EQ(frames(folder + (folder.empty() ? "" : "/") + name).size(), 1u);
    }
  }

  // Waits until the render has written something; false when it ended or took too long.
  bool waitForFile(const std::string& part) const {
    for (int i = 0; i < 1000; ++i) {
      for (const std::string& name : names()) {
        if (name.find(part) != std::string::npos) return true;
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
  }
};

TEST_F(RenderTest, ProgressInALogHasNoControlCharacters) {
  const CommandResult result = render("s.toml -o o.mov");
  EXPECT_TRUE(result.out.empty());
  EXPECT_EQ(result.err.find_first_of("\r\x1b\b"), std::string::npos);
  EXPECT_NE(result.err.find("o.mov: 6 frames in "), std::string::npos) << result.err;
}

TEST_F(RenderTest, AFrameIsTheSameAloneAndInSequence) {
  renders("s.toml -o all_%d.png");
  const CommandResult one = render("s.toml -o one.png --frames 4");
  EXPECT_NE(one.err.find("one.png: 1 of 5 rendered frames in "), std::string::npos) << one.err;
  EXPECT_EQ(read("one.png"), read("all_4.png"));
  EXPECT_NE(read("one.png"), read("all_5.png"));
  renders("s.toml -o clip.mov --codec png");
  EXPECT_EQ(frames("clip.mov")[4].bytes, frames("one.png")[0].bytes);
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

TEST_F(RenderTest, AlphaAndDepthGoThrough) {
  // Nothing is emitted, and what is not covered by a star is the input.
  write("s.toml", "[params]\n\"Intensity\" = 0\n\"Mix with original\" = \"Normal\"\n");
  for (const Depth depth : {Depth::k8, Depth::k16}) {
    const bool deep = depth == Depth::k16;
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
  EXPECT_EQ(info.rate, (cli::FrameRate{30000, 1001}));
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

TEST_F(RenderTest, WhatIsWrongWithOneOfSeveralScenesIsSaidAtOnce) {
  std::filesystem::create_directory(path("other"));
  write("other/s.toml", kScene);
  write("bad.toml", std::string(kScene) + "\"Width\" = -1\n");
  write("short.toml", "[scene]\nframes = 2\n");
  write("x.toml", "[scene]\nframes = 12\n");
  write("x1.toml", kScene);
  const std::vector<std::tuple<std::string, int, std::string>> cases = {
      {"s.toml bad.toml -o o.mov", 2, "several scenes need {scene} in the name of the output"},
      {"s.toml other/s.toml -o {scene}.mov", 2,
       "\"s.toml\" and \"other/s.toml\" would both write \"s.mov\""},
      {"x.toml x1.toml -o {scene}%d.png", 2,
       "\"x.toml\" and \"x1.toml\" would both write \"x10.png"},
      {"s.toml bad.toml -o {scene}.mov", 1, "bad.toml:8: \"Width\" takes a number"},
      {"s.toml none.toml -o {scene}.mov", 1, "the scene \"none.toml\" does not exist"},
      {"s.toml short.toml -o {scene}.mov --frames 3-5", 2,
       "short.toml: --frames \"3-5\": the scene has the frames 0-1"},
      {"s.toml bad.toml -o {scene}.mov --fps 0", 2, "--fps \"0\": a frame rate"}};
  for (const auto& [arguments, exitCode, message] : cases) {
    const CommandResult result = render(arguments);
    EXPECT_EQ(result.exitCode, exitCode) << arguments << ": " << result.err;
    EXPECT_TRUE(result.err.starts_with("brisel: " + message)) << arguments << ": " << result.err;
    EXPECT_FALSE(std::filesystem::exists(path("s.mov"))) << arguments;
  }
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
  EXPECT_EQ(warnings({"far.toml"}), no + "the mask lies outside the layer of 64x36 pixels\n");
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
  EXPECT_EQ(info.rate, (cli::FrameRate{50, 1}));
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

TEST_F(RenderTest, OutputsAreReplacedOnlyOnRequest) {
  write("out.mov", "mine");
  write("f_3.png", "mine");
  for (const std::string output : {"out.mov", "f_%d.png"}) {
    const CommandResult result = render("s.toml -o " + output);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.err.find("exists already"), std::string::npos) << result.err;
  }
  EXPECT_EQ(read("out.mov"), "mine");
  EXPECT_EQ(names(), (Names{"f_3.png", "out.mov", "s.toml"}));
  renders("s.toml -o out.mov --overwrite");
  EXPECT_EQ(frames("out.mov").size(), 6u);
}

TEST_F(RenderTest, WhatCannotBeDoneIsOneSentenceAndLeavesNothing) {
  write("range.toml", std::string(kScene) + "\"Angle\" = 0\n\"Width\" = 1000.5\n");
  write("mask.toml", "[mask]\npath = \"M 0\"\n");
  write("input.toml", "[scene]\nframes = 3\ninput = \"none.png\"\n");
  write("broken.png", "no picture");
  ffmpeg("-f lavfi -i testsrc2=s=64x36 -frames:v 40 -pix_fmt yuv420p -movflags +faststart a.mp4");
  write("cut.mp4", read("a.mp4").substr(0, read("a.mp4").size() * 2 / 3));
  write("cut.toml",
        "[scene]\nframes = 40\ninput = \"cut.mp4\"\n[params]\n\"Mix with original\" = 2\n");
  write("file", "");
  const std::vector<std::tuple<std::string, int, std::string>> cases = {
      {"none.toml -o o.mov", 1, "the scene \"none.toml\" does not exist"},
      {". -o o.mov", 1, "the scene \".\" is a folder"},
      {"range.toml -o o.mov", 1,
       "range.toml:9: \"Width\" takes a number from 0 to 1000, not 1000.5"},
      {"mask.toml -o o.mov", 1, "mask.toml:2: path: \"M\" takes 2 numbers"},
      {"input.toml -o o.mov", 1, "input.toml:3: the input \"none.png\" does not exist"},
      {"s.toml -i none.mov -o o.mov", 1, "the input \"none.mov\" does not exist"},
      {"s.toml -i broken.png -o o.mov", 1, "the input \"broken.png\" holds no picture"},
      {"s.toml -i file -o o.mov", 1, "the input \"file\" is empty"},
      {"cut.toml -o o.mov", 1, "cannot read the input \"cut.mp4\": "},
      {"s.toml -o none/o.mov", 1, "the output folder \"none\" does not exist"},
      {"s.toml -o file/o.mov", 1, "\"file\" is not a folder to write into"},
      {"s.toml -o /proc/o.mov", 1, "cannot write "},
      {"s.toml -o o.avi", 2, "cannot tell from its name what to write into \"o.avi\""},
      {"s.toml -o o.png", 2, "holds one frame, not 6"},
      {"s.toml -o o.mov --frames 2-6", 2, "the scene has the frames 0-5"},
      {"s.toml -o o.mov --fps fast", 2, "a frame rate is a number above 0"},
      {"s.toml -o o.mov --set Size=2000", 2, "--set \"Size=2000\": \"Size\" takes a number from 0"},
      {"s.toml", 2, "--output"},
      {"s.toml -o -", 2, "say with --format what to write to standard output"},
      {"s.toml -o - --format apng", 2, "apng tells at its start how many frames follow"},
      {"s.toml -o o.mov --codec qtrle --depth 16", 2, "--codec qtrle holds 8 bits per channel"},
      {"s.toml -o o.mov --module file", 1, "file"},
      {"s.toml -o o.mov --module " NO_ENTRY_POINT_PATH, 1, "EntryPointFunc"},
      {"s.toml -o o.mov --module " OLD_MODULE_PATH, 1, "is too old"}};
  const Names before = names();
  for (const auto& [arguments, exitCode, message] : cases) {
    const CommandResult result = render(arguments);
    EXPECT_EQ(result.exitCode, exitCode) << arguments << ": " << result.err;
    EXPECT_NE(result.err.find(message), std::string::npos) << arguments << ": " << result.err;
    EXPECT_TRUE(result.isOneSentence()) << result.err;
    EXPECT_EQ(names(), before) << arguments;
  }
}

TEST_F(RenderTest, ADamagedInputIsReportedWhenAllOfItsFramesAreWritten) {
  ffmpeg("-f lavfi -i testsrc2=s=64x36 -frames:v 20 -pix_fmt yuv420p -movflags +faststart a.mp4");
  const std::string bytes = read("a.mp4");
  write("cut.mp4", bytes.substr(0, bytes.size() - 200));
  std::string spoilt = bytes;
  spoilt.replace((bytes.find("mdat") + bytes.size()) / 2, 300, 300, 'x');
  write("spoilt.mp4", spoilt);
  write("open.toml", "[params]\n\"Intensity\" = 0\n");
  const CommandResult whole = render("open.toml -i spoilt.mp4 -o whole.mov");
  EXPECT_EQ(whole.exitCode, 1);
  EXPECT_NE(whole.err.find("the input \"spoilt.mp4\" is damaged: "), std::string::npos)
      << whole.err;
  EXPECT_NE(whole.err.find("\"whole.mov\" was written"), std::string::npos) << whole.err;
  EXPECT_EQ(frames("whole.mov").size(), 20u);
  for (const std::string name : {"cut.mp4", "spoilt.mp4"}) {
    const CommandResult accepted =
        render("open.toml -i " + name + " -o o.mov --overwrite --tolerate-damage");
    EXPECT_EQ(accepted.exitCode, 0) << accepted.err;
    EXPECT_NE(accepted.err.find("warning: "), std::string::npos) << accepted.err;
    EXPECT_GE(frames("o.mov").size(), 10u);
  }
}

// Although decoding is ahead of writing when it fails.
TEST_F(RenderTest, FramesBeforeTheDecodersFailureAreWritten) {
  ffmpeg("-f lavfi -i testsrc2=s=64x36 -frames:v 6 -c:v png in.mov");
  write("ffmpeg", "#!/bin/sh\nhead -c $((3 * 64 * 36 * 4)) /dev/zero\necho worn out >&2\nexit 1\n");
  std::filesystem::permissions(path("ffmpeg"), std::filesystem::perms::owner_all);
  const CommandResult result =
      run({"sh", "-c", "PATH=.:$PATH exec " BRISEL_PROGRAM " render s.toml -i in.mov -o f_%d.png"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(
      result.err,
      "brisel: cannot read the input \"in.mov\": worn out; with --tolerate-damage the last frame "
      "before that holds\n");
  EXPECT_EQ(names(), (Names{"f_0.png", "f_1.png", "f_2.png", "ffmpeg", "in.mov", "s.toml"}));
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
  EXPECT_NE(other.err.find("1 of 3 rendered frames"), std::string::npos) << other.err;
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

TEST_F(RenderTest, AnInterruptedRenderLeavesOnlyWholeNumberedFrames) {
  write("s.toml", "[scene]\nsize = [640, 360]\nframes = 5000\n");
  const auto interrupt = [this](const std::string& output, const std::string& begun, int signal) {
    const pid_t process = start({BRISEL_PROGRAM, "render", "s.toml", "-o", output});
    EXPECT_TRUE(waitForFile(begun));
    kill(process, signal);
    const CommandResult result = waitFor(process);
    EXPECT_EQ(result.exitCode, 130);
    EXPECT_NE(result.err.find("brisel: interrupted\n"), std::string::npos) << result.err;
  };
  interrupt("o.mov", "o.mov", SIGINT);
  interrupt("o.mp4", "o.mp4", SIGINT);
  EXPECT_EQ(names(), (Names{"s.toml"}));
  interrupt("f_%04d.png", "f_0003.png", SIGTERM);
  std::filesystem::remove(path("s.toml"));
  EXPECT_LT(names().size(), 5000u);
  expectWholeFrames("");
}

// Such a frame takes seconds, and the encoder has not opened its file yet.
TEST_F(RenderTest, ASecondSignalEndsALongFrameAndLeavesNothing) {
  write("s.toml",
        "[scene]\nsize = [320, 180]\n[params]\n\"Size\" = 1000\n\"Rays count\" = 1000\n"
        "\"Intensity\" = 10000\n\"Maximum number of stars\" = 30000\n");
  const pid_t process = start({BRISEL_PROGRAM, "render", "s.toml", "-o", "o.mp4"});
  ASSERT_TRUE(waitForFile("o.mp4"));
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  kill(process, SIGTERM);
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  kill(process, SIGTERM);
  const CommandResult result = waitFor(process);
  EXPECT_EQ(result.exitCode, 130);
  EXPECT_TRUE(result.err.empty()) << "it had time to end in an orderly way: " << result.err;
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  EXPECT_EQ(names(), (Names{"s.toml"}));
}

TEST_F(RenderTest, AFullDiskOrAFileSizeLimitLeavesOnlyWholeFrames) {
  write("s.toml", "[scene]\nsize = [320, 180]\nframes = 60\n[params]\n\"Intensity\" = 20\n");
  const CommandResult limited =
      run({"sh", "-c", "ulimit -f 60; exec " BRISEL_PROGRAM " render s.toml -o o.mov"});
  EXPECT_EQ(limited.exitCode, 1);
  EXPECT_NE(limited.err.find("cannot write \"o.mov\": "), std::string::npos) << limited.err;
  EXPECT_EQ(names(), (Names{"s.toml"}));

  std::filesystem::create_directory(path("disk"));
  if (mount("tmpfs", path("disk").c_str(), "tmpfs", 0, "size=96k") != 0) {
    GTEST_SKIP() << "a small disk can only be mounted by root";
  }
  for (const std::string output :
       {"o.mov", "o.mp4", "o.gif", "o.apng", "o.webp", "o.webm", "f_%02d.png", "f_%02d.exr"}) {
    const CommandResult result = render("s.toml -o disk/" + output);
    EXPECT_EQ(result.exitCode, 1) << output;
    EXPECT_NE(result.err.find("No space left on device"), std::string::npos) << result.err;
    expectWholeFrames("disk");
  }
  umount(path("disk").c_str());
}

}  // namespace
