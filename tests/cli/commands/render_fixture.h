// `brisel render` in a folder of a test's own, with a scene to render.
#pragma once

#include <algorithm>

#include "tests/cli/pictures_of.h"
#include "tests/cli/scratch.h"

namespace tests {

using Names = std::vector<std::string>;

inline constexpr char kScene[] = R"([scene]
size = [64, 36]
frames = 6
[params]
"Intensity" = 20
"Size" = 20
"Mix with original" = "Replace"
)";

class RenderTest : public ScratchTest {
 protected:
  RenderTest() { write("s.toml", kScene); }

  // "render" and the words.
  CommandResult render(const std::string& text) const {
    Names arguments = words(text);
    arguments.insert(arguments.begin(), "render");
    return brisel(arguments);
  }
  void renders(const std::string& text) const {
    const CommandResult result = render(text);
    ASSERT_EQ(result.exitCode, 0) << text << "\n" << result.err;
  }

  // All frames of a clip or still at its own size.
  std::vector<cli::Frame> frames(const std::string& name,
                                 cli::Depth depth = cli::Depth::Bits8) const {
    return picturesOf(path(name), depth);
  }
  static bool isBlank(const cli::Frame& frame) {
    return std::ranges::all_of(frame.bytes, [](std::uint8_t byte) { return byte == 0; });
  }
};

}  // namespace tests
