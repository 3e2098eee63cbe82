// One pixel at a time: what every other instruction set must equal.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>

namespace brisel {

struct Plain {
  static constexpr int kLanes = 1;
  typedef float Floats __attribute__((vector_size(4)));
  typedef std::uint32_t Words __attribute__((vector_size(4)));
  using Mask = bool;

  static Floats minimum(Floats a, Floats b) { return Floats{a[0] < b[0] ? a[0] : b[0]}; }
  static Floats maximum(Floats a, Floats b) { return Floats{a[0] > b[0] ? a[0] : b[0]}; }
  static Floats squareRoot(Floats v) { return Floats{std::sqrt(v[0])}; }

  static bool any(Words mask) { return mask[0] != 0; }

  static Mask lanes(int first, int count) { return first == 0 && count > 0; }
  static Words select(Mask mask, Words a, Words b) { return mask ? a : b; }

  static Words load(Mask mask, const void* origin, Words words) {
    if (mask) std::memcpy(&words, origin, sizeof words);
    return words;
  }
  static void store(Mask mask, void* origin, Words words) {
    if (mask) std::memcpy(origin, &words, sizeof words);
  }

  template <int kHalf>
  static Words loadPairs(Mask mask, const void* origin, Words words) {
    return load(mask, origin, words);
  }
  template <int kHalf>
  static void storePairs(Mask mask, void* origin, Words words) {
    store(mask, origin, words);
  }
};

}  // namespace brisel
