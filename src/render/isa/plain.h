// One pixel at a time: what every other instruction set must equal.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace brisel {

struct Plain {
  static constexpr int kLanes = 1;
  typedef float Floats __attribute__((vector_size(4)));
  typedef double Doubles __attribute__((vector_size(8)));
  typedef std::uint32_t Words __attribute__((vector_size(4)));
  using Mask = bool;

  static Floats minimum(Floats a, Floats b) { return Floats{a[0] < b[0] ? a[0] : b[0]}; }
  static Floats maximum(Floats a, Floats b) { return Floats{a[0] > b[0] ? a[0] : b[0]}; }
  static Floats squareRoot(Floats v) { return Floats{std::sqrt(v[0])}; }
  static Floats truncated(Floats v) { return Floats{std::trunc(v[0])}; }
  static Floats floored(Floats v) {
    const Floats whole = truncated(v);
    return whole[0] > v[0] ? whole - 1.0f : whole;
  }
  static Floats truncatedAny(Floats v) { return truncated(v); }
  template <class Vector>
  static Vector fused(Vector a, Vector b, Vector c) {
    return a * b + c;
  }
  static Floats quotient(Floats v, Floats divisor, Floats /*reciprocal*/) { return v / divisor; }

  template <int kHalf>
  static Doubles doubles(Floats v) {
    return Doubles{v[0]};
  }

  static Floats picked(const float* table, Words index) { return Floats{table[index[0]]}; }
  static Floats pickedOfFour(const float* four, Words index) { return picked(four, index); }

  static bool any(Words mask) { return mask[0] != 0; }
  static bool anyBelow(Floats a, Floats b) { return a[0] < b[0]; }
  static bool anyNotBelow(Floats a, Floats b) { return !(a[0] < b[0]); }

  template <int kByte>
  static Words byteOf(Words pixels) {
    return pixels >> (8 * kByte) & 255u;
  }
  static Words joinBytes(Words b0, Words b1, Words b2, Words b3) {
    const auto limited = [](Words w) {
      return static_cast<std::uint32_t>(std::clamp(static_cast<std::int32_t>(w[0]), 0, 255));
    };
    return Words{limited(b0) | limited(b1) << 8 | limited(b2) << 16 | limited(b3) << 24};
  }
  static Words addBytes(Words a, Words b) {
    return joinBytes(byteOf<0>(a) + byteOf<0>(b), byteOf<1>(a) + byteOf<1>(b),
                     byteOf<2>(a) + byteOf<2>(b), byteOf<3>(a) + byteOf<3>(b));
  }
  static Words maximumBytes(Words a, Words b) {
    const auto greater = [&]<int kByte>() {
      return Words{std::max(byteOf<kByte>(a)[0], byteOf<kByte>(b)[0])};
    };
    return joinBytes(greater.operator()<0>(), greater.operator()<1>(), greater.operator()<2>(),
                     greater.operator()<3>());
  }

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
