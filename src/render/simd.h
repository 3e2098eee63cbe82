// Lanes: the few vector operations that shading and blending are written with. A kernel is written
// once for any number of lanes; one lane is the plain scalar code. Every operation rounds exactly
// as its scalar counterpart, so the lanes never change a byte.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>
#include <utility>

#if defined(__SSE2__)
#include <xmmintrin.h>
#endif

namespace brisel {

template <class T, int kLanes>
struct VectorOf {
  typedef T Type __attribute__((vector_size(kLanes * sizeof(T))));
};

template <int kLanes>
struct Lanes {
  using Float = typename VectorOf<float, kLanes>::Type;
  using Int = typename VectorOf<std::int32_t, kLanes>::Type;
  using Word = typename VectorOf<std::uint32_t, kLanes>::Type;

  static Float splat(float value) { return Float{} + value; }

  /// first, first + 1, first + 2 ... as the conversion of each integer.
  static Float indices(std::int32_t first) {
    Int index;
    for (int i = 0; i < kLanes; ++i) index[i] = first + i;
    return __builtin_convertvector(index, Float);
  }

  static Float load(const float* from) {
    Float v;
    std::memcpy(&v, from, sizeof v);
    return v;
  }
  static Int load(const std::int32_t* from) {
    Int v;
    std::memcpy(&v, from, sizeof v);
    return v;
  }
  static void store(float* to, Float v) { std::memcpy(to, &v, sizeof v); }
  static void store(std::int32_t* to, Int v) { std::memcpy(to, &v, sizeof v); }

  static Float squareRoot(Float v) {
    Float root;
    for (int i = 0; i < kLanes; ++i) root[i] = std::sqrt(v[i]);
    return root;
  }

  /// The lesser; `b` when either is not a number. maximum likewise.
  static Float minimum(Float a, Float b) {
#if defined(__SSE2__)
    if constexpr (kLanes == 4) return _mm_min_ps(a, b);
#endif
    return a < b ? a : b;
  }
  static Float maximum(Float a, Float b) {
#if defined(__SSE2__)
    if constexpr (kLanes == 4) return _mm_max_ps(a, b);
#endif
    return a > b ? a : b;
  }
  static Float absolute(Float v) {
    const Int magnitude = reinterpret_cast<Int>(v) & 0x7fffffff;
    return reinterpret_cast<Float>(magnitude);
  }

  static Float clamp(Float v, float low, float high) {
    return minimum(maximum(v, splat(low)), splat(high));
  }

  /// Clamps to [0, 1]; not-a-number becomes 0.
  static Float clampUnit(Float v) {
    return minimum(maximum(v, Float{}), splat(1.0f));
  }

  static Float toFloat(Int v) {
    return __builtin_convertvector(v, Float);
  }

  /// Truncates toward zero; every lane must lie within the range of a 32-bit integer.
  static Int toInt(Float v) {
    return __builtin_convertvector(v, Int);
  }
};

#if defined(__SSE2__)
/// Four lanes: what every x86-64 processor has.
inline constexpr int kBaselineLanes = 4;
#else
inline constexpr int kBaselineLanes = 1;
#endif

}  // namespace brisel
