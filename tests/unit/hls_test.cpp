// The hue-lightness-saturation model: worked numbers, and every colour against the reference, by
// the integer conversions and by the vectors that sprites recolour with.
#include "render/hls.h"

#include "reference/plotter.h"
#include "render/hls_lanes.h"
#include "support.h"

namespace {

using brisel::Hls;
using brisel::Rgb;
using Lanes = brisel::HlsLanes<4>;

bool same(const Rgb& a, const Rgb& b) {
  return a.red == b.red && a.green == b.green && a.blue == b.blue;
}

TEST(Hls, WorkedNumbers) {
  struct Case {
    Rgb rgb;
    Hls hls;
    Rgb back;
  };
  const Case cases[] = {
      {{100, 100, 100}, {160, 94, 0}, {99, 99, 99}},    {{255, 0, 0}, {0, 120, 240}, {255, 0, 0}},
      {{0, 255, 0}, {80, 120, 240}, {0, 255, 0}},       {{0, 0, 255}, {160, 120, 240}, {0, 0, 255}},
      {{255, 0, 10}, {238, 120, 240}, {255, 0, 13}},    {{0, 0, 0}, {160, 0, 0}, {0, 0, 0}},
      {{255, 255, 255}, {160, 240, 0}, {255, 255, 255}}};
  for (const Case& c : cases) {
    const Hls hls = brisel::rgbToHls(c.rgb);
    EXPECT_EQ(hls.hue, c.hls.hue);
    EXPECT_EQ(hls.lightness, c.hls.lightness);
    EXPECT_EQ(hls.saturation, c.hls.saturation);
    EXPECT_TRUE(same(brisel::hlsToRgb(hls), c.back));
  }
}

TEST(Hls, HuesAreFolded) {
  EXPECT_EQ(brisel::hueToChannel(0, 240, -80), brisel::hueToChannel(0, 240, 160));
  EXPECT_EQ(brisel::hueToChannel(0, 240, 20), 120);
  EXPECT_EQ(brisel::hueToChannel(0, 240, 260), 120);
  EXPECT_EQ(brisel::hueToChannel(0, 240, 740), 120);
  EXPECT_EQ(brisel::hueToChannel(0, 240, -220), 120);
  for (std::int32_t hue = -3000; hue <= 3000; ++hue) {
    const Hls hls = {hue, 100, 200};
    EXPECT_TRUE(same(brisel::hlsToRgb(hls), reference::toRgb({hue, 100, 200}))) << hue;
  }
  for (const std::int32_t hue : {INT32_MAX, INT32_MIN}) {
    EXPECT_TRUE(same(brisel::hlsToRgb({hue, 90, 50}), brisel::hlsToRgb({hue % 240, 90, 50})));
  }
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
        Lanes::Int red, green, blue;
        Lanes{{h, h + 1, h + 2, h + 3}, {l, l, l, l}, {s, s, s, s}}.toRgb(red, green, blue);
        for (int i = 0; i < 4; ++i) {
          const Rgb expected = reference::toRgb({hue + i, lightness, saturation});
          wrong += !same(brisel::hlsToRgb({hue + i, lightness, saturation}), expected);
          wrong += !same({red[i], green[i], blue[i]}, expected);
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

TEST(Hls, VectorsFoldFarHues) {
  for (std::int32_t hue = -4000000; hue < 4000000; hue += 997) {
    const auto h = static_cast<float>(hue);
    Lanes::Int red, green, blue;
    Lanes{{h, h, h, h}, {90, 90, 150, 150}, {1, 240, 77, 0}}.toRgb(red, green, blue);
    EXPECT_TRUE(same({red[0], green[0], blue[0]}, reference::toRgb({hue, 90, 1}))) << hue;
    EXPECT_TRUE(same({red[1], green[1], blue[1]}, reference::toRgb({hue, 90, 240}))) << hue;
    EXPECT_TRUE(same({red[2], green[2], blue[2]}, reference::toRgb({hue, 150, 77}))) << hue;
    EXPECT_TRUE(same({red[3], green[3], blue[3]}, reference::toRgb({hue, 150, 0}))) << hue;
  }
}

}  // namespace
