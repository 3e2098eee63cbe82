// The five blend rules and the final mix with every instruction set: each pair of channel values at
// 8 bits, and random layers at both depths, against digests of what they are known to give.
#include "render/kernels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <vector>

#include "tests/render/frames.h"

namespace {

using brisel::BlendRule;

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

/// What every instruction set makes of a palette with a pen, which is the same.
Palette blended(BlendRule rule, std::int32_t pen, float value) {
  std::optional<Palette> first;
  const std::vector<float> values(Palette::kWidth, std::min(value, 255.0f));
  for (const brisel::Kernels* kernels : brisel::availableKernels()) {
    Palette palette;
    for (std::int32_t y = 0; y < Palette::kHeight; ++y) {
      kernels->run(palette.view(),
                   {rule, {pen, pen / 2, 255 - pen}, 0, y, Palette::kWidth, values.data()});
    }
    if (!first) first = palette;
    EXPECT_TRUE(palette.bytes == first->bytes)
        << kernels->name << ", value " << value << ", pen " << pen;
  }
  return *first;
}

TEST(BlendRules, BlendEveryChannelValueWithEveryPenAsKnown) {
  for (const auto& [rule, known] : {std::pair{BlendRule::Over, std::uint64_t{7007357855191407581u}},
                                    {BlendRule::AddScaled, 10542019655226501901u},
                                    {BlendRule::AddSolid, 8410700049811067333u},
                                    {BlendRule::AddGlow, 16986187178190490365u},
                                    {BlendRule::Lighten, 16792876396324768405u}}) {
    tests::Digest digest;
    for (const float value : kValues) {
      for (std::int32_t pen = 0; pen < 256 && !HasFailure(); ++pen) {
        for (const std::uint8_t byte : blended(rule, pen, value).bytes) digest.add(byte);
      }
    }
    EXPECT_EQ(digest.value, known) << "rule " << static_cast<int>(rule);
  }
}

TEST(Mix, MixesRandomLayersAsKnown) {
  tests::Digest digest;
  for (std::uint32_t trial = 0; trial < 40; ++trial) {
    tests::Dice dice(40000 + trial);
    const bool deep = trial % 2 == 1;
    const std::int32_t width = dice.integer(1, 200);
    const std::int32_t inputHeight = 60 + dice.integer(-3, 3);
    tests::Frame input(width + dice.integer(0, 6), inputHeight, deep);
    tests::Frame stars(width + 3, 60, deep);
    stars.fill(dice);
    input.fill(dice);
    const auto mode = static_cast<brisel::MixMode>(dice.integer(1, 4));
    std::optional<tests::Frame> first;
    for (const brisel::Kernels* kernels : brisel::availableKernels()) {
      SCOPED_TRACE(kernels->name);
      tests::Frame mixed = stars;
      kernels->mixWithInput(mixed.view(), {0, 60}, input.view(), mode);
      if (!first) first = mixed;
      expectSame(mixed, *first);
    }
    for (const std::uint8_t byte : first->bytes()) digest.add(byte);
  }
  if (tests::seed() == tests::kUsualSeed) {
    EXPECT_EQ(digest.value, 12039803984092618473u);
  }
}

}  // namespace
