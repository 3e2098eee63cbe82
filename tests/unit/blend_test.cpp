// The five blend rules and the final mix: every pair of channel values at 8 bits against the
// formulas, and worked numbers at both depths.
#include "render/blend.h"

#include <cmath>
#include <vector>

#include "reference/plotter.h"
#include "render/mix.h"
#include "support.h"

namespace {

using brisel::BlendRule;
using brisel::RenderSettings;
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
    settings.frameWidth = kWidth;
    settings.frameHeight = kHeight;
    settings.outputRowStride = kWidth * 4;
  }

  std::vector<std::uint8_t> bytes;
  RenderSettings settings;
};

class BlendRules : public testing::TestWithParam<BlendRule> {};

TEST_P(BlendRules, EveryChannelUnderEveryPen) {
  Palette module;
  Palette expected;
  const std::vector<std::uint8_t> before = module.bytes;
  module.settings.outputPixels = module.bytes.data();
  expected.settings.outputPixels = expected.bytes.data();
  const brisel::Layer layer = outputLayer(module.settings);
  reference::Plotter plotter{expected.settings, {}, {}, GetParam()};
  const brisel::BlendKernels kernels = brisel::blendKernels(GetParam(), false);
  brisel::ShadedRun run;
  for (const float value : kValues) {
    std::ranges::fill(run.value, std::min(value, 255.0f));
    for (std::int32_t c = 0; c < 256; ++c) {
      std::ranges::copy(before, module.bytes.begin());
      std::ranges::copy(before, expected.bytes.begin());
      const Rgb pen = {c, c / 2, 255 - c};
      plotter.pen = pen;
      std::ranges::fill(run.red, pen.red);
      std::ranges::fill(run.green, pen.green);
      std::ranges::fill(run.blue, pen.blue);
      for (std::int32_t y = 0; y < Palette::kHeight; ++y) {
        for (std::int32_t x = 0; x < Palette::kWidth; ++x) plotter.plotPixel(x, y, value);
        // In turn by the three ways a pixel can be blended.
        if (c % 3 == 0) kernels.withPen(layer.at(0, y), Palette::kWidth, run, pen);
        if (c % 3 == 1) kernels.withPens(layer.at(0, y), Palette::kWidth, run);
        if (c % 3 != 2) continue;
        for (std::int32_t x = 0; x < Palette::kWidth; ++x) {
          plotPixel(layer, GetParam(), pen, x, y, value);
        }
      }
      ASSERT_TRUE(module.bytes == expected.bytes) << "value " << value << ", pen " << c;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(, BlendRules, testing::ValuesIn(unit::kAllRules));

using Pixel = std::array<int, 4>;

/// One pixel plotted over `before`.
Pixel plotted(BlendRule rule, bool deep, Pixel before, Rgb pen, float value) {
  std::uint16_t deepPixel[4];
  std::uint8_t pixel[4];
  for (std::size_t c = 0; c < 4; ++c) {
    deepPixel[c] = static_cast<std::uint16_t>(before[c]);
    pixel[c] = static_cast<std::uint8_t>(before[c]);
  }
  auto* bytes = deep ? reinterpret_cast<std::uint8_t*>(deepPixel) : pixel;
  plotPixel({bytes, 8, 1, 1, deep}, rule, pen, 0, 0, value);
  Pixel after;
  for (std::size_t c = 0; c < 4; ++c) after[c] = deep ? deepPixel[c] : pixel[c];
  return after;
}

TEST(Blend, WorkedNumbers) {
  using enum BlendRule;
  const Rgb pen = {200, 100, 40};
  EXPECT_EQ(plotted(Over, false, {0, 9, 9, 9}, pen, 10.9f), (Pixel{10, 200, 100, 40}));
  EXPECT_EQ(plotted(Over, false, {0, 9, 9, 9}, pen, 0.5f), (Pixel{0, 200, 100, 40}));
  EXPECT_EQ(plotted(Over, false, {200, 0, 0, 0}, pen, 127.5f), (Pixel{200, 100, 50, 20}));
  EXPECT_EQ(plotted(AddScaled, false, {100, 100, 250, 0}, pen, 127.5f), (Pixel{227, 200, 255, 20}));
  EXPECT_EQ(plotted(AddSolid, false, {250, 100, 100, 250}, pen, 10.0f),
            (Pixel{255, 255, 200, 255}));
  EXPECT_EQ(plotted(AddGlow, false, {0, 0, 0, 0}, {0, 0, 40}, 1.0f), (Pixel{40, 0, 0, 40}));
  EXPECT_EQ(plotted(Lighten, false, {50, 150, 10, 10}, pen, 127.5f), (Pixel{150, 150, 50, 20}));
  EXPECT_EQ(plotted(Over, true, {0, 0, 0, 0}, {255, 255, 255}, 32768.0f),
            (Pixel{32768, 32768, 32768, 32768}));
  EXPECT_EQ(plotted(AddScaled, true, {32000, 32000, 0, 0}, {255, 1, 2}, 32768.0f),
            (Pixel{32768, 32768, 128, 257}));
  EXPECT_EQ(plotted(AddGlow, false, {7, 8, 9, 10}, pen, 0.0f), (Pixel{7, 8, 9, 10}));
  EXPECT_EQ(plotted(AddGlow, false, {7, 8, 9, 10}, pen, std::nanf("")), (Pixel{7, 8, 9, 10}));
}

TEST(Blend, NothingOutsideTheLayer) {
  std::vector<std::uint8_t> bytes(64, 7);
  const std::vector<std::uint8_t> before = bytes;
  const brisel::Layer middle = {bytes.data() + 20, 16, 2, 2, false};
  for (const std::int32_t outside : {-1, 2, INT32_MIN, INT32_MAX}) {
    plotPixel(middle, BlendRule::AddSolid, {255, 255, 255}, outside, 1, 255.0f);
    plotPixel(middle, BlendRule::AddSolid, {255, 255, 255}, 1, outside, 255.0f);
  }
  EXPECT_EQ(bytes, before);
}

TEST(Mix, RandomLayersAreTheReferences) {
  for (std::uint32_t trial = 0; trial < 40; ++trial) {
    unit::Dice dice(40000 + trial);
    const bool deep = trial % 2 == 1;
    unit::Frame input(200 + dice.integer(-3, 3), 60 + dice.integer(-3, 3), deep);
    unit::Frame module(200, 60, deep);
    input.fill(dice);
    module.fill(dice);
    unit::Frame expected = module;
    RenderSettings settings;
    input.becomeInputOf(settings);
    const int mode = dice.integer(1, 4);
    module.becomeOutputOf(settings);
    mixWithInput(settings, static_cast<brisel::MixMode>(mode));
    expected.becomeOutputOf(settings);
    if (mode == 2 || mode == 3) reference::mixWithInput(settings, mode);
    expectSame(module, expected);
  }
}

TEST(Mix, WorkedNumbers) {
  const auto mixed = [](brisel::MixMode mode, Pixel star, Pixel under) {
    std::uint8_t output[4], input[4];
    for (std::size_t c = 0; c < 4; ++c) {
      output[c] = static_cast<std::uint8_t>(star[c]);
      input[c] = static_cast<std::uint8_t>(under[c]);
    }
    RenderSettings s;
    s.frameWidth = s.frameHeight = s.inputWidth = s.inputHeight = 1;
    s.outputPixels = output;
    s.inputPixels = input;
    s.outputRowStride = s.inputRowStride = 4;
    mixWithInput(s, mode);
    return Pixel{output[0], output[1], output[2], output[3]};
  };
  using enum brisel::MixMode;
  EXPECT_EQ(mixed(Normal, {0, 9, 9, 9}, {30, 40, 50, 60}), (Pixel{30, 40, 50, 60}));
  EXPECT_EQ(mixed(Normal, {51, 255, 0, 100}, {30, 0, 100, 100}), (Pixel{51, 51, 80, 100}));
  EXPECT_EQ(mixed(Add, {51, 255, 0, 100}, {255, 10, 100, 240}), (Pixel{255, 61, 100, 255}));
  EXPECT_EQ(mixed(Add, {51, 255, 0, 100}, {51, 100, 100, 0}), (Pixel{102, 71, 20, 20}));
  EXPECT_EQ(mixed(Replace, {51, 255, 0, 100}, {51, 100, 100, 0}), (Pixel{51, 255, 0, 100}));
}

}  // namespace
