#include "tests/render/frames.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace tests {

Frame::Frame(std::int32_t width, std::int32_t height, bool deep)
    : width_(width),
      height_(height),
      deep_(deep),
      rowBytes_(static_cast<std::size_t>(width * 4 + 6) * (deep ? 2 : 1)),
      bytes_(rowBytes_ * static_cast<std::size_t>(height + 2)) {}

void Frame::fill(Dice& dice) {
  for (std::uint8_t& byte : bytes_) byte = static_cast<std::uint8_t>(dice.bits());
  const std::uint16_t full = deep_ ? 32768 : 255;
  for (std::int32_t y = 0; y < height_; ++y) {
    for (std::int32_t x = 0; x < width_; ++x) {
      const bool flat = dice.coin();  // one level in all channels
      const auto level =
          dice.oneOf<std::uint16_t>({0, 0, full, static_cast<std::uint16_t>(full / 3)});
      for (int c = 0; c < 4; ++c) {
        const auto i = static_cast<std::size_t>(x) * 4 + static_cast<std::size_t>(c);
        const auto v = flat ? level : static_cast<std::uint16_t>(dice.integer(0, full));
        std::uint8_t* row = pixels() + static_cast<std::size_t>(y) * rowBytes_;
        if (deep_) {
          std::memcpy(row + 2 * i, &v, 2);
        } else {
          row[i] = static_cast<std::uint8_t>(v);
        }
      }
    }
  }
}

brisel::MutableImageView Frame::view() {
  return {pixels(), width_, height_, static_cast<std::ptrdiff_t>(rowBytes_),
          deep_ ? brisel::PixelFormat::Argb16 : brisel::PixelFormat::Argb8};
}

std::uint16_t Frame::channel(std::int32_t x, std::int32_t y, int c) const {
  const auto i = static_cast<std::size_t>(x) * 4 + static_cast<std::size_t>(c);
  const std::uint8_t* row = bytes_.data() + rowBytes_ * static_cast<std::size_t>(y + 1);
  if (!deep_) return row[i];
  std::uint16_t v;
  std::memcpy(&v, row + 2 * i, 2);
  return v;
}

void expectSame(const Frame& drawn, const Frame& expected) {
  const auto [a, b] = std::ranges::mismatch(drawn.bytes_, expected.bytes_);
  if (a == drawn.bytes_.end()) return;
  const auto offset = static_cast<std::size_t>(a - drawn.bytes_.begin());
  const std::size_t row = offset / drawn.rowBytes_;
  const std::size_t column = offset % drawn.rowBytes_ / (drawn.deep_ ? 8 : 4);
  ADD_FAILURE() << "bytes differ, first in row " << static_cast<int>(row) - 1 << " (of "
                << drawn.height_ << "), column " << column << " (of " << drawn.width_
                << "): " << +*a << ", expected " << +*b;
}

void drawWithAll(const Scene& scene, const Frame& frame,
                 const std::function<void(brisel::Drawing&)>& draw, Digest& digest) {
  std::optional<Frame> first;
  brisel::DrawingState stateOfFirst;
  for (const brisel::Kernels* kernels : brisel::availableKernels()) {
    SCOPED_TRACE(kernels->name);
    Frame drawn = frame;
    brisel::RandomGenerator random;
    brisel::DrawingState state = scene.state;
    brisel::Drawing drawing{scene.settings, random, state, drawn.view(), scene.rule, kernels};
    draw(drawing);
    EXPECT_EQ(random.state(), 0u) << "sprites draw no chance";
    if (!first) {
      first = drawn;
      stateOfFirst = state;
      for (const std::uint8_t byte : drawn.bytes()) digest.add(byte);
    }
    expectSame(drawn, *first);
    EXPECT_EQ(state.rainbowShift, stateOfFirst.rainbowShift);
    EXPECT_EQ(state.rainbowOn, stateOfFirst.rainbowOn);
    EXPECT_EQ(state.currentRandomFactor, stateOfFirst.currentRandomFactor);
    EXPECT_EQ(state.glowScale, stateOfFirst.glowScale);
    EXPECT_EQ(state.crossVariant, stateOfFirst.crossVariant);
    EXPECT_EQ(state.textureScale, stateOfFirst.textureScale);
    EXPECT_EQ(state.textureMix, stateOfFirst.textureMix);
  }
}

}  // namespace tests
