#include "tests/render/frames.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "render/painter.h"

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

void expectSame(const Frame& painted, const Frame& expected) {
  const auto [a, b] = std::ranges::mismatch(painted.bytes_, expected.bytes_);
  if (a == painted.bytes_.end()) return;
  const auto offset = static_cast<std::size_t>(a - painted.bytes_.begin());
  const std::size_t row = offset / painted.rowBytes_;
  const std::size_t column = offset % painted.rowBytes_ / (painted.deep_ ? 8 : 4);
  ADD_FAILURE() << "bytes differ, first in row " << static_cast<int>(row) - 1 << " (of "
                << painted.height_ << "), column " << column << " (of " << painted.width_
                << "): " << +*a << ", expected " << +*b;
}

void paintWithAll(const Scene& scene, const Frame& frame, const Compose& compose, Digest& digest) {
  std::optional<Frame> first;
  for (const brisel::Kernels* kernels : brisel::availableKernels()) {
    SCOPED_TRACE(kernels->name);
    Frame painted = frame;
    brisel::RandomGenerator random;
    brisel::SpriteState state = scene.state;
    brisel::Painter painter({.kernels = kernels});
    painter.paint({.output = painted.view(), .keepsOutput = true}, [&](auto& sprites) {
      compose({scene.settings, random, state, &sprites});
    });
    EXPECT_EQ(random.state(), 0u) << "painting takes no random number";
    if (!first) {
      first = painted;
      for (const std::uint8_t byte : painted.bytes()) digest.add(byte);
    }
    expectSame(painted, *first);
  }
}

}  // namespace tests
