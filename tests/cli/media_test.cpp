// Stills and clips in and out, through the files themselves.
#include <gtest/gtest.h>

#include <cstring>

#include "cli/errors.h"
#include "cli/frame_reader.h"
#include "cli/frame_writer.h"
#include "cli/media_info.h"
#include "scratch.h"

namespace {

using cli::Depth;
using cli::Frame;
using cli::FrameRate;
using cli::FrameSize;
using cli::MediaInfo;

// Channels 0..1 of one pixel.
struct Rgba {
  double r, g, b, a;
};

Rgba pixelAt(const Frame& frame, int x, int y) {
  const std::uint8_t* pixel = frame.row(y) + frame.pixelBytes() * static_cast<std::size_t>(x);
  if (frame.depth == Depth::k8) {
    return {pixel[0] / 255.0, pixel[1] / 255.0, pixel[2] / 255.0, pixel[3] / 255.0};
  }
  std::uint16_t c[4];
  std::memcpy(c, pixel, sizeof c);
  return {c[0] / 65535.0, c[1] / 65535.0, c[2] / 65535.0, c[3] / 65535.0};
}

// Every byte differs from its neighbours and from frame to frame; transparent pixels have colours.
Frame patternFrame(FrameSize size, Depth depth, int number) {
  Frame frame(size, depth);
  std::uint32_t state = static_cast<std::uint32_t>(number) + 1;
  for (std::uint8_t& byte : frame.bytes) {
    state = state * 1664525 + 1013904223;
    byte = static_cast<std::uint8_t>(state >> 24);
  }
  return frame;
}

class MediaTest : public clitest::ScratchTest {
 protected:
  cli::FrameReader open(const std::string& name, FrameSize size, FrameRate rate,
                        Depth depth = Depth::k8) const {
    return {path(name), cli::probeMedia(path(name)), size, rate, depth};
  }

  // The first frame at its own size.
  Frame firstFrame(const std::string& name, Depth depth = Depth::k8) const {
    const MediaInfo info = cli::probeMedia(path(name));
    return cli::FrameReader(path(name), info, info.size, info.rate, depth).next();
  }

  void writeClip(const std::string& name, FrameSize size, Depth depth, int frames) const {
    const auto writer =
        cli::openFrameWriter(cli::parseOutputTarget(path(name)), size, FrameRate{25, 1}, depth);
    for (int i = 0; i < frames; ++i) writer->write(patternFrame(size, depth, i), i);
    writer->finish();
  }
};

class LosslessTest : public MediaTest,
                     public ::testing::WithParamInterface<std::pair<std::string, Depth>> {};

TEST_P(LosslessTest, ComesBackToTheBitWithItsAlpha) {
  const auto& [name, depth] = GetParam();
  const FrameSize odd{33, 17};
  writeClip(name, odd, depth, 3);
  cli::FrameReader reader = open(name, odd, FrameRate{25, 1}, depth);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(reader.next().bytes, patternFrame(odd, depth, i).bytes) << "frame " << i;
  }
  EXPECT_EQ(reader.next().bytes, patternFrame(odd, depth, 2).bytes) << "the last frame holds";
}

INSTANTIATE_TEST_SUITE_P(
    Outputs, LosslessTest,
    ::testing::Values(std::pair("a.mov", Depth::k8), std::pair("a.mov", Depth::k16),
                      std::pair("a.apng", Depth::k8), std::pair("a.apng", Depth::k16),
                      std::pair("a_%03d.png", Depth::k8), std::pair("a_%03d.png", Depth::k16)),
    [](const auto& info) {
      return (info.param.first[1] == '_' ? "png" : info.param.first.substr(2)) +
             std::to_string(static_cast<int>(info.param.second));
    });

TEST_F(MediaTest, HostScaleOf16BitsIsKeptExactly) {
  hostkit::World world(257, 128, Depth::k16);
  for (int i = 0; i < 257 * 128; ++i) {
    const auto level = static_cast<A_u_short>(std::min(i, 32768));
    world.row16(i / 257)[static_cast<std::size_t>(i % 257)] = {level, level, 0, 32768};
  }
  Frame frame({257, 128}, Depth::k16);
  copyFromWorld(world, frame);
  EXPECT_EQ(pixelAt(frame, 0, 0).b, 1.0) << "full scale is full scale";
  hostkit::World back(257, 128, Depth::k16);
  copyToWorld(frame, back);
  EXPECT_TRUE(hostkit::samePixels(world, back));
}

TEST_F(MediaTest, DepthIsChangedFullScaleToFullScale) {
  writeClip("8.mov", {33, 17}, Depth::k8, 1);
  const Frame deep =
      cli::FrameReader(path("8.mov"), cli::probeMedia(path("8.mov")), {33, 17}, {25, 1}, Depth::k16)
          .next();
  EXPECT_EQ(cli::inDepth(deep, Depth::k8).bytes, patternFrame({33, 17}, Depth::k8, 0).bytes);
  EXPECT_EQ(cli::inDepth(Frame(deep), Depth::k16).bytes, deep.bytes);
  writeClip("16.png", {33, 17}, Depth::k16, 1);
  EXPECT_EQ(firstFrame("16.png").bytes,
            cli::inDepth(patternFrame({33, 17}, Depth::k16, 0), Depth::k8).bytes);
  // An opaque clip of 12 bits is opaque.
  ffmpeg(
      "-f lavfi -i color=red:s=32x32,format=yuva444p10le -frames:v 2 -c:v prores_ks "
      "-profile:v 4 -alpha_bits 16 12.mov");
  EXPECT_EQ(pixelAt(firstFrame("12.mov", Depth::k16), 9, 9).a, 1);
}

TEST_F(MediaTest, FlattenedOutputsShowColoursOverBlack) {
  Frame frame({31, 15}, Depth::k8);
  for (std::size_t i = 0; i < frame.bytes.size(); i += 4) {
    frame.bytes[i] = 255;
    frame.bytes[i + 3] = 128;
  }
  for (const std::string name : {"a.mp4", "a.gif"}) {
    const auto writer = cli::openFrameWriter(cli::parseOutputTarget(path(name)), frame.size,
                                             FrameRate{25, 1}, Depth::k8);
    for (int i = 0; i < 3; ++i) writer->write(frame, i);
    writer->finish();
    const MediaInfo info = cli::probeMedia(path(name));
    EXPECT_EQ(info.frameCount, 3);
    const FrameSize even{32, 16};
    EXPECT_EQ(info.size, name == "a.mp4" ? even : frame.size);
    const Rgba pixel = pixelAt(firstFrame(name), 10, 7);
    EXPECT_NEAR(pixel.r, 0.5, 0.03) << name;
    EXPECT_NEAR(pixel.g, 0, 0.03) << name;
    EXPECT_EQ(pixel.a, 1) << name;
  }
}

TEST_F(MediaTest, WebpAnimatesWithAlpha) {
  writeClip("a.webp", {32, 16}, Depth::k8, 5);
  const std::string bytes = read("a.webp");
  int frames = 0;
  for (std::size_t at = bytes.find("ANMF"); at != std::string::npos;
       at = bytes.find("ANMF", at + 1))
    ++frames;
  EXPECT_EQ(frames, 5);
  EXPECT_NE(bytes.find("ALPH"), std::string::npos);
}

TEST_F(MediaTest, ClipsTellLengthAndRate) {
  ffmpeg("-f lavfi -i testsrc=s=64x48:r=30000/1001 -frames:v 45 -pix_fmt yuv420p a.mp4");
  ffmpeg("-f lavfi -i testsrc=s=64x48 -frames:v 1 a.jpg");
  const MediaInfo clip = cli::probeMedia(path("a.mp4"));
  EXPECT_EQ(clip.frameCount, 45);
  EXPECT_EQ(clip.rate, (FrameRate{30000, 1001}));
  EXPECT_EQ(cli::framesAtRate(clip, {60, 1}), 90);
  EXPECT_TRUE(cli::probeMedia(path("a.jpg")).isStill());
}

TEST_F(MediaTest, AnotherRateRepeatsOrSkipsFrames) {
  writeClip("a.mov", {16, 16}, Depth::k8, 4);
  cli::FrameReader twice = open("a.mov", {16, 16}, {50, 1});
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(twice.next().bytes, patternFrame({16, 16}, Depth::k8, i / 2).bytes) << i;
  }
}

TEST_F(MediaTest, SizeIsAsSeen) {
  ffmpeg("-f lavfi -i testsrc=s=64x48 -frames:v 5 -pix_fmt yuv420p -vf setsar=2 wide.mp4");
  ffmpeg("-f lavfi -i testsrc=s=64x48 -frames:v 5 -pix_fmt yuv420p flat.mp4");
  ffmpeg("-i flat.mp4 -c copy -metadata:s:v rotate=90 phone.mp4");
  EXPECT_EQ(cli::probeMedia(path("wide.mp4")).size, (FrameSize{128, 48}));
  EXPECT_EQ(cli::probeMedia(path("phone.mp4")).size, (FrameSize{48, 64}));
  EXPECT_EQ(firstFrame("wide.mp4").size, (FrameSize{128, 48}));
  EXPECT_EQ(firstFrame("phone.mp4").size, (FrameSize{48, 64}));
}

TEST_F(MediaTest, AnotherSizeFitsOnTransparentWithoutFringes) {
  // Red, but a hidden green where it is transparent.
  ffmpeg(
      "-f lavfi -i color=red:s=40x20,format=rgba,"
      "geq=r='255*lt(X,20)':g='255*gte(X,20)':b=0:a='255*lt(X,20)' -frames:v 1 a.png");
  for (const Depth depth : {Depth::k8, Depth::k16}) {
    cli::FrameReader reader = open("a.png", {60, 60}, {25, 1}, depth);
    const Frame& frame = reader.next();
    EXPECT_EQ(pixelAt(frame, 15, 14).a, 0) << "above the picture";
    EXPECT_EQ(pixelAt(frame, 15, 45).a, 0) << "below the picture";
    EXPECT_EQ(pixelAt(frame, 15, 30).a, 1);
    for (int x = 0; x < 60; ++x) {
      const Rgba pixel = pixelAt(frame, x, 30);
      if (pixel.a > 0.1) {
        EXPECT_LT(pixel.g, 0.1) << x;
        EXPECT_GT(pixel.r, 0.9) << x;
      }
    }
  }
}

TEST_F(MediaTest, AlphaOfWebClipsIsKept) {
  ffmpeg(
      "-f lavfi -i color=white:s=32x32,format=yuva420p,geq=lum=235:cb=128:cr=128:a='255*lt(X,16)'"
      " -frames:v 3 -c:v libvpx-vp9 -lossless 1 a.webm");
  const Frame frame = firstFrame("a.webm");
  EXPECT_GT(pixelAt(frame, 4, 16).a, 0.98);
  EXPECT_LT(pixelAt(frame, 28, 16).a, 0.02);
}

TEST_F(MediaTest, ColoursOfUntaggedClipsAreRead) {
  // Written as players assume: the high-definition matrix for a large picture.
  ffmpeg(
      "-f lavfi -i color=0x20c040:s=1280x720:r=25 -frames:v 2 "
      "-vf scale=out_color_matrix=bt709,format=yuv444p -c:v ffv1 a.mkv");
  const Rgba pixel = pixelAt(firstFrame("a.mkv"), 640, 360);
  EXPECT_NEAR(pixel.r, 0x20 / 255.0, 0.01);
  EXPECT_NEAR(pixel.g, 0xC0 / 255.0, 0.01);
  EXPECT_NEAR(pixel.b, 0x40 / 255.0, 0.01);
}

TEST_F(MediaTest, DamagedFilesAreNamed) {
  ffmpeg("-f lavfi -i testsrc=s=64x48 -frames:v 20 -pix_fmt yuv420p whole.mp4");
  write("cut.mp4", read("whole.mp4").substr(0, 600));
  write("empty.png", "");
  for (const std::string name : {"cut.mp4", "empty.png", "missing.png"}) {
    try {
      firstFrame(name);
      ADD_FAILURE() << name;
    } catch (const cli::WorkError& error) {
      EXPECT_NE(std::string(error.what()).find(path(name)), std::string::npos) << error.what();
    }
  }
}

TEST_F(MediaTest, AnUnfinishedClipLeavesNothing) {
  {
    const auto writer = cli::openFrameWriter(cli::parseOutputTarget(path("a.mov")), {16, 16},
                                             FrameRate{25, 1}, Depth::k8);
    writer->write(patternFrame({16, 16}, Depth::k8, 0), 0);
  }
  EXPECT_TRUE(names().empty());
}

}  // namespace
