// The sound of clips: which there is, and whether it stays with its picture.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "tests/cli/scratch.h"

namespace {

using tests::CommandResult;

class SoundtrackTest : public tests::ScratchTest {
 protected:
  SoundtrackTest() {
    write("s.toml", "[params]\n\"Mix with original\" = \"Normal\"\n\"Intensity\" = 0\n");
    // Silent and black, but in frame 25, from second 1 on, white with a beep.
    ffmpeg(
        "-f lavfi -i color=black:s=64x48:r=25:d=3,geq=lum='if(eq(N,25),235,16)':cb=128:cr=128 "
        "-f lavfi -i aevalsrc='between(t,1,1.1)*sin(6283*t)':s=48000:d=3 "
        "-map 0 -map 1 -map 1 -c:v libx264 -c:a:0 aac -c:a:1 flac -strict -2 in.mp4");
  }

  CommandResult render(const std::string& text) const {
    std::vector<std::string> arguments = tests::words("render s.toml " + text);
    return brisel(arguments);
  }

  // Of each stream with sound.
  std::vector<std::string> codecs(const std::string& name) const {
    return tests::words(
        run({"ffprobe", "-v", "error", "-select_streams", "a", "-show_entries", "stream=codec_name",
             "-of", "default=nokey=1:noprint_wrappers=1", path(name)})
            .out);
  }

  // When the beep begins, and how long the sound is, in seconds from the start of the clip.
  std::pair<double, double> beep(const std::string& name) const {
    ffmpeg("-i " + name +
           " -map 0:a:0 -af aresample=async=1:first_pts=0 -ac 1 -ar 48000 -f s16le beep.raw");
    const std::string raw = read("beep.raw");
    std::size_t first = 0;
    for (std::int16_t sample = 0; first + 2 <= raw.size(); first += 2) {
      std::memcpy(&sample, raw.data() + first, 2);
      if (std::abs(sample) > 3000) break;
    }
    return {static_cast<double>(first) / 96000, static_cast<double>(raw.size()) / 96000};
  }
};

TEST_F(SoundtrackTest, StaysWithItsPictureWhereverTheClipIsCut) {
  constexpr double kFrame = 1 / 25.0;
  using Names = std::vector<std::string>;
  for (const auto& [name, expected] : {std::pair{"o.mp4", Names{"aac", "aac"}},
                                       {"o.mov", Names{"aac", "aac"}},
                                       {"o.webm", Names{"opus", "opus"}}}) {
    const std::string output = std::string(" -i in.mp4 --overwrite -o ") + name;
    ASSERT_EQ(render(output).exitCode, 0);
    EXPECT_EQ(codecs(name), expected);
    EXPECT_NEAR(beep(name).first, 1, kFrame / 2) << name;
    ASSERT_EQ(render(output + " --frames 13-62").exitCode, 0);
    const auto [begin, length] = beep(name);
    EXPECT_NEAR(begin, 12 * kFrame, kFrame / 2) << name;
    EXPECT_NEAR(length, 50 * kFrame, kFrame) << name;
  }
  // Sound that begins before its picture or after it, copied and encoded, cut at the clip's end.
  for (const double shift : {-0.4, 0.4}) {
    ffmpeg("-i in.mp4 -itsoffset " + std::to_string(shift) +
           " -i in.mp4 -map 0:v -map 1:a -c copy -copyts -avoid_negative_ts disabled shifted.mkv");
    for (const std::string name : {"o.mp4", "o.webm"}) {
      ASSERT_EQ(render("-i shifted.mkv --overwrite -o " + name).exitCode, 0);
      const auto [begin, length] = beep(name);
      EXPECT_NEAR(begin, 1 + shift, kFrame / 2) << name;
      EXPECT_NEAR(length, 3 + std::min(shift, 0.0), kFrame) << name;
    }
  }
}

TEST_F(SoundtrackTest, IsTakenFromAnotherFileOrLeftOutOnRequest) {
  ASSERT_EQ(render("-i in.mp4 -o none.mp4 --no-audio").exitCode, 0);
  EXPECT_TRUE(codecs("none.mp4").empty());
  ffmpeg("-i in.mp4 -map 0:a:0 -c:a libmp3lame beep.mp3");
  ffmpeg("-i in.mp4 -frames:v 1 still.png");
  ASSERT_EQ(render("-i still.png -o still.mp4 --audio beep.mp3").exitCode, 0);
  EXPECT_EQ(codecs("still.mp4"), std::vector<std::string>{"mp3"});
  EXPECT_NEAR(beep("still.mp4").first, 1, 0.04);

  ffmpeg("-i in.mp4 -map 0:a:0 -c:a flac beep.flac");
  std::string torn = read("beep.flac");
  for (std::size_t i = torn.size() / 3; i < torn.size() / 2; ++i)
    torn[i] = static_cast<char>(i * 7);
  write("torn.flac", torn);
  const CommandResult result = render("-i still.png -o torn.mp4 --audio torn.flac");
  EXPECT_EQ(result.exitCode, 0) << "the frames are worth more than the sound";
  EXPECT_NE(result.err.find("the sound of \"torn.flac\" is damaged: "), std::string::npos)
      << result.err;

  ASSERT_EQ(run({"sh", "-c", "exec " BRISEL_PROGRAM " render s.toml -i - -o piped.mp4 < in.mp4"})
                .exitCode,
            0);
  EXPECT_NEAR(beep("piped.mp4").first, 1, 0.04);

  const auto refusal = [this](const std::string& text) { return render(text).err; };
  EXPECT_EQ(refusal("-o o.gif --audio beep.mp3"),
            "brisel: --audio: there is no sound in \"o.gif\"\n");
  EXPECT_EQ(refusal("-o o.mp4 --audio still.png"), "brisel: there is no sound in \"still.png\"\n");
  EXPECT_EQ(refusal("-o o.mp4 --audio lost.mp3"),
            "brisel: the input \"lost.mp3\" does not exist\n");
}

}  // namespace
