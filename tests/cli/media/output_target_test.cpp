// What output names and options ask for.
#include "cli/media/output_target.h"

#include <gtest/gtest.h>

#include "cli/media/frame_range.h"
#include "cli/support/errors.h"
#include "tests/cli/scratch.h"
#include "tests/support/complaints.h"

namespace {

using cli::OutputFormat;
using cli::OutputOptions;
using cli::OutputTarget;

TEST(OutputTargets, AreChosenByTheirNames) {
  EXPECT_EQ(cli::parseOutputTarget("a/b.MOV").format, OutputFormat::Mov);
  EXPECT_EQ(cli::parseOutputTarget("o/b_%04d.png").fileOf(12), "o/b_0012.png");
  EXPECT_EQ(cli::parseOutputTarget("%d.exr").fileOf(12345), "12345.exr");
  EXPECT_EQ(cli::parseOutputTarget("shot#2.####.exr").fileOf(12), "shot#2.0012.exr");
  EXPECT_EQ(cli::parseOutputTarget("shot#2.mov").fileOf(12), "shot#2.mov");
  for (const char* name :
       {"a", "a.jpg", "a_%04d.mov", "a_%s.png", "a_%d_%d.png", "a_%0d.png", "-"}) {
    EXPECT_THROW(cli::parseOutputTarget(name), cli::UsageError) << name;
  }
}

TEST(OutputTargets, FollowTheOptions) {
  OutputOptions options;
  options.name = "f.####.png";
  options.startNumber = 1001;
  EXPECT_EQ(cli::parseOutputTarget(options).fileOf(80), "f.1081.png");
  options = {};
  options.name = "clip.part";
  options.format = "mov";
  options.codec = "png";
  const OutputTarget target = cli::parseOutputTarget(options);
  EXPECT_EQ(target.format, OutputFormat::Mov);
  EXPECT_EQ(target.codec, cli::MovCodec::Png);

  const auto complaint = [](const char* name, const char* codec, std::optional<int> start) {
    OutputOptions given;
    given.name = name;
    given.codec = codec;
    given.startNumber = start;
    return tests::errorOf<cli::UsageError>([&] { cli::parseOutputTarget(given); });
  };
  EXPECT_EQ(complaint("a.mp4", "qtrle", {}), "--codec is for .mov clips, not for \"a.mp4\"");
  EXPECT_TRUE(complaint("a.png", "", 1001).starts_with("--start-number is for numbered frames"));
}

TEST(FrameRanges, AreReadAsOneNumberOrTwo) {
  EXPECT_EQ(cli::parseFrameRange("7").last, 7);
  EXPECT_EQ(cli::parseFrameRange("3-9").count(), 7);
  for (const char* text : {"", "-3", "9-3", "a-b", "1-", "1-2-3"}) {
    EXPECT_THROW(cli::parseFrameRange(text), cli::UsageError) << text;
  }
}

}  // namespace
