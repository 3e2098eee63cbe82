// The hue-lightness-saturation model: every colour against the reference, by the integer
// conversions and by the vectors that sprites recolour with.
#include "render/hls.h"

#include "reference/plotter.h"
#include "render/hls_lanes.h"
#include "render/isa/sse2.h"
#include "support.h"

namespace {

using brisel::Hls;
using brisel::Rgb;
using Lanes = brisel::HlsLanes<brisel::Sse2>;

bool same(const Rgb& a, const Rgb& b) {
  return a.red == b.red && a.green == b.green && a.blue == b.blue;
}

Rgb toRgb(float red, float green, float blue) {
  return {static_cast<std::int32_t>(red), static_cast<std::int32_t>(green),
          static_cast<std::int32_t>(blue)};
}

TEST(Hls, EveryColour) {
  std::int64_t wrong = 0;
  for (std::int32_t red = 0; red < 256; ++red) {
    for (std::int32_t green = 0; green < 256; ++green) {
      for (std::int32_t blue = 0; blue < 256; blue += 4) {
        const auto r = static_cast<float>(red);
        const auto g = static_cast<float>(green);
        const auto b = static_cast<float>(blue);
        const Lanes lanes = Lanes::fromRgb(Lanes::Float{r, r, r, r}, Lanes::Float{g, g, g, g},
                                           Lanes::Float{b, b + 1, b + 2, b + 3});
        for (int i = 0; i < 4; ++i) {
          const Rgb color = {red, green, blue + i};
          const reference::Hls expected = reference::toHls(color);
          const Hls hls = brisel::rgbToHls(color);
          wrong += hls.hue != expected.hue || hls.lightness != expected.lightness ||
                   hls.saturation != expected.saturation;
          wrong += lanes.hue[i] != static_cast<float>(expected.hue) ||
                   lanes.lightness[i] != static_cast<float>(expected.lightness) ||
                   lanes.saturation[i] != static_cast<float>(expected.saturation);
        }
      }
    }
  }
  EXPECT_EQ(wrong, 0);
}

TEST(Hls, EveryTripleAndBack) {
  std::int64_t wrong = 0;
  std::int32_t least = 0;
  std::int32_t most = 255;
  for (std::int32_t lightness = 0; lightness <= 240; ++lightness) {
    for (std::int32_t saturation = 0; saturation <= 240; ++saturation) {
      const auto l = static_cast<float>(lightness);
      const auto s = static_cast<float>(saturation);
      for (std::int32_t hue = -4; hue <= 240; hue += 4) {
        const auto h = static_cast<float>(hue);
        Lanes::Float red, green, blue;
        Lanes{{h, h + 1, h + 2, h + 3}, {l, l, l, l}, {s, s, s, s}}.toRgb(red, green, blue);
        for (int i = 0; i < 4; ++i) {
          const Rgb expected = reference::toRgb({hue + i, lightness, saturation});
          wrong += !same(brisel::hlsToRgb({hue + i, lightness, saturation}), expected);
          wrong += !same(toRgb(red[i], green[i], blue[i]), expected);
          least = std::min({least, expected.red, expected.green, expected.blue});
          most = std::max({most, expected.red, expected.green, expected.blue});
        }
      }
    }
  }
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(least, 0);
  EXPECT_EQ(most, 255);
}

TEST(Hls, FarHuesAreFolded) {
  const reference::Hls rest[] = {{0, 90, 1}, {0, 90, 240}, {0, 150, 77}, {0, 150, 0}};
  for (std::int32_t hue = -4000000; hue < 4000000; hue += 43) {
    const auto h = static_cast<float>(hue);
    Lanes::Float red, green, blue;
    Lanes{{h, h, h, h}, {90, 90, 150, 150}, {1, 240, 77, 0}}.toRgb(red, green, blue);
    for (int i = 0; i < 4; ++i) {
      const auto [none, lightness, saturation] = rest[i];
      const Rgb expected = reference::toRgb({hue, lightness, saturation});
      EXPECT_TRUE(same(toRgb(red[i], green[i], blue[i]), expected)) << hue;
      EXPECT_TRUE(same(brisel::hlsToRgb({hue, lightness, saturation}), expected)) << hue;
    }
  }
}

}  // namespace
