// The header of the effect controls: its banner and its two buttons.
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <thread>

#include "tests/plugin/panel_fixture.h"

namespace {

using tests::Drawing;
using tests::expectImage;
using tests::kHeader;
using tests::kHeaderRect;

using HeaderTest = tests::PanelTest;

TEST_F(HeaderTest, ItsButtonsLightUpUnderThePointer) {
  const std::vector<Drawing> idle = drawn(kHeader, kHeaderRect);
  ASSERT_EQ(idle.size(), 3u);
  expectImage(idle[0], {30, 200, 445, 100}, 1.0f);
  expectImage(idle[1], {78, 261, 41, 36}, 1.0f);
  expectImage(idle[2], {32, 202, 52, 55}, 1.0f);
  // Upright: the banner's first row is the last one of its file, whose rows end in a padding byte.
  std::ifstream banner(BRISEL_BANNER_PATH, std::ios::binary);
  banner.seekg(54 + 99 * 1336);
  char blueGreenRed[3];
  banner.read(blueGreenRed, 3);
  for (std::size_t c = 0; c < 3; ++c) {
    EXPECT_EQ(idle[0].image.pixels[c], static_cast<std::uint8_t>(blueGreenRed[2 - c]));
  }

  const auto hover = [&](A_long x, A_long y) {
    return session.hover(kHeader, kHeaderRect, {30 + x, 200 + y}).eventFlags;
  };
  EXPECT_EQ(hover(47, 61), 0);
  EXPECT_NE(hover(48, 61), 0);
  EXPECT_EQ(hover(89, 97), 0);  // still over it: nothing to redraw
  const std::vector<Drawing> hot = drawn(kHeader, kHeaderRect);
  EXPECT_NE(hot[1].image, idle[1].image);
  EXPECT_EQ(hot[2].image, idle[2].image);
  EXPECT_NE(hover(54, 57), 0);
  EXPECT_NE(drawn(kHeader, kHeaderRect)[2].image, idle[2].image);
  EXPECT_NE(hover(54, 58), 0);
  EXPECT_EQ(drawn(kHeader, kHeaderRect)[1].image, idle[1].image);
}

#if !defined(_WIN32)
TEST_F(HeaderTest, ButtonsAskTheSystemToOpenPages) {
  const auto asked = folder() / "asked";
  std::ofstream(folder() / "xdg-open")
      << "#!/bin/sh\necho \"$1\" >> '" << asked.string() << "'\nsleep 0.3\n";
  std::filesystem::permissions(folder() / "xdg-open", std::filesystem::perms::owner_all);
  const std::string path = std::getenv("PATH");
  setenv("PATH", (folder().string() + ":" + path).c_str(), 1);
  const auto click = [&](A_long x, A_long y) {
    session.click(kHeader, kHeaderRect, {30 + x, 200 + y});
  };
  const auto awaitLines = [&](std::size_t count) {
    std::vector<std::string> lines;
    for (int tries = 0; tries < 500 && lines.size() < count; ++tries) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
      std::ifstream file(asked);
      lines.clear();
      for (std::string line; std::getline(file, line);) lines.push_back(line);
    }
    return lines;
  };
  click(56, 30);  // between the buttons
  click(60, 70);
  click(20, 20);  // dropped: the first one is still under way
  EXPECT_EQ(awaitLines(1),
            std::vector{folder().string() + "/Corvane/Documentation/corvanedoc.html"});
  std::this_thread::sleep_for(std::chrono::milliseconds(600));
  click(20, 20);
  EXPECT_EQ(awaitLines(2).back(), "https://corvane.example/");
  setenv("PATH", path.c_str(), 1);
}
#endif

}  // namespace
