// Four lanes: what every x86-64 processor has.
#pragma once

#include <emmintrin.h>

#include <cstdint>
#include <cstring>

namespace brisel {

struct Sse2 {
  static constexpr int kLanes = 4;
  using Words = __m128i;

  static __m128 minimum(__m128 a, __m128 b) { return _mm_min_ps(a, b); }
  static __m128 maximum(__m128 a, __m128 b) { return _mm_max_ps(a, b); }
  static __m128 squareRoot(__m128 v) { return _mm_sqrt_ps(v); }

  static bool any(Words mask) { return _mm_movemask_epi8(mask) != 0; }

  static Words loadWords(const void* from, int count) {
    if (count >= kLanes) return _mm_loadu_si128(static_cast<const __m128i*>(from));
    std::uint32_t words[kLanes] = {};
    const auto* bytes = static_cast<const std::uint8_t*>(from);
    for (int i = 0; i < kLanes && i < count; ++i) std::memcpy(words + i, bytes + 4 * i, 4);
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(words));
  }
  static void storeWords(void* to, Words v, int count) {
    if (count >= kLanes) return _mm_storeu_si128(static_cast<__m128i*>(to), v);
    std::uint32_t words[kLanes];
    _mm_storeu_si128(reinterpret_cast<__m128i*>(words), v);
    auto* bytes = static_cast<std::uint8_t*>(to);
    for (int i = 0; i < kLanes && i < count; ++i) std::memcpy(bytes + 4 * i, words + i, 4);
  }
};

}  // namespace brisel
