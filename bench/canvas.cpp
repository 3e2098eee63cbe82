#include "canvas.h"

#include <algorithm>
#include <cstring>

namespace bench {
namespace {

brisel::MutableImageView viewOf(std::vector<std::uint16_t>& pixels, bool deep) {
  return {reinterpret_cast<std::uint8_t*>(pixels.data()), Canvas::kWidth, Canvas::kHeight,
          static_cast<std::ptrdiff_t>(Canvas::kWidth) * (deep ? 8 : 4),
          deep ? brisel::PixelFormat::Argb16 : brisel::PixelFormat::Argb8};
}

}  // namespace

Canvas::Canvas(bool deep, const brisel::Kernels& kernels)
    : pixels_(static_cast<std::size_t>(kWidth) * kHeight * 4),
      image_(viewOf(pixels_, deep)),
      kernels_(kernels),
      painter_({.kernels = &kernels}) {
  settings_.frameWidth = kWidth;
  settings_.frameHeight = kHeight;
  settings_.highQuality = true;
  state_.rainbowOn = false;
}

void Canvas::clear() {
  std::ranges::fill(pixels_, std::uint16_t{0});
}

void Canvas::paint(const Compose& compose, int times) {
  painter_.paint({.output = image_, .keepsOutput = true}, [&](brisel::SpriteList& sprites) {
    for (int i = 0; i < times; ++i) compose({settings_, random_, state_, &sprites});
  });
}

void Canvas::list(const Compose& compose, int times) {
  listed_.begin({kWidth, kHeight}, kHeight, [] {});
  for (int i = 0; i < times; ++i) compose({settings_, random_, state_, &listed_});
}

void Canvas::paintListed() {
  paintBand({.output = image_, .keepsOutput = true}, {}, listed_, 0, kernels_, grid_);
}

std::int64_t Canvas::coveredPixels(const Compose& compose) {
  clear();
  paint(compose, 1);
  const auto bytes = static_cast<std::size_t>(image_.pixelBytes());
  static constexpr std::uint8_t kEmpty[8] = {};
  std::int64_t covered = 0;
  for (std::int32_t y = 0; y < image_.height; ++y) {
    for (std::int32_t x = 0; x < image_.width; ++x) {
      covered += std::memcmp(image_.at(x, y), kEmpty, bytes) != 0;
    }
  }
  clear();
  return covered;
}

}  // namespace bench
