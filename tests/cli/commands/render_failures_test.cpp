// `brisel render` that cannot do what it is asked, or is stopped: what is said, what is left
// behind.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include <chrono>
#include <thread>
#include <tuple>

#include "tests/cli/commands/render_fixture.h"
#include "tests/support/complaints.h"

namespace {

using tests::CommandResult;
using tests::kScene;
using tests::Names;

class RenderFailuresTest : public tests::RenderTest {
 protected:
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

TEST_F(RenderFailuresTest, WhatIsWrongWithOneOfSeveralScenesIsSaidAtOnce) {
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

TEST_F(RenderFailuresTest, OutputsAreReplacedOnlyOnRequest) {
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

  // Never: what would not be written into but replaced, and what is read meanwhile.
  ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
  for (const char* link : {"p.mov", "p.png", "p_3.png", "p_2.state", "p.toml", "p_3.exr"}) {
    std::filesystem::create_symlink("pipe", path(link));
  }
  std::filesystem::create_hard_link(path("s.toml"), path("s_4.png"));
  const Names before = names();
  const std::string isPipe = "is a device or a pipe, not a file";
  for (const auto& [arguments, message] : tests::Complaints{
           {"render s.toml -o pipe --format mov", isPipe},
           {"render s.toml -o p_%d.png --skip-existing", isPipe},
           {"render s.toml -o p_%d.exr", isPipe},
           {"render s.toml -o p.png --frames 1", isPipe},
           {"sheet s.toml -o p.png", isPipe},
           {"panel s.toml -o p.png", isPipe},
           {"checkpoint s.toml --every 2 -o p_%d.state", isPipe},
           {"new p.toml", isPipe},
           {"render s.toml -o s.toml --format mov", "\"s.toml\" is the scene itself"},
           {"render s.toml -o s_%d.png", "\"s_4.png\" is the scene itself"},
           {"render s.toml -i out.mov -o out.mov", "\"out.mov\" is the input itself"}}) {
    Names words = tests::words(arguments);
    if (arguments.find("--skip") == arguments.npos) words.push_back("--overwrite");
    const CommandResult result = brisel(words);
    EXPECT_NE(result.exitCode, 0) << arguments;
    EXPECT_NE(result.err.find(message), std::string::npos) << arguments << ": " << result.err;
    EXPECT_TRUE(result.isOneSentence()) << result.err;
    EXPECT_EQ(names(), before) << arguments;
  }
  EXPECT_TRUE(std::filesystem::is_fifo(path("p.mov")));
}

TEST_F(RenderFailuresTest, WhatCannotBeDoneIsOneSentenceAndLeavesNothing) {
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
      {"input.toml -o o.mov", 1, "input.toml:3: the input \"none.png\" does not exist"},
      {"s.toml -i none.mov -o o.mov", 1, "the input \"none.mov\" does not exist"},
      {"s.toml -i broken.png -o o.mov", 1, "the input \"broken.png\" holds no picture"},
      {"s.toml -i file -o o.mov", 1, "the input \"file\" is empty"},
      {"cut.toml -o o.mov", 1, "cannot read the input \"cut.mp4\": "},
      {"s.toml -o none/o.mov", 1, "the output folder \"none\" does not exist"},
      {"s.toml -o file/o.mov", 1, "\"file\" is not a folder to write into"},
      {"s.toml -o /proc/o.mov", 1, "cannot write "},
      {"s.toml -o o.png", 2, "holds one frame, not 6"},
      {"s.toml -o o.mov --frames 2-6", 2, "the scene has the frames 0-5"},
      {"s.toml", 2, "--output"},
      {"s.toml -o o.mov --set Size", 2, "--set \"Size\": a setting reads \"LABEL=VALUE\""},
      {"s.toml -o o.mov --set Sise=1", 2, "--set \"Sise=1\": the effect has no parameter \"Sise\""},
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

TEST_F(RenderFailuresTest, ADamagedInputIsReportedWhenAllOfItsFramesAreWritten) {
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

// Decoding is ahead of writing when it fails.
TEST_F(RenderFailuresTest, FramesBeforeTheDecodersFailureAreWritten) {
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

TEST_F(RenderFailuresTest, AnInterruptedRenderLeavesOnlyWholeNumberedFrames) {
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

// A program that neither reads nor writes.
TEST_F(RenderFailuresTest, AnInterruptEndsTheWaitForAStuckDecoderOrEncoder) {
  ffmpeg("-f lavfi -i testsrc2=s=640x360 -frames:v 30 -c:v png in.mov");
  write("ffmpeg", "#!/bin/sh\n: >stuck\nexec sleep 60\n");
  std::filesystem::permissions(path("ffmpeg"), std::filesystem::perms::owner_all);
  const Names before = names();
  for (const std::string arguments :
       {"-i in.mov -o f_%d.png", "-i in.mov -o f_%d.png --jobs 1", "-o o.mp4 --size 640x360",
        "-o o.mp4 --size 640x360 --jobs 1", "-o - --format mp4 --size 640x360"}) {
    const pid_t process =
        start({"sh", "-c", "PATH=.:$PATH exec " BRISEL_PROGRAM " render s.toml " + arguments});
    ASSERT_TRUE(waitForFile("stuck"));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    kill(process, SIGINT);
    const CommandResult result = waitFor(process);
    EXPECT_EQ(result.exitCode, 130) << arguments << ": " << result.err;
    EXPECT_TRUE(result.err.ends_with("brisel: interrupted\n")) << result.err;
    std::filesystem::remove(path("stuck"));
    EXPECT_EQ(names(), before) << arguments;
  }
}

// Such a frame takes seconds, and the encoder has not opened its file yet.
TEST_F(RenderFailuresTest, ASecondSignalEndsALongFrameAndLeavesNothing) {
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

// Among others while the encoder is being started, which opens its file a little later.
TEST_F(RenderFailuresTest, TwoSignalsAtOnceLeaveNothingAtAnyMoment) {
  write("s.toml", "[scene]\nsize = [64, 36]\nframes = 3000\n");
  for (int moment = 12; moment < 60; moment += 2) {
    const pid_t process = start({BRISEL_PROGRAM, "render", "s.toml", "-o", "o.mov"});
    std::this_thread::sleep_for(std::chrono::milliseconds(moment));
    kill(process, SIGINT);
    kill(process, SIGTERM);
    EXPECT_NE(waitFor(process).exitCode, 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    ASSERT_EQ(names(), (Names{"s.toml"})) << moment;
  }
}

TEST_F(RenderFailuresTest, ClosedStreamsGetNoFilesNumber) {
  ffmpeg("-f lavfi -i testsrc2=s=64x36:d=1 in.mov");
  write("s.toml", "[scene]\nframes = 3\n");
  EXPECT_EQ(run({"sh", "-c", BRISEL_PROGRAM " render s.toml -i in.mov -o f_%d.png 0<&- 1>&- 2>&-"})
                .exitCode,
            0);
  EXPECT_EQ(names(), (Names{"f_0.png", "f_1.png", "f_2.png", "in.mov", "s.toml"}));
  const CommandResult version = run({"sh", "-c", BRISEL_PROGRAM " --version >/dev/full"});
  EXPECT_EQ(version.exitCode, 1);
  EXPECT_EQ(version.err, "brisel: cannot write to standard output\n");
}

TEST_F(RenderFailuresTest, AFullDiskOrAFileSizeLimitLeavesOnlyWholeFrames) {
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
