// `brisel chunks`, `join` and `farm` on this machine: parts against one render.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <sstream>
#include <thread>

#include "tests/cli/commands/render_fixture.h"

namespace {

using tests::CommandResult;
using tests::Names;

class ChunksTest : public tests::RenderTest {
 protected:
  ChunksTest() {
    write("s.toml",
          "[scene]\nsize = [64, 36]\nframes = 12\nfps = 29.97\n[params]\n\"Intensity\" = 20\n"
          "\"Size\" = 20\n\"Mix with original\" = \"Replace\"\n");
  }

  CommandResult command(const std::string& name, const std::string& text) const {
    Names arguments = tests::words(text);
    arguments.insert(arguments.begin(), name);
    return brisel(arguments);
  }
  std::string refusal(const std::string& name, const std::string& text) const {
    const CommandResult result = command(name, text);
    EXPECT_NE(result.exitCode, 0) << text;
    EXPECT_TRUE(result.isOneSentence()) << result.err;
    return result.err;
  }
  // Of each picture that a clip shows a line: when, and a digest of its pixels.
  struct Pictures {
    std::string times;
    std::string digests;
  };
  Pictures pictures(const std::string& clip) const {
    const std::string decoder = clip.ends_with(".webm") ? "-c:v libvpx-vp9 " : "";
    const CommandResult result = run(tests::words("ffmpeg -v error " + decoder + "-i " + clip +
                                                  " -map 0:v -fps_mode passthrough -f framemd5 -"));
    EXPECT_EQ(result.err, "") << clip;
    Pictures pictures;
    std::istringstream lines(result.out);
    for (std::string line; std::getline(lines, line);) {
      const Names columns = tests::words(line);
      if (line.starts_with('#') || columns.size() < 6) continue;
      pictures.times += columns[2] + "\n";
      pictures.digests += columns[5] + "\n";
    }
    EXPECT_FALSE(pictures.times.empty());
    return pictures;
  }
  std::string soundOf(const std::string& clip) const {
    ffmpeg("-i " + clip + " -map 0:a -f s16le sound.raw");
    return read("sound.raw");
  }
};

TEST_F(ChunksTest, CommandsRenderWhatOneWould) {
  renders("s.toml -o one_%02d.png --preset orbit --frames 2-10");
  const CommandResult chunks = brisel({"chunks", "s.toml", "-n", "4", "-o", "it's_%02d.png",
                                       "--preset", "orbit", "--frames", "2-10"});
  ASSERT_EQ(chunks.exitCode, 0) << chunks.err;
  EXPECT_EQ(std::ranges::count(chunks.out, '\n'), 4);
  EXPECT_NE(chunks.err.find("brisel: note: measured "), std::string::npos) << chunks.err;
  ASSERT_EQ(run({"sh", "-ec", chunks.out}).exitCode, 0) << chunks.out;
  for (const char* const number : {"02", "05", "10"}) {
    EXPECT_EQ(read("it's_" + std::string(number) + ".png"),
              read("one_" + std::string(number) + ".png"));
  }
  EXPECT_FALSE(std::filesystem::exists(path("it's_01.png")));
  EXPECT_FALSE(std::filesystem::exists(path("it's_11.png")));

  const CommandResult many = command("chunks", "s.toml -n 50 -o f_%d.png");
  EXPECT_EQ(std::ranges::count(many.out, '\n'), 12);
  EXPECT_NE(many.err.find("only 12 frames"), std::string::npos) << many.err;
}

TEST_F(ChunksTest, PartsJoinToTheClipThatOneRenderWrites) {
  for (const std::string kind : {".mov", ".mov --codec qtrle", ".mov --codec png", ".webm"}) {
    const std::string end = kind.substr(0, kind.find(' '));
    renders("s.toml --overwrite -o one" + kind);
    renders("s.toml --overwrite --frames 0-4 -o a" + kind);
    renders("s.toml --overwrite --frames 5-11 -o b" + kind);
    const CommandResult result =
        command("join", "b" + end + " a" + end + " --overwrite -o j" + end);
    ASSERT_EQ(result.exitCode, 0) << kind << result.err;
    const Pictures joined = pictures("j" + end);
    Pictures expected = pictures("one" + end);
    // This codec looks back at earlier pictures, so that each part has another start.
    if (end == ".webm") expected.digests = pictures("a.webm").digests + pictures("b.webm").digests;
    EXPECT_EQ(joined.times, expected.times) << kind;
    EXPECT_EQ(joined.digests, expected.digests) << kind;
    EXPECT_EQ(
        run(tests::words("ffprobe -v error -show_entries format_tags j" + end)).out.find("part"),
        std::string::npos);
  }
}

// Parts of one picture have no pictures that are sent before their turn, others have.
TEST_F(ChunksTest, ChunksOfAnyLengthJoinInTime) {
  const CommandResult chunks = command("chunks", "s.toml -n 3 -o c.mp4");
  ASSERT_EQ(run({"sh", "-ec", chunks.out}).exitCode, 0) << chunks.out << chunks.err;
  for (const std::string range : {"0-0", "1-9", "10-10", "11-11"}) {
    renders("s.toml -o r_" + range + ".mp4 --frames " + range);
  }
  renders("s.toml -o one.mp4");
  for (const std::string parts : {"c_*.mp4", "r_*.mp4"}) {
    const CommandResult result =
        run({"sh", "-c", "exec " BRISEL_PROGRAM " join --overwrite -o j.mp4 " + parts});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(pictures("j.mp4").times, pictures("one.mp4").times) << parts << chunks.out;
  }
  EXPECT_EQ(pictures("j.mp4").digests,
            pictures("r_0-0.mp4").digests + pictures("r_1-9.mp4").digests +
                pictures("r_10-10.mp4").digests + pictures("r_11-11.mp4").digests);
}

TEST_F(ChunksTest, SoundIsThatOfOneRender) {
  ffmpeg(
      "-f lavfi -i testsrc2=s=64x36:r=25:d=0.48 -f lavfi -i sine=440:r=48000:d=0.48 -c:v png "
      "-c:a pcm_s16le in.mov");
  for (const std::string end : {".mov", ".mp4"}) {  // copied, and encoded
    renders("s.toml -i in.mov -o one" + end);
    renders("s.toml -i in.mov --frames 0-4 -o a" + end);
    renders("s.toml -i in.mov --frames 5-11 -o b" + end);
    const CommandResult result = command("join", "a" + end + " b" + end + " -o j" + end);
    ASSERT_EQ(result.exitCode, 0) << result.err;
    EXPECT_FALSE(soundOf("one" + end).empty());
    EXPECT_EQ(soundOf("j" + end), soundOf("one" + end));
    EXPECT_EQ(pictures("j" + end).times, pictures("one" + end).times) << end;
  }
  std::filesystem::rename(path("in.mov"), path("away.mov"));
  EXPECT_NE(refusal("join", "a.mov b.mov -o lost.mov")
                .find("in.mov\", which is not there; name a file with --audio"),
            std::string::npos);
}

TEST_F(ChunksTest, PartsThatDoNotFitAreRefusedByName) {
  for (const std::string range : {"0-4", "5-6", "6-11", "7-11"}) {
    renders("s.toml -o " + range + ".mov --codec qtrle --frames " + range);
  }
  const auto join = [this](const std::string& text) { return refusal("join", "-o o.mov " + text); };
  EXPECT_EQ(join("0-4.mov 7-11.mov"),
            "brisel: frames are missing between two parts: \"7-11.mov\" starts at frame 7, but "
            "\"0-4.mov\" ends at 4\n");
  EXPECT_EQ(
      join("0-4.mov 5-6.mov 6-11.mov"),
      "brisel: two parts overlap: \"6-11.mov\" starts at frame 6, but \"5-6.mov\" ends at 6\n");
  EXPECT_EQ(join("0-4.mov 5-6.mov"),
            "brisel: the parts hold the frames 0-6, but the scene has 0-11; give --frames 0-6 if "
            "these are meant\n");
  renders("s.toml -o size.mov --codec qtrle --frames 7-11 --set Size=21");
  EXPECT_EQ(join("0-4.mov 5-6.mov size.mov"),
            "brisel: the parts differ in their --set: \"0-4.mov\" has none, but \"size.mov\" has "
            "\"Size=21\"\n");
  write("s.toml", std::string(read("s.toml")) + "# changed\n");
  renders("s.toml -o late.mov --codec qtrle --frames 7-11");
  EXPECT_NE(join("0-4.mov 5-6.mov late.mov").find("differ in their scene: "), std::string::npos);
  renders("s.toml -o whole.mov");
  EXPECT_NE(join("whole.mov").find("\"whole.mov\" does not say which part"), std::string::npos);
  std::filesystem::resize_file(path("6-11.mov"), 3000);
  EXPECT_NE(join("0-4.mov 6-11.mov").find("6-11.mov"), std::string::npos);
  EXPECT_NE(refusal("join", "0-4.mov 5-6.mov -o 5-6.mov --overwrite").find("one of the parts"),
            std::string::npos);
  EXPECT_NE(refusal("join", "0-4.mov -o o.mp4").find("another kind"), std::string::npos);
  ASSERT_EQ(mkfifo(path("fifo.mov").c_str(), 0600), 0);
  EXPECT_EQ(join("fifo.mov"), "brisel: \"fifo.mov\" is a folder, a device or a pipe, not a clip\n");
  EXPECT_NE(
      refusal("join", "0-4.mov -o fifo.mov --overwrite").find("a device or a pipe, not a file"),
      std::string::npos);
  // What others may have written into a part.
  const auto forged = [&](const std::string& said) {
    ffmpeg("-i 0-4.mov -c copy -y -metadata comment=" + said + " forged.mov");
    return join("forged.mov");
  };
  const std::string end = R"(,"rate":[25,1],"settings":[["codec","qtrle"]],"sound":""}})";
  for (const char* numbers :
       {R"([4294967296,4294967300],"of":5)", R"([0,4],"of":4294967301)", R"([0,1e300],"of":5)",
        R"([-4294967296,4],"of":5)", R"([0,4.5],"of":5)", R"([0,4],"of":1000001)"}) {
    const std::string said = forged(R"({"brisel-part":{"frames":)" + std::string(numbers) + end);
    EXPECT_NE(said.find("does not say which part"), said.npos) << numbers << said;
  }
  EXPECT_NE(forged(R"({"brisel-part":{"frames":[0,4],"of":5,"rate":[25,1],"settings":)"
                   R"([["codec","none"]],"sound":""}})")
                .find("there is no codec \"none\""),
            std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(path("o.mov")));
  const CommandResult one = command("join", "0-4.mov -o o.mov --frames 0-4");
  EXPECT_TRUE(one.err.starts_with("o.mov: 5 frames of 1 part in")) << one.err;

  EXPECT_NE(refusal("chunks", "s.toml -n 2 -o o.gif").find("cannot be put together"),
            std::string::npos);
  EXPECT_NE(refusal("chunks", "s.toml -n 2 -i - -o o.mov").find("standard input"),
            std::string::npos);
}

TEST_F(ChunksTest, AFarmOnThisMachineMakesWhatOneRenderMakes) {
  renders("s.toml -o one_%02d.png");
  renders("s.toml -o one.mov");
  const Names before = names();
  CommandResult result = command("farm", "s.toml --engine local -n 3 -o all_%02d.png");
  ASSERT_EQ(result.exitCode, 0) << result.err;
  EXPECT_NE(result.err.find("all_%02d.png: 12 frames in "), std::string::npos) << result.err;
  for (int i = 0; i < 12; ++i) {
    const std::string number = std::string(i < 10 ? "0" : "") + std::to_string(i) + ".png";
    EXPECT_EQ(read("all_" + number), read("one_" + number));
  }
  // What would be run or replaced if it were more than a name to anybody.
  const std::string name = "$(touch a) `touch b` {= qx(touch c) =} {} it's all.mov";
  std::filesystem::rename(path("s.toml"), path("-s.toml"));
  result = brisel({"farm", "--engine", "local", "-n", "3", "-o", name, "--", "-s.toml"});
  ASSERT_EQ(result.exitCode, 0) << result.err;
  std::filesystem::rename(path(name), path("all.mov"));
  EXPECT_EQ(frames("all.mov").back().bytes, frames("one.mov").back().bytes);
  EXPECT_EQ(names().size(), before.size() + 13) << "nothing is left behind";
  std::filesystem::rename(path("-s.toml"), path("s.toml"));
  EXPECT_NE(refusal("farm", "s.toml --engine local -o all.mov").find("exists already"),
            std::string::npos);
  EXPECT_NE(brisel({"chunks", "s.toml", "-n", "2", "-o", "a\n%d.png"}).err.find("line break"),
            std::string::npos);
}

TEST_F(ChunksTest, AFarmSaysWhatFailedAndGoesOnFromThere) {
  renders("s.toml -o one_%02d.png");
  const CommandResult nothing = run({"sh", "-c",
                                     "(ulimit -f 0; " BRISEL_PROGRAM
                                     " farm s.toml --engine local -o f_%02d.png 2>&1) | cat"});
  EXPECT_NE(nothing.out.find(".farm/commands\": File too large"), std::string::npos) << nothing.out;
  EXPECT_FALSE(std::filesystem::exists(path(".f__02d.png.farm")));
  // Files may have no more than so many blocks of 512 bytes, which a picture has not enough of.
  const CommandResult full =
      run({"sh", "-c",
           "ulimit -f 60; exec " BRISEL_PROGRAM
           " farm s.toml --engine local -n 3 --retries 0 --size 1280x720 -o f_%02d.png"});
  EXPECT_EQ(full.exitCode, 1);
  EXPECT_NE(full.err.find("cannot write \"f_0"), std::string::npos) << full.err;
  EXPECT_NE(full.err.find("File too large; --resume goes on"), std::string::npos) << full.err;
  EXPECT_NE(refusal("farm", "s.toml --engine local --size 1280x720 -o f_%02d.png").find("--resume"),
            std::string::npos);
  EXPECT_NE(refusal("farm", "s.toml --engine local --resume -o f_%02d.png").find("other options"),
            std::string::npos);
  const CommandResult resumed =
      command("farm", "s.toml --engine local --resume --size 1280x720 -o f_%02d.png");
  EXPECT_EQ(resumed.exitCode, 0) << resumed.err;
  renders("s.toml -o g_%02d.png --size 1280x720");
  for (const char* const number : {"00", "06", "11"}) {
    EXPECT_EQ(read("f_" + std::string(number) + ".png"), read("g_" + std::string(number) + ".png"));
  }
  EXPECT_FALSE(std::filesystem::exists(path(".f__02d.png.farm")));
}

TEST_F(ChunksTest, AFarmFailsForADamagedInputAsARenderDoes) {
  ffmpeg("-f lavfi -i testsrc2=s=64x36 -frames:v 12 -pix_fmt yuv420p in.mp4");
  std::string bytes = read("in.mp4");
  bytes.replace((bytes.find("mdat") + bytes.size()) / 2, 300, 300, 'x');
  write("in.mp4", bytes);
  const CommandResult result =
      command("farm", "s.toml -i in.mp4 --engine local -n 2 -o f_%02d.png");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_NE(result.err.find("brisel: the input \"in.mp4\" is damaged: "), std::string::npos)
      << result.err;
  EXPECT_NE(result.err.find("\"f_%02d.png\" was written all the same"), std::string::npos);
  EXPECT_EQ(result.err.find("mended"), std::string::npos) << result.err;
  EXPECT_FALSE(std::filesystem::exists(path(".f__02d.png.farm")));
}

TEST_F(ChunksTest, AnInterruptedFarmEndsItsProcessesAndIsResumed) {
  write("s.toml", std::string(read("s.toml")) + "\"Maximum number of stars\" = 2000\n");
  const pid_t farm = start({BRISEL_PROGRAM, "farm", "s.toml", "--engine", "local", "-n", "2", "-o",
                            "f_%03d.png", "--size", "1280x720"});
  for (int i = 0; i < 600 && !std::filesystem::exists(path("f_000.png")); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  kill(farm, SIGINT);
  const CommandResult result = waitFor(farm);
  EXPECT_EQ(result.exitCode, 130) << result.err;
  EXPECT_NE(result.err.find("brisel: interrupted; --resume goes on"), std::string::npos)
      << result.err;
  const Names left = names();
  EXPECT_EQ(
      std::ranges::count_if(left, [](const std::string& name) { return name.ends_with(".part"); }),
      0);
  const std::string resume = "s.toml --engine local -n 2 --resume --size 1280x720 -o f_%03d.png";
  const CommandResult taken =
      run(tests::words("flock .f__03d.png.farm " BRISEL_PROGRAM " farm " + resume));
  EXPECT_EQ(taken.exitCode, 1);
  EXPECT_EQ(taken.err, "brisel: \"f_%03d.png\" is being rendered by another \"brisel farm\"\n");
  const CommandResult resumed = command("farm", resume);
  ASSERT_EQ(resumed.exitCode, 0) << resumed.err;
  renders("s.toml -o g_%03d.png --size 1280x720");
  for (int i = 0; i < 12; ++i) {
    const std::string number = std::string(i < 10 ? "00" : "0") + std::to_string(i) + ".png";
    EXPECT_EQ(read("f_" + number), read("g_" + number)) << i;
  }
}

}  // namespace
