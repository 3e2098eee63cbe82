// The random generator that birth and painting of stars share. The order of its numbers is
// part of the picture.
#pragma once

#include <cstdint>

namespace brisel {

/// A linear congruential generator; its state at load is 0, as after seedRandom(0).
class RandomGenerator {
 public:
  void seedRandom(std::uint32_t seed) { state_ = seed; }

  /// One random number: an integer 0..32767.
  std::int32_t nextRandom() {
    state_ = state_ * 214013u + 2531011u;
    return static_cast<std::int32_t>((state_ >> 16) & 32767u);
  }

  /// As many random numbers, which nobody wants to know.
  void skip(int numbers) {
    for (int i = 0; i < numbers; ++i) state_ = state_ * 214013u + 2531011u;
  }

  /// One random number: a multiple of 0.001 in [-1, 0.999].
  float signedUnit() { return static_cast<float>(nextRandom() % 2000 - 1000) / 1000.0f; }

  /// One random number: a multiple of 0.001 in [0, 0.999].
  float unit() { return static_cast<float>(nextRandom() % 1000) / 1000.0f; }

  std::uint32_t state() const { return state_; }

 private:
  std::uint32_t state_ = 0;
};

}  // namespace brisel
