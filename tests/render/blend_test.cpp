// The five blend rules and the final mix: every pair of channel values at 8 bits against the
// formulas, with every instruction set.
#include "render/kernels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "tests/render/frames.h"
#include "tests/render/reference_blending.h"

namespace {

using brisel::BlendRule;
using brisel::Rgb;

const float kValues[] = {0.0f,   -1.0f,  1e-30f,   0.3f,   1.0f,   10.7f,        127.5f,
                         128.0f, 254.0f, 254.999f, 255.0f, 300.0f, std::nanf("")};
constexpr std::uint8_t kAlphas[] = {0, 1, 128, 254, 255};

/// A row for each alpha, of pixels with every channel value.
struct Palette {
  static constexpr std::int32_t kWidth = 256;
  static constexpr std::int32_t kHeight = std::size(kAlphas);

  Palette() : bytes(std::size_t{kWidth} * kHeight * 4) {
    for (std::size_t i = 0; i < bytes.size(); i += 4) {
      const auto d = static_cast<std::uint8_t>(i / 4);
      bytes[i] = kAlphas[i / 4 / kWidth];
      bytes[i + 1] = d;
      bytes[i + 2] = static_cast<std::uint8_t>(255 - d);
      bytes[i + 3] = static_cast<std::uint8_t>(d * 7);
    }
  }

  brisel::MutableImageView view() { return {bytes.data(), kWidth, kHeight, kWidth * 4}; }

  std::vector<std::uint8_t> bytes;
};

class BlendRules : public testing::TestWithParam<BlendRule> {};

TEST_P(BlendRules, BlendEveryChannelValueWithEveryPenAsTheReferenceDoes) {
  Palette module;
  Palette expected;
  const std::vector<std::uint8_t> before = module.bytes;
  const brisel::MutableImageView image = module.view();
  const auto sets = brisel::availableKernels();
  for (const float value : kValues) {
    const std::vector<float> values(Palette::kWidth, std::min(value, 255.0f));
    for (std::int32_t c = 0; c < 256; ++c) {
      std::ranges::copy(before, expected.bytes.begin());
      const Rgb pen = {c, c / 2, 255 - c};
      for (std::int32_t y = 0; y < Palette::kHeight; ++y) {
        for (std::int32_t x = 0; x < Palette::kWidth; ++x) {
          reference::plotPixel(expected.view(), GetParam(), pen, x, y, value);
        }
      }
      for (const brisel::Kernels* kernels : sets) {
        std::ranges::copy(before, module.bytes.begin());
        for (std::int32_t y = 0; y < Palette::kHeight; ++y) {
          kernels->run(image, {GetParam(), pen, 0, y, Palette::kWidth, values.data()});
        }
        ASSERT_TRUE(module.bytes == expected.bytes)
            << kernels->name << ", value " << value << ", pen " << c;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(, BlendRules, testing::ValuesIn(tests::kAllRules));

TEST(Mix, MixesRandomLayersAsTheReferenceDoes) {
  for (std::uint32_t trial = 0; trial < 40; ++trial) {
    tests::Dice dice(40000 + trial);
    const bool deep = trial % 2 == 1;
    const std::int32_t width = dice.integer(1, 200);
    tests::Frame input(width + dice.integer(0, 6), 60 + dice.integer(-3, 3), deep);
    const tests::Frame stars = [&] {
      tests::Frame frame(width + 3, 60, deep);
      frame.fill(dice);
      return frame;
    }();
    input.fill(dice);
    tests::Frame expected = stars;
    const int mode = dice.integer(1, 4);
    if (mode == 2 || mode == 3) reference::mixWithInput(expected.view(), input.view(), mode);
    for (const brisel::Kernels* kernels : brisel::availableKernels()) {
      SCOPED_TRACE(kernels->name);
      tests::Frame module = stars;
      kernels->mixWithInput(module.view(), {0, 60}, input.view(),
                            static_cast<brisel::MixMode>(mode));
      expectSame(module, expected);
    }
  }
}

}  // namespace
