// The odder inputs: late or uneven times, numbered pictures, pipes, colors and fields.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cmath>

#include "cli/support/errors.h"
#include "tests/cli/pictures_of.h"
#include "tests/cli/scratch.h"
#include "tests/support/complaints.h"

namespace {

using cli::Depth;
using cli::Frame;
using cli::MediaInfo;
using scene::FrameRate;
using tests::picturesOf;

class InputTest : public tests::ScratchTest {
 protected:
  MediaInfo probe(const std::string& name, cli::InputChoices choices = {}) const {
    return cli::probeMedia(cli::findSource(path(name), choices), choices);
  }

  // Losslessly, gray pictures of 16x16 whose level is 8 times their number.
  void writeGrays(const std::string& name, int rate, int count) const {
    ffmpeg("-f lavfi -i nullsrc=s=16x16:r=" + std::to_string(rate) +
           ",format=rgb24,geq=r=8*N:g=8*N:b=8*N -frames:v " + std::to_string(count) +
           " -c:v ffv1 " + name);
  }
  // The numbers of such pictures.
  static std::vector<int> numbersOf(const std::vector<Frame>& frames) {
    std::vector<int> numbers;
    for (const Frame& frame : frames) numbers.push_back(frame.bytes[0] / 8);
    return numbers;
  }
};

TEST_F(InputTest, AStreamThatStartsLateKeepsItsPlace) {
  writeGrays("a.mkv", 24, 6);
  ffmpeg("-itsoffset 0.125 -i a.mkv -f lavfi -i sine=d=0.375 -c:v copy -c:a pcm_s16le late.mkv");
  EXPECT_EQ(numbersOf(picturesOf(probe("late.mkv"))),
            (std::vector<int>{0, 0, 0, 0, 1, 2, 3, 4, 5}));
  EXPECT_EQ(framesAtRate(probe("late.mkv"), {24, 1}), 9);
  EXPECT_EQ(framesAtRate(probe("late.mkv"), {48, 1}), 18);
  // With nothing before it there is no place to keep.
  ffmpeg("-itsoffset 2 -i a.mkv -c:v copy alone.mkv");
  EXPECT_EQ(numbersOf(picturesOf(probe("alone.mkv"))), (std::vector<int>{0, 1, 2, 3, 4, 5}));
}

TEST_F(InputTest, AVariableRateBecomesThatOfMostPictures) {
  writeGrays("slow.mkv", 20, 4);
  writeGrays("fast.mkv", 60, 9);
  ffmpeg(
      "-i slow.mkv -i fast.mkv -filter_complex [0]settb=1/600[a];[1]settb=1/600[b];[a][b]concat=n=2"
      " -fps_mode passthrough -enc_time_base 1/600 -c:v qtrle a.mov");
  const MediaInfo info = probe("a.mov");
  EXPECT_EQ(info.rate, (FrameRate{60, 1}));
  EXPECT_EQ(framesAtRate(info, info.rate), 21);
  EXPECT_EQ(numbersOf(picturesOf(info)),
            (std::vector<int>{0, 0, 0, 1, 1, 1, 2, 2, 2, 3, 3, 3, 0, 1, 2, 3, 4, 5, 6, 7, 8}));
  ASSERT_EQ(info.notes.size(), 1u);
  EXPECT_NE(info.notes[0].find("is taken at 60 frames per second"), std::string::npos);
}

TEST_F(InputTest, NumberedPicturesStartAnywhere) {
  writeGrays("a.mkv", 25, 5);
  ffmpeg("-i a.mkv -start_number 1001 f.%04d.png");
  ffmpeg("-i a.mkv -start_number 8 100%%-%d.png");
  const std::vector<int> all = {0, 1, 2, 3, 4};
  for (const char* name :
       {"f.%04d.png", "f.####.png", "f.*.png", "f.1001.png", "100%-#.png", "100%-*.png"}) {
    EXPECT_EQ(numbersOf(picturesOf(probe(name))), all) << name;
  }
  EXPECT_EQ(numbersOf(picturesOf(probe("f.1003.png"))), (std::vector<int>{2, 3, 4}));
  EXPECT_TRUE(probe("f.1003.png", {.still = true}).isStill());
  // They have no rate of their own: every rate shows each of them once.
  EXPECT_EQ(framesAtRate(probe("f.####.png"), {60, 1}), 5);
  EXPECT_EQ(numbersOf(picturesOf(probe("f.####.png"), Depth::Bits8, FrameRate{60, 1})), all);

  std::filesystem::remove(path("f.1002.png"));
  std::filesystem::remove(path("f.1003.png"));
  EXPECT_NE(tests::errorOf<cli::WorkError>([&] {
              probe("f.####.png");
            }).find("lacks the numbers 1002-1003; with --tolerate-damage"),
            std::string::npos);
  EXPECT_EQ(numbersOf(picturesOf(probe("f.*.png", {.tolerateDamage = true}))),
            (std::vector<int>{0, 0, 0, 3, 4}));
  EXPECT_NE(tests::errorOf<cli::WorkError>([&] { probe("g.####.png"); }).find("g.####.png"),
            std::string::npos);
}

TEST_F(InputTest, WhatComesThroughAPipeIsReadOnce) {
  write("s.toml", "[params]\n\"Intensity\" = 0\n\"Mix with original\" = \"Add\"\n");
  ffmpeg(
      "-f lavfi -i testsrc2=s=64x36 -frames:v 6 -c:v png a.mov");  // what describes it comes last
  ASSERT_EQ(mkfifo(path("fifo").c_str(), 0600), 0);
  for (const std::string command :
       {"cat a.mov | $0 render s.toml -i - -o o.mov --codec png --overwrite",
        "cat a.mov >fifo & $0 render s.toml -i fifo -o o.mov --codec png --overwrite"}) {
    const auto result = run({"timeout", "60", "sh", "-c", command, BRISEL_PROGRAM});
    ASSERT_EQ(result.exitCode, 0) << command << result.err;
    const auto expected = picturesOf(path("a.mov"));
    const auto frames = picturesOf(path("o.mov"));
    ASSERT_EQ(frames.size(), 6u);
    for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(frames[i].bytes, expected[i].bytes) << command;
  }
  EXPECT_EQ(run({"sh", "-c", "echo no clip | $0 render s.toml -i - -o o.mov", BRISEL_PROGRAM}).err,
            "brisel: cannot read the input \"-\": Invalid data found when processing input\n");
}

// Random colors and the ends of the range, those outside of RGB too, against the definition.
TEST_F(InputTest, LumaAndChromaBecomeTheNearestColor) {
  constexpr int kSide = 128;
  constexpr std::size_t kPixels = kSide * kSide;
  std::string planes(3 * kPixels, '\0');
  std::uint32_t state = 1;
  for (char& sample : planes) {
    state = state * 1664525 + 1013904223;
    constexpr unsigned char kEnds[] = {0, 1, 15, 16, 128, 235, 240, 255};
    sample = static_cast<char>(state >> 31 ? kEnds[state >> 20 & 7] : state >> 12 & 255);
  }
  write("a.yuv", planes);
  for (const bool full : {false, true}) {
    ffmpeg(std::string("-f rawvideo -pix_fmt yuv444p -s 128x128 -i a.yuv -c:v ffv1 -colorspace "
                       "bt709 -color_range ") +
           (full ? "pc" : "tv") + " a.mkv");
    for (const Depth depth : {Depth::Bits8, Depth::Bits16}) {
      const Frame frame = picturesOf(path("a.mkv"), depth).at(0);
      const double scale = depth == Depth::Bits8 ? 255 : 65535;
      double worst = 0;
      for (std::size_t i = 0; i < kPixels; ++i) {
        const auto sample = [&](std::size_t plane) {
          return static_cast<unsigned char>(planes[plane * kPixels + i]);
        };
        const double y = full ? sample(0) / 255.0 : (sample(0) - 16) / 219.0;
        const double u = (sample(1) - 128) / (full ? 255.0 : 224.0);
        const double v = (sample(2) - 128) / (full ? 255.0 : 224.0);
        const double rgb[] = {y + 1.5748 * v,
                              y - (0.0722 * 1.8556 * u + 0.2126 * 1.5748 * v) / 0.7152,
                              y + 1.8556 * u};
        for (std::size_t c = 0; c < 3; ++c) {
          const double is = depth == Depth::Bits8
                                ? frame.bytes[4 * i + c]
                                : frame.bytes[8 * i + 2 * c] + 256 * frame.bytes[8 * i + 2 * c + 1];
          worst = std::max(worst, std::abs(is - scale * std::clamp(rgb[c], 0.0, 1.0)));
        }
      }
      // The host's 16 bits take every second step.
      EXPECT_LE(worst, depth == Depth::Bits8 ? 0.501 : 1.6) << full;
    }
  }
}

TEST_F(InputTest, HighDynamicRangeIsToneMapped) {
  // Grays of 26, 203 and 1000 cd/m2, as PQ codes them in 10 bits.
  std::string planes;
  for (const int code : {397, 573, 723, 512, 512, 512, 512, 512, 512}) {
    for (int i = 0; i < 16 * 16; ++i) {
      planes += static_cast<char>(code & 255);
      planes += static_cast<char>(code >> 8);
    }
  }
  write("a.yuv", planes);
  ffmpeg(
      "-f rawvideo -pix_fmt yuv444p10le -s 16x48 -i a.yuv -c:v ffv1 -colorspace bt2020nc "
      "-color_primaries bt2020 -color_trc smpte2084 -color_range tv a.mkv");
  const MediaInfo info = probe("a.mkv");
  ASSERT_EQ(info.notes.size(), 1u);
  EXPECT_NE(info.notes[0].find("HDR (PQ) and is tone-mapped"), std::string::npos);
  const Frame frame = picturesOf(info).at(0);
  for (const auto& [y, gray] : {std::pair{8, 108}, {24, 215}, {40, 250}}) {
    for (int c = 0; c < 3; ++c) EXPECT_NEAR(frame.row(y)[4 * 8 + c], gray, 2) << y;
  }
}

TEST_F(InputTest, InterlacedClipsAreDeinterlaced) {
  // A fade in which every field is 20 steps brighter than the one before it.
  ffmpeg(
      "-f lavfi -i nullsrc=s=64x64:r=25,format=yuv444p,geq=lum=40+40*N+20*mod(Y\\,2):cb=128:cr=128 "
      "-frames:v 4 -c:v libx264 -qp 0 -x264opts tff=1 a.mp4");
  const auto comb = [](const std::vector<Frame>& frames) {
    return frames.at(2).row(21)[80] - frames.at(2).row(20)[80];
  };
  const MediaInfo info = probe("a.mp4");
  ASSERT_EQ(info.notes.size(), 1u);
  EXPECT_NE(info.notes[0].find("--keep-fields"), std::string::npos);
  const std::vector<Frame> frames = picturesOf(info);
  EXPECT_NEAR(comb(frames), 0, 2);
  EXPECT_NEAR(frames.at(2).row(20)[80], (40 + 2 * 40 - 16) * 255 / 219.0, 2) << "the first field";
  EXPECT_NEAR(comb(picturesOf(probe("a.mp4", {.keepFields = true}))), 23, 1);
}

}  // namespace
