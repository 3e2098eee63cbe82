// The seed of every test that rolls dice: the same one each time, so that a failure is not luck.
// BRISEL_TEST_SEED names another, or asks for any with "random".
#pragma once

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>

namespace tests {

inline constexpr std::uint32_t kUsualSeed = 20240;

/// Printed at its first use in a program.
inline std::uint32_t seed() {
  static const std::uint32_t seed = [] {
    const char* chosen = std::getenv("BRISEL_TEST_SEED");
    const std::string text = chosen == nullptr ? "20240" : chosen;
    const auto value =
        text == "random" ? std::random_device{}() : static_cast<std::uint32_t>(std::stoul(text));
    std::cout << "BRISEL_TEST_SEED=" << value << std::endl;
    return value;
  }();
  return seed;
}

}  // namespace tests
