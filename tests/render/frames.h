// What the tests of painting share: frames between guard bytes, and painting with every
// instruction set.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "core/image_view.h"
#include "render/stars/compose.h"
#include "tests/support/dice.h"

namespace tests {

/// Pixels with padded rows and a row of guard bytes at either end.
class Frame {
 public:
  Frame(std::int32_t width, std::int32_t height, bool deep);

  void fill(Dice& dice);  // every kind of pixel, empty and full ones among them
  brisel::MutableImageView view();
  std::uint16_t channel(std::int32_t x, std::int32_t y, int c) const;
  std::int32_t width() const { return width_; }
  std::int32_t height() const { return height_; }
  const std::vector<std::uint8_t>& bytes() const { return bytes_; }  // with padding and guards

  /// Fails the test at the first byte that differs.
  friend void expectSame(const Frame& painted, const Frame& expected);

 private:
  std::uint8_t* pixels() { return bytes_.data() + rowBytes_; }

  std::int32_t width_;
  std::int32_t height_;
  bool deep_;
  std::size_t rowBytes_;
  std::vector<std::uint8_t> bytes_;
};

/// FNV-1a, a number at a time.
class Digest {
 public:
  template <class Number>
  void add(const Number& number) {
    value = (value ^ static_cast<std::uint32_t>(number)) * 1099511628211u;
  }
  std::uint64_t value = 14695981039346656037u;
};

/// The circumstances in which a sprite is composed.
struct Scene {
  brisel::RenderSettings settings;
  brisel::SpriteState state;
};

using Compose = std::function<void(const brisel::Composition&)>;

/// Paints into copies of `frame` with every instruction set, expects equal bytes, and adds
/// them to `digest`.
void paintWithAll(const Scene& scene, const Frame& frame, const Compose& compose, Digest& digest);

inline constexpr brisel::BlendRule kAllRules[] = {
    brisel::BlendRule::Over, brisel::BlendRule::AddScaled, brisel::BlendRule::AddSolid,
    brisel::BlendRule::AddGlow, brisel::BlendRule::Lighten};

}  // namespace tests
