// The example that uses the effect library by itself, against the command line, which renders
// through the module.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/cli/pictures_of.h"
#include "tests/cli/scratch.h"

namespace {

class ExampleTest : public tests::ScratchTest {};

TEST_F(ExampleTest, DrawsTheFrameThatTheCommandLineRenders) {
  const std::string preset = SOURCE_FOLDER "/library/Corvane/Drizzen/campfire.txt";
  const tests::CommandResult drawn = run({DRAW_ONE_FRAME_PROGRAM, preset, "example.png"});
  ASSERT_EQ(drawn.exitCode, 0) << drawn.err;
  write("s.toml", "[scene]\nsize = [640, 360]\nframes = 51\npresets = [\"campfire\"]\n");
  const tests::CommandResult rendered = brisel({"render", "s.toml", "-o", "brisel.png", "--frames",
                                                "50", "--set", "Color of particles=#ffcc66"});
  ASSERT_EQ(rendered.exitCode, 0) << rendered.err;
  const cli::Frame example = tests::picturesOf(path("example.png")).front();
  EXPECT_TRUE(example.bytes == tests::picturesOf(path("brisel.png")).front().bytes);
  EXPECT_TRUE(std::ranges::any_of(example.bytes, [](std::uint8_t byte) { return byte != 0; }));

  EXPECT_EQ(run({DRAW_ONE_FRAME_PROGRAM, "none.txt", "no.png"}).exitCode, 1);
  EXPECT_EQ(run({DRAW_ONE_FRAME_PROGRAM, preset, "no/folder.png"}).exitCode, 1);
}

}  // namespace
