// What the unit tests share: chance, frames between guard bytes, and drawing with every instruction
// set.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <vector>

#include "render/drawing.h"
#include "tests/seed.h"

namespace unit {

class Dice {
 public:
  explicit Dice(std::uint32_t stream) : engine_(tests::seed() + stream) {}

  std::int32_t integer(std::int32_t least, std::int32_t most);
  float real(float least, float most);
  float logarithmic(float least, float most);  // small numbers as likely as large ones
  bool coin() { return integer(0, 1) == 1; }
  std::uint32_t bits() { return static_cast<std::uint32_t>(engine_()); }
  template <class T>
  T oneOf(std::initializer_list<T> choices) {
    return choices.begin()[integer(0, static_cast<std::int32_t>(choices.size()) - 1)];
  }

  brisel::Rgb color();
  float value();                        // a star's brightness, sometimes an odd number
  float position(std::int32_t extent);  // inside, on the edges by a hair, and far outside

 private:
  std::mt19937 engine_;
};

/// Pixels with padded rows and a row of guard bytes at either end.
class Frame {
 public:
  Frame(std::int32_t width, std::int32_t height, bool deep);

  void fill(Dice& dice);  // every kind of pixel, empty and full ones among them
  void becomeOutputOf(brisel::RenderSettings& settings);
  void becomeInputOf(brisel::RenderSettings& settings);
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

}  // namespace unit
