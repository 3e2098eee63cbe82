// Four lanes: what every x86-64 processor has.
#pragma once

#include <emmintrin.h>

#include <cstdint>
#include <cstring>

namespace brisel {

struct Sse2 {
  static constexpr int kLanes = 4;
  using Words = __m128i;
  using Mask = __m128i;  // each lane all ones or all zeros

  static __m128 minimum(__m128 a, __m128 b) { return _mm_min_ps(a, b); }
  static __m128 maximum(__m128 a, __m128 b) { return _mm_max_ps(a, b); }
  static __m128 squareRoot(__m128 v) { return _mm_sqrt_ps(v); }

  static bool any(Words mask) { return _mm_movemask_epi8(mask) != 0; }

  static Mask lanes(int first, int count) {
    const __m128i lane = _mm_setr_epi32(0, 1, 2, 3);
    return _mm_andnot_si128(_mm_cmplt_epi32(lane, _mm_set1_epi32(first)),
                            _mm_cmplt_epi32(lane, _mm_set1_epi32(first + count)));
  }
  static Words select(Mask mask, Words a, Words b) {
    return _mm_or_si128(_mm_and_si128(mask, a), _mm_andnot_si128(mask, b));
  }

  static Words load(Mask mask, const void* origin, Words words) {
    const int lanes = _mm_movemask_ps(_mm_castsi128_ps(mask));
    const auto* bytes = static_cast<const std::uint8_t*>(origin);
    std::uint32_t each[kLanes];
    std::memcpy(each, &words, sizeof words);
    for (int i = 0; i < kLanes; ++i) {
      if ((lanes >> i & 1) != 0) std::memcpy(each + i, bytes + 4 * i, 4);
    }
    std::memcpy(&words, each, sizeof words);
    return words;
  }
  static void store(Mask mask, void* origin, Words words) {
    const int lanes = _mm_movemask_ps(_mm_castsi128_ps(mask));
    auto* bytes = static_cast<std::uint8_t*>(origin);
    std::uint32_t each[kLanes];
    std::memcpy(each, &words, sizeof words);
    for (int i = 0; i < kLanes; ++i) {
      if ((lanes >> i & 1) != 0) std::memcpy(bytes + 4 * i, each + i, 4);
    }
  }

  template <int kHalf>
  static Words loadPairs(Mask mask, const void* origin, Words words) {
    return load(twice<kHalf>(mask), origin, words);
  }
  template <int kHalf>
  static void storePairs(Mask mask, void* origin, Words words) {
    store(twice<kHalf>(mask), origin, words);
  }

 private:
  /// One half of the lanes, each of them twice.
  template <int kHalf>
  static Mask twice(Mask mask) {
    return kHalf == 0 ? _mm_unpacklo_epi32(mask, mask) : _mm_unpackhi_epi32(mask, mask);
  }
};

}  // namespace brisel
