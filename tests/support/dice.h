// Random input for tests, the same with every standard library.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <random>

#include "core/render_settings.h"
#include "tests/support/seed.h"

namespace tests {

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

}  // namespace tests
