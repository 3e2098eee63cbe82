// What the tests of drawing share: frames between guard bytes, and drawing with every instruction
// set.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "core/image_view.h"
#include "render/drawing.h"
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
  friend void expectSame(const Frame& drawn, const Frame& expected);

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

/// The circumstances of one drawing.
struct Scene {
  brisel::RenderSettings settings;
  brisel::DrawingState state;
  brisel::BlendRule rule = brisel::BlendRule::Over;
};

/// Draws on copies of `frame` with every instruction set, expects equal bytes and drawing states,
/// and adds the bytes to `digest`.
void drawWithAll(const Scene& scene, const Frame& frame,
                 const std::function<void(brisel::Drawing&)>& draw, Digest& digest);

inline constexpr brisel::BlendRule kAllRules[] = {
    brisel::BlendRule::Over, brisel::BlendRule::AddScaled, brisel::BlendRule::AddSolid,
    brisel::BlendRule::AddGlow, brisel::BlendRule::Lighten};

}  // namespace tests
