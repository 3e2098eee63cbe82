// What the formats hold, through ffmpeg's eyes.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "tests/cli/pictures_of.h"
#include "tests/cli/scratch.h"

namespace {

using cli::Depth;
using cli::Frame;
using cli::FrameSize;

constexpr FrameSize kSize{96, 64};

// Colors and alpha that change smoothly over their whole ranges.
Frame rampFrame(Depth depth) {
  Frame frame(kSize, Depth::Bits16);
  for (int y = 0; y < kSize.height; ++y) {
    for (int x = 0; x < kSize.width; ++x) {
      const std::uint16_t rgba[] = {
          static_cast<std::uint16_t>(x * 65535 / (kSize.width - 1)),
          static_cast<std::uint16_t>(y * 65535 / (kSize.height - 1)), 32768,
          static_cast<std::uint16_t>(65535 - x * 65535 / 2 / kSize.width)};
      std::memcpy(frame.row(y) + x * 8, rgba, sizeof rgba);
    }
  }
  return inDepth(frame, depth);
}

class OutputFormatsTest : public tests::ScratchTest {
 protected:
  // As "key=value" lines.
  std::string streamOf(const std::string& name) const {
    return run({"ffprobe", "-v", "error", "-count_packets", "-show_streams", path(name)}).out;
  }

  Frame firstFrame(const std::string& name, Depth depth) const {
    return tests::picturesOf(path(name), depth).front();
  }
};

TEST_F(OutputFormatsTest, ClipsAreWhatTheirTagsSayAndTheSameEachTime) {
  struct Case {
    std::string name;
    Depth depth;
    std::vector<std::string> tags;
  };
  const std::vector<Case> cases = {
      {"a.mov", Depth::Bits8, {"codec_name=prores", "codec_tag_string=ap4h"}},
      {"b.mov", Depth::Bits16, {"codec_name=prores", "codec_tag_string=ap4h"}},
      {"a.webm", Depth::Bits8, {"codec_name=vp9", "TAG:alpha_mode=1"}},
      {"a.mp4", Depth::Bits8, {"codec_name=h264", "pix_fmt=yuv420p\n"}},
      {"b.mp4",
       Depth::Bits16,
       {"codec_name=hevc", "pix_fmt=yuv420p10le", "codec_tag_string=hvc1"}}};
  for (const Case& c : cases) {
    const std::vector pictures(3, rampFrame(c.depth));
    tests::writePictures(path(c.name), pictures);
    const std::string bytes = read(c.name);
    tests::writePictures(path(c.name), pictures);
    EXPECT_TRUE(read(c.name) == bytes) << c.name;
    const std::string stream = streamOf(c.name);
    std::vector<std::string> tags = {"color_range=tv", "color_space=bt709", "color_transfer=bt709",
                                     "color_primaries=bt709", "nb_read_packets=3"};
    tags.insert(tags.end(), c.tags.begin(), c.tags.end());
    for (const std::string& tag : tags) {
      EXPECT_NE(stream.find(tag), std::string::npos) << c.name << " lacks " << tag << "\n"
                                                     << stream;
    }
  }
}

// Whoever mistakes the matrix, the range or the multiplication by alpha is off by far more.
TEST_F(OutputFormatsTest, LossyClipsWithAlphaStayWithinAFewLevels) {
  struct Case {
    std::string name;
    Depth depth;
    double color, alpha;  // of 255
  };
  for (const Case& c : {Case{"a.mov", Depth::Bits8, 2.5, 1}, Case{"b.mov", Depth::Bits16, 2.5, 0.5},
                        Case{"a.webm", Depth::Bits8, 8, 4}}) {
    const Frame frame = rampFrame(c.depth);
    tests::writePictures(path(c.name), {frame});
    const Frame expected = inDepth(frame, Depth::Bits16);
    const Frame read = inDepth(firstFrame(c.name, c.depth), Depth::Bits16);
    double off[4] = {};
    for (std::size_t i = 0; i < expected.bytes.size() / 2; ++i) {
      std::uint16_t from, to;
      std::memcpy(&from, expected.bytes.data() + 2 * i, 2);
      std::memcpy(&to, read.bytes.data() + 2 * i, 2);
      off[i % 4] = std::max(off[i % 4], std::abs(from - to) / 257.0);
    }
    for (int channel = 0; channel < 3; ++channel) EXPECT_LE(off[channel], c.color) << c.name;
    EXPECT_LE(off[3], c.alpha) << c.name;
  }
}

TEST_F(OutputFormatsTest, ExrFramesAreLinearAndPremultiplied) {
  for (const Depth depth : {Depth::Bits8, Depth::Bits16}) {
    Frame frame({1, 1}, Depth::Bits8);
    frame.bytes = {128, 255, 10, 51};
    tests::writePictures(path("a.exr"), {inDepth(frame, depth)});
    ffmpeg("-i a.exr -pix_fmt gbrapf32le -f rawvideo a.raw");
    const std::string raw = read("a.raw");
    float gbra[4];
    ASSERT_EQ(raw.size(), sizeof gbra);
    std::memcpy(gbra, raw.data(), sizeof gbra);
    EXPECT_NEAR(gbra[2], 0.2158605 * 0.2, 2e-5);
    EXPECT_NEAR(gbra[0], 0.2, 1e-4);
    EXPECT_NEAR(gbra[1], 10 / 255.0 / 12.92 * 0.2, 1e-6);
    EXPECT_NEAR(gbra[3], 0.2, 1e-4);
  }
}

}  // namespace
