// Stills and clips in and out, through the files themselves.
#include <gtest/gtest.h>

#include "cli/media/media_info.h"
#include "tests/cli/pictures_of.h"
#include "tests/cli/scratch.h"

namespace {

using cli::Depth;
using cli::Frame;
using cli::FrameSize;
using cli::MediaInfo;
using scene::FrameRate;

struct Rgba {
  int r, g, b, a;
};

// One pixel in 8 bits a channel.
Rgba pixelAt(const Frame& frame, int x, int y) {
  const Frame shown = cli::inDepth(Frame(frame), Depth::Bits8);
  const std::uint8_t* pixel = shown.row(y) + shown.pixelBytes() * static_cast<std::size_t>(x);
  return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

// Every byte differs from its neighbors and from frame to frame; transparent pixels have colors.
Frame patternFrame(FrameSize size, Depth depth, int number) {
  Frame frame(size, depth);
  std::uint32_t state = static_cast<std::uint32_t>(number) + 1;
  for (std::uint8_t& byte : frame.bytes) {
    state = state * 1664525 + 1013904223;
    byte = static_cast<std::uint8_t>(state >> 24);
  }
  return frame;
}

// As the host's world holds it, whose 16 bits have half as many levels.
Frame asHostHolds(const Frame& frame) {
  hostkit::World world(frame.size.width, frame.size.height, frame.depth);
  copyToWorld(frame, world);
  Frame held;
  copyFromWorld(world, held);
  return held;
}

class MediaTest : public tests::ScratchTest {
 protected:
  // The first frame at its own size.
  Frame firstFrame(const std::string& name, Depth depth = Depth::Bits8) const {
    return tests::picturesOf(path(name), depth).front();
  }

  void writeClip(const std::string& name, FrameSize size, Depth depth, int frames) const {
    std::vector<Frame> pictures;
    for (int i = 0; i < frames; ++i) pictures.push_back(patternFrame(size, depth, i));
    // The lossless codec for both depths.
    tests::writePictures(path(name), pictures, name.ends_with(".mov") ? "png" : "");
  }
};

TEST_F(MediaTest, LosslessOutputsComeBackToTheBitWithTheirAlpha) {
  const FrameSize odd{33, 17};
  for (const Depth depth : {Depth::Bits8, Depth::Bits16}) {
    for (const std::string name : {"a.mov", "a.apng", "a_%03d.png"}) {
      writeClip(name, odd, depth, 3);
      const auto frames = tests::picturesOf(cli::probeMedia(cli::findSource(path(name))), depth);
      ASSERT_EQ(frames.size(), 3u) << name;
      for (int i = 0; i < 3; ++i) {
        const Frame expected = asHostHolds(patternFrame(odd, depth, i));
        EXPECT_EQ(frames[static_cast<std::size_t>(i)].bytes, expected.bytes) << name << " " << i;
      }
    }
    ffmpeg("-xerror -err_detect crccheck+explode -i a_%03d.png -f null -");
    for (const std::string& name : names()) std::filesystem::remove(path(name));
  }
}

TEST_F(MediaTest, HostScaleOf16BitsIsKeptExactly) {
  hostkit::World world(257, 128, Depth::Bits16);
  for (int i = 0; i < 257 * 128; ++i) {
    const auto level = static_cast<A_u_short>(std::min(i, 32768));
    world.row16(i / 257)[static_cast<std::size_t>(i % 257)] = {level, level, 0, 32768};
  }
  Frame frame({257, 128}, Depth::Bits16);
  copyFromWorld(world, frame);
  hostkit::World back(257, 128, Depth::Bits16);
  copyToWorld(frame, back);
  EXPECT_TRUE(hostkit::samePixels(world, back));
}

TEST_F(MediaTest, DepthIsChangedFullScaleToFullScale) {
  writeClip("8.mov", {33, 17}, Depth::Bits8, 1);
  const Frame deep = firstFrame("8.mov", Depth::Bits16);
  EXPECT_EQ(cli::inDepth(deep, Depth::Bits8).bytes, patternFrame({33, 17}, Depth::Bits8, 0).bytes);
  writeClip("16.png", {33, 17}, Depth::Bits16, 1);
  EXPECT_EQ(
      firstFrame("16.png").bytes,
      cli::inDepth(asHostHolds(patternFrame({33, 17}, Depth::Bits16, 0)), Depth::Bits8).bytes);
  // An opaque clip of 12 bits is opaque.
  ffmpeg(
      "-f lavfi -i color=red:s=32x32,format=yuva444p10le -frames:v 2 -c:v prores_ks "
      "-profile:v 4 -alpha_bits 16 12.mov");
  EXPECT_EQ(pixelAt(firstFrame("12.mov", Depth::Bits16), 9, 9).a, 255);
}

TEST_F(MediaTest, FlattenedOutputsShowColorsOverBlack) {
  Frame frame({31, 15}, Depth::Bits8);
  for (std::size_t i = 0; i < frame.bytes.size(); i += 4) {
    frame.bytes[i] = 255;
    frame.bytes[i + 3] = 128;
  }
  for (const std::string name : {"a.mp4", "a.gif"}) {
    tests::writePictures(path(name), std::vector(3, frame));
    const MediaInfo info = tests::infoOf(path(name));
    EXPECT_EQ(info.frameCount, 3);
    const FrameSize even{32, 16};
    EXPECT_EQ(info.size, name == "a.mp4" ? even : frame.size);
    const Rgba pixel = pixelAt(firstFrame(name), 10, 7);
    EXPECT_NEAR(pixel.r, 128, 8) << name;
    EXPECT_NEAR(pixel.g, 0, 8) << name;
    EXPECT_EQ(pixel.a, 255) << name;
  }
}

TEST_F(MediaTest, WebpAnimatesWithAlpha) {
  writeClip("a.webp", {32, 16}, Depth::Bits8, 5);
  const std::string bytes = read("a.webp");
  std::size_t at = 0;
  for (int i = 0; i < 5; ++i) at = bytes.find("ANMF", at) + 1;
  EXPECT_GT(at, 0u) << "five frames";
  EXPECT_NE(bytes.find("ALPH"), std::string::npos);
}

TEST_F(MediaTest, AnotherRateRepeatsOrSkipsFrames) {
  writeClip("a.mov", {16, 16}, Depth::Bits8, 4);
  const auto twice =
      tests::picturesOf(tests::infoOf(path("a.mov")), Depth::Bits8, FrameRate{50, 1});
  ASSERT_EQ(twice.size(), 8u);
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(twice[static_cast<std::size_t>(i)].bytes,
              patternFrame({16, 16}, Depth::Bits8, i / 2).bytes)
        << i;
  }
}

TEST_F(MediaTest, SizeFollowsThePixelAspectAndTheRotation) {
  ffmpeg("-f lavfi -i testsrc=s=64x48 -frames:v 5 -pix_fmt yuv420p -vf setsar=2 wide.mp4");
  ffmpeg("-f lavfi -i testsrc=s=64x48 -frames:v 5 -pix_fmt yuv420p flat.mp4");
  ffmpeg("-i flat.mp4 -c copy -metadata:s:v rotate=90 phone.mp4");
  for (const auto& [name, size] :
       {std::pair{"wide.mp4", FrameSize{128, 48}}, {"phone.mp4", FrameSize{48, 64}}}) {
    EXPECT_EQ(tests::infoOf(path(name)).size, size);
    EXPECT_EQ(firstFrame(name).size, size);
  }
}

TEST_F(MediaTest, AnotherSizeFitsOnTransparentWithoutFringes) {
  // Red, but a hidden green where it is transparent.
  ffmpeg(
      "-f lavfi -i color=red:s=40x20,format=rgba,"
      "geq=r='255*lt(X,20)':g='255*gte(X,20)':b=0:a='255*lt(X,20)' -frames:v 1 a.png");
  for (const Depth depth : {Depth::Bits8, Depth::Bits16}) {
    const Frame frame =
        tests::picturesOf(tests::infoOf(path("a.png")), depth, FrameRate{25, 1}, FrameSize{60, 60})
            .front();
    EXPECT_EQ(pixelAt(frame, 15, 14).a, 0) << "above the picture";
    EXPECT_EQ(pixelAt(frame, 15, 45).a, 0) << "below the picture";
    EXPECT_EQ(pixelAt(frame, 15, 30).a, 255);
    for (int x = 0; x < 60; ++x) {
      const Rgba pixel = pixelAt(frame, x, 30);
      EXPECT_TRUE(pixel.a <= 25 || (pixel.g < 25 && pixel.r > 230)) << x;
    }
  }
}

TEST_F(MediaTest, ColorsOfUntaggedClipsAreRead) {
  // Written as players assume: the high-definition matrix for a large picture.
  for (const std::string form :
       {"1280:720:out_color_matrix=bt709", "64:48:out_color_matrix=bt601"}) {
    ffmpeg("-f lavfi -i color=0x20c040:s=64x48:r=25 -frames:v 2 -vf scale=" + form +
           ",format=yuv444p,setparams=colorspace=unknown -c:v ffv1 a.mkv");
    const Rgba pixel = pixelAt(firstFrame("a.mkv"), 32, 24);
    EXPECT_NEAR(pixel.r, 0x20, 2) << form;
    EXPECT_NEAR(pixel.g, 0xC0, 2) << form;
    EXPECT_NEAR(pixel.b, 0x40, 2) << form;
  }
}

}  // namespace
