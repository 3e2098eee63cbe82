// Sixteen lanes. Only for files that are compiled for processors with BMI2 and AVX-512 F,
// BW, DQ and VL.
#pragma once

#include <immintrin.h>

#include <cstdint>

namespace brisel {

struct Avx512 {
  static constexpr int kLanes = 16;
  using Words = __m512i;
  using Mask = __mmask16;

  static __m512 minimum(__m512 a, __m512 b) { return _mm512_min_ps(a, b); }
  static __m512 maximum(__m512 a, __m512 b) { return _mm512_max_ps(a, b); }
  static __m512 squareRoot(__m512 v) { return _mm512_sqrt_ps(v); }

  static bool any(Words mask) { return _mm512_movepi32_mask(mask) != 0; }

  static Mask lanes(int first, int count) {
    return static_cast<Mask>(_bzhi_u32(~0u, static_cast<unsigned>(count)) << first);
  }
  static Words select(Mask mask, Words a, Words b) { return _mm512_mask_blend_epi32(mask, b, a); }

  static Words load(Mask mask, const void* origin, Words words) {
    return _mm512_mask_loadu_epi32(words, mask, origin);
  }
  static void store(Mask mask, void* origin, Words words) {
    _mm512_mask_storeu_epi32(origin, mask, words);
  }

  template <int kHalf>
  static Words loadPairs(Mask mask, const void* origin, Words words) {
    return _mm512_mask_loadu_epi64(words, half<kHalf>(mask), origin);
  }
  template <int kHalf>
  static void storePairs(Mask mask, void* origin, Words words) {
    _mm512_mask_storeu_epi64(origin, half<kHalf>(mask), words);
  }

 private:
  template <int kHalf>
  static __mmask8 half(Mask mask) {
    return static_cast<__mmask8>(mask >> (kHalf * kLanes / 2));
  }
};

}  // namespace brisel
