// The random generator that birth and painting of stars share. The order of its numbers is
// part of the picture.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace brisel {

/// A linear congruential generator; its state at load is 0, as after seedRandom(0).
class RandomGenerator {
 public:
  void seedRandom(std::uint32_t seed) { state_ = seed; }

  /// One random number: an integer 0..32767.
  std::int32_t nextRandom() {
    state_ = state_ * kStep.factor + kStep.summand;
    return static_cast<std::int32_t>((state_ >> 16) & 32767u);
  }

  /// As many random numbers, at most kMostSkipped, which nobody wants to know.
  void skip(int numbers) {
    const Leap& leap = kLeaps[static_cast<std::size_t>(numbers)];
    state_ = state_ * leap.factor + leap.summand;
  }
  static constexpr int kMostSkipped = 5;

  /// One random number: a multiple of 0.001 in [-1, 0.999].
  float signedUnit() { return static_cast<float>(nextRandom() % 2000 - 1000) / 1000.0f; }

  /// One random number: a multiple of 0.001 in [0, 0.999].
  float unit() { return static_cast<float>(nextRandom() % 1000) / 1000.0f; }

  std::uint32_t state() const { return state_; }

 private:
  struct Leap {
    std::uint32_t factor;
    std::uint32_t summand;
  };
  static constexpr Leap kStep{214013, 2531011};
  static constexpr auto kLeaps = [] {
    std::array<Leap, kMostSkipped + 1> leaps{{{1, 0}}};
    for (std::size_t i = 1; i < leaps.size(); ++i) {
      const Leap& before = leaps[i - 1];
      leaps[i] = {before.factor * kStep.factor, before.summand * kStep.factor + kStep.summand};
    }
    return leaps;
  }();

  std::uint32_t state_ = 0;
};

}  // namespace brisel
