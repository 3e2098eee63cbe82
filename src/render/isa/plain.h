// One pixel at a time: the arithmetic that every other instruction set repeats.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>

namespace brisel {

struct Plain {
  static constexpr int kLanes = 1;
  typedef float Floats __attribute__((vector_size(4)));
  typedef std::uint32_t Words __attribute__((vector_size(4)));

  static Floats minimum(Floats a, Floats b) { return Floats{a[0] < b[0] ? a[0] : b[0]}; }
  static Floats maximum(Floats a, Floats b) { return Floats{a[0] > b[0] ? a[0] : b[0]}; }
  static Floats squareRoot(Floats v) { return Floats{std::sqrt(v[0])}; }

  static bool any(Words mask) { return mask[0] != 0; }

  static Words loadWords(const void* from, int count) {
    Words words{};
    if (count > 0) std::memcpy(&words, from, sizeof words);
    return words;
  }
  static void storeWords(void* to, Words words, int count) {
    if (count > 0) std::memcpy(to, &words, sizeof words);
  }
};

}  // namespace brisel
