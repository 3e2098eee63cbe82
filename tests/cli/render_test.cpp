// `brisel render` on real files: what is written, what is refused, what is left behind.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mount.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <thread>

#include "cli/frame_reader.h"
#include "cli/media_info.h"
#include "scratch.h"

namespace {

using cli::Depth;
using cli::Frame;
using clitest::CommandResult;
using Names = std::vector<std::string>;

constexpr char kScene[] = R"([scene]
size = [64, 36]
frames = 6
[params]
"Intensity" = 20
"Size" = 20
)";

class RenderTest : public clitest::ScratchTest {
 protected:
  RenderTest() { write("s.toml", kScene); }

  // "render" and the words.
  CommandResult render(const std::string& text) const {
    Names arguments = clitest::words(text);
    arguments.insert(arguments.begin(), "render");
    return brisel(arguments);
  }
  void renders(const std::string& text) const {
    const CommandResult result = render(text);
    ASSERT_EQ(result.exitCode, 0) << text << "\n" << result.err;
  }

  // All frames of a clip or still at its own size.
  std::vector<Frame> frames(const std::string& name, Depth depth = Depth::k8) const {
    const cli::MediaInfo info = cli::probeMedia(path(name));
    cli::FrameReader reader(path(name), info, info.size, info.rate, depth);
    std::vector<Frame> all;
    for (int i = 0; i < info.frameCount; ++i) all.push_back(reader.next());
    return all;
  }
  static bool isBlank(const Frame& frame) {
    return std::ranges::all_of(frame.bytes, [](std::uint8_t byte) { return byte == 0; });
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

TEST_F(RenderTest, NumberedFramesCarryTheFramesNumber) {
  renders("s.toml -o f_%03d.png --frames 2-4");
  EXPECT_EQ(names(), (Names{"f_002.png", "f_003.png", "f_004.png", "s.toml"}));
}

TEST_F(RenderTest, AFrameIsTheSameAloneAndInSequence) {
  renders("s.toml -o all_%d.png");
  renders("s.toml -o one.png --frames 4");
  EXPECT_EQ(read("one.png"), read("all_4.png"));
  EXPECT_NE(read("one.png"), read("all_5.png"));
  renders("s.toml -o clip.mov");
  EXPECT_EQ(frames("clip.mov")[4].bytes, frames("one.png")[0].bytes);
}

TEST_F(RenderTest, AlphaAndDepthGoThrough) {
  // Nothing is emitted, and what is not covered by a star is the input.
  ffmpeg(
      "-f lavfi -i testsrc2=s=64x36,format=rgba,geq=r='r(X,Y)':g='g(X,Y)':b='b(X,Y)':a='X*4'"
      " -frames:v 5 -c:v qtrle -pix_fmt argb in8.mov");
  ffmpeg(
      "-f lavfi -i testsrc2=s=64x36,format=rgba64,"
      "geq=r='r(X,Y)':g='X*900':b='Y*1700':a='X*1000+Y*30' -frames:v 5 -c:v png "
      "-pix_fmt rgba64be in16.mov");
  write("through.toml", "[params]\n\"Intensity\" = 0\n\"Mix with original\" = \"Normal\"\n");
  renders("through.toml -i in8.mov -o out8.mov");
  renders("through.toml -i in16.mov -o out16.mov --depth 16");
  const auto in8 = frames("in8.mov");
  const auto out8 = frames("out8.mov");
  const auto in16 = frames("in16.mov", Depth::k16);
  const auto out16 = frames("out16.mov", Depth::k16);
  ASSERT_EQ(out8.size(), 5u);
  ASSERT_EQ(out16.size(), 5u);
  for (std::size_t i = 0; i < 5; ++i) {
    EXPECT_EQ(out8[i].bytes, in8[i].bytes) << i;
    hostkit::World world(64, 36, Depth::k16);
    copyToWorld(in16[i], world);
    Frame expected({64, 36}, Depth::k16);
    copyFromWorld(world, expected);
    EXPECT_EQ(out16[i].bytes, expected.bytes) << i << ": 15 bits and a little are kept";
  }
}

TEST_F(RenderTest, SizeLengthAndRateComeFromTheInput) {
  ffmpeg("-f lavfi -i testsrc=s=80x46:r=30000/1001 -frames:v 7 -pix_fmt yuv420p in.mp4");
  write("open.toml", "[scene]\ninput = \"in.mp4\"\n");
  renders("open.toml -o out.mov");
  const cli::MediaInfo info = cli::probeMedia(path("out.mov"));
  EXPECT_EQ(info.size, (cli::FrameSize{80, 46}));
  EXPECT_EQ(info.frameCount, 7);
  EXPECT_EQ(info.rate, (cli::FrameRate{30000, 1001}));
}

TEST_F(RenderTest, OptionsWinOverTheScene) {
  renders("s.toml -o out.mov --size 40x20 --fps 50 --set Intensity=0 --quality low");
  const cli::MediaInfo info = cli::probeMedia(path("out.mov"));
  EXPECT_EQ(info.size, (cli::FrameSize{40, 20}));
  EXPECT_EQ(info.rate, (cli::FrameRate{50, 1}));
  for (const Frame& frame : frames("out.mov")) EXPECT_TRUE(isBlank(frame));
}

TEST_F(RenderTest, KeyframesAreFollowed) {
  write("k.toml", std::string(kScene) +
                      "\"Time life\" = [{frame=0, value=50}]\n\"Initial speed\" = 0\n"
                      "\"Value\" = [ {frame=3, value=0}, {frame=4, value=100} ]\n"
                      "\"Value dispersion\" = 0\n");
  renders("k.toml -o k.mov");
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
  write("label.toml", std::string(kScene) + "\"Sise\" = 3\n");
  write("item.toml", std::string(kScene) + "\"Type\" = \"Type9\"\n");
  write("range.toml", std::string(kScene) + "\"Angle\" = 0\n\"Width\" = 1000.5\n");
  write("group.toml", std::string(kScene) + "\"Color\" = 3\n");
  write("path.toml", std::string(kScene) + "\"Path\" = 1\n");
  write("mask.toml", "[mask]\npath = \"M 0 0\"\n");
  write("input.toml", "[scene]\nframes = 3\ninput = \"none.png\"\n");
  write("broken.png", "no picture");
  write("file", "");
  struct Case {
    std::string arguments;
    int exitCode;
    std::string message;
  };
  const std::vector<Case> cases = {
      {"none.toml -o o.mov", 1, "the scene \"none.toml\" does not exist"},
      {". -o o.mov", 1, "the scene \".\" is a folder"},
      {"label.toml -o o.mov", 1,
       "label.toml:7: the effect has no parameter \"Sise\"; the nearest "
       "is \"Size\""},
      {"item.toml -o o.mov", 1, "item.toml:7: \"Type\" has no item \"Type9\"; the nearest is "},
      {"range.toml -o o.mov", 1,
       "range.toml:8: \"Width\" takes a number from 0 to 1000, not 1000.5"},
      {"group.toml -o o.mov", 1, "group.toml:7: \"Color\" is a group start, which has no value"},
      {"path.toml -o o.mov", 1, "path.toml:7: \"Path\" takes a mask, and masks are not supported"},
      {"mask.toml -o o.mov", 1, "mask.toml:1: [mask]: masks are not supported"},
      {"input.toml -o o.mov", 1, "input.toml:3: the input \"none.png\" does not exist"},
      {"s.toml -i none.mov -o o.mov", 1, "the input \"none.mov\" does not exist"},
      {"s.toml -i broken.png -o o.mov", 1, "the input \"broken.png\" holds no picture"},
      {"s.toml -o none/o.mov", 1, "the output folder \"none\" does not exist"},
      {"s.toml -o file/o.mov", 1, "\"file\" is not a folder to write into"},
      {"s.toml -o /proc/o.mov", 1, "cannot write "},
      {"s.toml -o o.avi", 2, "cannot tell from its name what to write into \"o.avi\""},
      {"s.toml -o o.png", 2, "holds one frame, not 6"},
      {"s.toml -o o.mov --frames 4-2", 2, "a range is FIRST-LAST"},
      {"s.toml -o o.mov --frames 2-6", 2, "the scene has the frames 0-5"},
      {"s.toml -o o.mov --size 0x3", 2, "a size reads WIDTHxHEIGHT"},
      {"s.toml -o o.mov --fps fast", 2, "a frame rate is a number above 0"},
      {"s.toml -o o.mov --depth 32", 2, "--depth"},
      {"s.toml -o o.mov --set Size=2000", 2, "--set \"Size=2000\": \"Size\" takes a number from 0"},
      {"s.toml -o o.mov --set Size", 2, "LABEL=VALUE"},
      {"s.toml -o o.mov --what", 2, "--what"},
      {"s.toml", 2, "--output"},
      {"s.toml -o o.mov --module none.AEX", 1, "none.AEX"},
      {"s.toml -o o.mov --module file", 1, "file"},
      {"s.toml -o o.mov --module " NO_ENTRY_POINT_PATH, 1, "EntryPointFunc"},
      {"s.toml -o o.mov --module " OLD_MODULE_PATH, 1, "is too old"}};
  const Names before = names();
  for (const Case& c : cases) {
    const CommandResult result = render(c.arguments);
    EXPECT_EQ(result.exitCode, c.exitCode) << c.arguments << ": " << result.err;
    EXPECT_NE(result.err.find(c.message), std::string::npos) << c.arguments << ": " << result.err;
    EXPECT_EQ(result.err.rfind("brisel: ", 0), 0u) << result.err;
    EXPECT_EQ(std::ranges::count(result.err, '\n'), 1) << "one sentence: " << result.err;
    EXPECT_EQ(names(), before) << c.arguments;
  }
}

TEST_F(RenderTest, AClipCutShortIsNamed) {
  ffmpeg("-f lavfi -i testsrc2=s=64x36 -frames:v 40 -pix_fmt yuv420p -movflags +faststart a.mp4");
  const std::string whole = read("a.mp4");
  write("cut.mp4", whole.substr(0, whole.size() * 2 / 3));
  write("all.toml", "[scene]\nframes = 40\ninput = \"cut.mp4\"\n");
  const CommandResult all = render("all.toml -o all.mov");
  EXPECT_EQ(all.exitCode, 1);
  EXPECT_NE(all.err.find("cannot read the input \"cut.mp4\": "), std::string::npos) << all.err;
  EXPECT_FALSE(std::filesystem::exists(path("all.mov")));
}

TEST_F(RenderTest, EmittersWithoutStarsAreAnnounced) {
  const CommandResult result =
      brisel({"render", "s.toml", "-o", "o.mov", "--set", "Standard path=Whole field"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_NE(result.err.find("warning: the standard path \"Whole field\" emits no stars"),
            std::string::npos)
      << result.err;
}

TEST_F(RenderTest, ProgressInALogHasNoControlCharacters) {
  const CommandResult result = render("s.toml -o o.mov");
  EXPECT_TRUE(result.out.empty());
  EXPECT_EQ(result.err.find_first_of("\r\x1b\b"), std::string::npos);
  EXPECT_NE(result.err.find("o.mov: 6 frames in "), std::string::npos) << result.err;
}

TEST_F(RenderTest, AnInterruptedClipLeavesNothing) {
  write("long.toml", "[scene]\nsize = [640, 360]\nframes = 5000\n");
  for (const std::string output : {"o.mov", "o.mp4"}) {
    const pid_t process = start({BRISEL_PROGRAM, "render", "long.toml", "-o", output});
    ASSERT_TRUE(waitForFile(output));
    kill(process, SIGINT);
    const CommandResult result = waitFor(process);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.err.find("brisel: interrupted\n"), std::string::npos) << result.err;
    EXPECT_EQ(names(), (Names{"long.toml", "s.toml"}));
  }
}

TEST_F(RenderTest, InterruptedNumberedFramesAreWhole) {
  write("long.toml", "[scene]\nsize = [640, 360]\nframes = 5000\n");
  const pid_t process = start({BRISEL_PROGRAM, "render", "long.toml", "-o", "f_%04d.png"});
  ASSERT_TRUE(waitForFile("f_0003.png"));
  kill(process, SIGTERM);
  EXPECT_EQ(waitFor(process).exitCode, 1);
  const Names left = names();
  EXPECT_LT(left.size(), 5000u);
  for (const std::string& name : left) {
    if (name.ends_with(".png")) {
      EXPECT_EQ(name.rfind("f_", 0), 0u) << name;
      EXPECT_EQ(frames(name).size(), 1u);
    }
  }
}

TEST_F(RenderTest, AFullDiskLeavesOnlyWholeFrames) {
  std::filesystem::create_directory(path("disk"));
  if (mount("tmpfs", path("disk").c_str(), "tmpfs", 0, "size=96k") != 0) {
    GTEST_SKIP() << "a small disk can only be mounted by root";
  }
  write("big.toml", "[scene]\nsize = [320, 180]\nframes = 60\n[params]\n\"Intensity\" = 20\n");
  for (const std::string output : {"o.mov", "o.mp4", "o.gif", "o.apng", "o.webp", "f_%02d.png"}) {
    const CommandResult result = render("big.toml -o disk/" + output);
    EXPECT_EQ(result.exitCode, 1) << output;
    EXPECT_NE(result.err.find("No space left on device"), std::string::npos) << result.err;
    for (const auto& entry : std::filesystem::directory_iterator(path("disk"))) {
      const std::string name = entry.path().filename();
      EXPECT_TRUE(name.starts_with("f_")) << name;
      EXPECT_EQ(frames("disk/" + name).size(), 1u);
    }
  }
  umount(path("disk").c_str());
}

TEST_F(RenderTest, AFileSizeLimitIsAWriteError) {
  write("big.toml", "[scene]\nsize = [320, 180]\nframes = 60\n[params]\n\"Intensity\" = 20\n");
  const CommandResult result =
      run({"sh", "-c", "ulimit -f 60; exec " BRISEL_PROGRAM " render big.toml -o o.mov"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_NE(result.err.find("cannot write \"o.mov\": "), std::string::npos) << result.err;
  EXPECT_EQ(names(), (Names{"big.toml", "s.toml"}));
}

}  // namespace
