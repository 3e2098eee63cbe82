// The hue-lightness-saturation model: digests of the integer conversions of all colors, and the
// vectors that sprites recolor with against the integers.
#include "render/raster/recolor.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/render/frames.h"
#if defined(__aarch64__)
#include "render/isa/neon.h"
#else
#include "render/isa/sse2.h"
#endif

namespace {

using brisel::Hls;
using brisel::Rgb;

#if defined(__aarch64__)
using FourLanes = brisel::Neon;
#else
using FourLanes = brisel::Sse2;
#endif
using Floats = brisel::VectorOf<float, 4>::Type;

/// Round as the sets that fuse multiplications with additions do, and as those that do not; they
/// differ in nothing else that the conversions use.
struct OneRounding : FourLanes {
  static Floats fused(Floats a, Floats b, Floats c) {
    for (int i = 0; i < kLanes; ++i) a[i] = std::fma(a[i], b[i], c[i]);
    return a;
  }
};
struct TwoRoundings : FourLanes {
  static Floats fused(Floats a, Floats b, Floats c) { return a * b + c; }
};

template <class Isa>
class HlsTest : public testing::Test {};
using Roundings = testing::Types<OneRounding, TwoRoundings>;
TYPED_TEST_SUITE(HlsTest, Roundings);

bool equals(const Rgb& color, float red, float green, float blue) {
  return static_cast<float>(color.red) == red && static_cast<float>(color.green) == green &&
         static_cast<float>(color.blue) == blue;
}

TYPED_TEST(HlsTest, EveryColorIsConvertedAsKnownInIntegersAndVectors) {
  using Lanes = brisel::HlsLanes<TypeParam>;
  using Float = typename Lanes::Float;
  tests::Digest digest;
  std::int64_t wrong = 0;
  for (std::int32_t red = 0; red < 256; ++red) {
    for (std::int32_t green = 0; green < 256; ++green) {
      for (std::int32_t blue = 0; blue < 256; blue += 4) {
        const auto r = static_cast<float>(red);
        const auto g = static_cast<float>(green);
        const auto b = static_cast<float>(blue);
        const Lanes lanes =
            Lanes::fromRgb(Float{r, r, r, r}, Float{g, g, g, g}, Float{b, b + 1, b + 2, b + 3});
        for (int i = 0; i < 4; ++i) {
          const auto [hue, lightness, saturation] = brisel::rgbToHls({red, green, blue + i});
          for (const std::int32_t n : {hue, lightness, saturation}) digest.add(n);
          wrong += lanes.hue[i] != static_cast<float>(hue) ||
                   lanes.lightness[i] != static_cast<float>(lightness) ||
                   lanes.saturation[i] != static_cast<float>(saturation);
        }
      }
    }
  }
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(digest.value, 13838609440264878033u);
}

TYPED_TEST(HlsTest, EveryTripleIsConvertedBackAsKnownInIntegersAndVectors) {
  using Lanes = brisel::HlsLanes<TypeParam>;
  using Float = typename Lanes::Float;
  tests::Digest digest;
  std::int64_t wrong = 0;
  for (std::int32_t lightness = 0; lightness <= 240; ++lightness) {
    for (std::int32_t saturation = 0; saturation <= 240; ++saturation) {
      const auto l = static_cast<float>(lightness);
      const auto s = static_cast<float>(saturation);
      for (std::int32_t hue = -4; hue <= 240; hue += 4) {
        const auto h = static_cast<float>(hue);
        Float red, green, blue;
        Lanes{{h, h + 1, h + 2, h + 3}, {l, l, l, l}, {s, s, s, s}}.toRgb(red, green, blue);
        for (int i = 0; i < 4; ++i) {
          const Rgb color = brisel::hlsToRgb({hue + i, lightness, saturation});
          for (const std::int32_t n : {color.red, color.green, color.blue}) digest.add(n);
          wrong += !equals(color, red[i], green[i], blue[i]);
        }
      }
    }
  }
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(digest.value, 4168093936202900677u);
}

TYPED_TEST(HlsTest, HuesFarOutsideTheCircleAreFolded) {
  using Lanes = brisel::HlsLanes<TypeParam>;
  using Float = typename Lanes::Float;
  const Hls rest[] = {{0, 90, 1}, {0, 90, 240}, {0, 150, 77}, {0, 150, 0}};
  for (std::int32_t hue = -4000000; hue < 4000000; hue += 43) {
    const auto h = static_cast<float>(hue);
    Float red, green, blue;
    Lanes{{h, h, h, h}, {90, 90, 150, 150}, {1, 240, 77, 0}}.toRgb(red, green, blue);
    for (int i = 0; i < 4; ++i) {
      const auto [none, lightness, saturation] = rest[i];
      const Rgb near = brisel::hlsToRgb({(hue % 240 + 240) % 240, lightness, saturation});
      EXPECT_TRUE(equals(near, red[i], green[i], blue[i])) << hue;
      const Rgb far = brisel::hlsToRgb({hue, lightness, saturation});
      EXPECT_TRUE(equals(far, red[i], green[i], blue[i])) << hue;
    }
  }
}

}  // namespace
