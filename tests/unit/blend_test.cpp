// The five blend rules and the final mix: every pair of channel values at 8 bits against the
// formulas.
#include "render/blend.h"

#include "render/blend_kernels.h"
#include "render/isa/sse2.h"

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
  const brisel::BlendKernels kernels = brisel::blendKernels<brisel::Sse2>(GetParam(), false);
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

}  // namespace
