// Sixteen lanes. Only for files that are compiled for processors with AVX-512 F, BW, DQ and VL.
#pragma once

#include <immintrin.h>

#include <cstdint>

namespace brisel {

/// Half as wide, for what fits: division and square root then take half the time.
struct Avx512Half {
  static constexpr int kLanes = 8;
  using Words = __m256i;

  static __m256 minimum(__m256 a, __m256 b) { return _mm256_min_ps(a, b); }
  static __m256 maximum(__m256 a, __m256 b) { return _mm256_max_ps(a, b); }
  static __m256 squareRoot(__m256 v) { return _mm256_sqrt_ps(v); }

  static bool any(Words mask) { return _mm256_movepi32_mask(mask) != 0; }

  static Words loadWords(const void* from, int count) {
    return _mm256_maskz_loadu_epi32(firstLanes(count), from);
  }
  static void storeWords(void* to, Words words, int count) {
    _mm256_mask_storeu_epi32(to, firstLanes(count), words);
  }

 private:
  static __mmask8 firstLanes(int count) { return static_cast<__mmask8>((1u << count) - 1u); }
};

struct Avx512 {
  static constexpr int kLanes = 16;
  using Half = Avx512Half;
  using Words = __m512i;

  static __m512 minimum(__m512 a, __m512 b) { return _mm512_min_ps(a, b); }
  static __m512 maximum(__m512 a, __m512 b) { return _mm512_max_ps(a, b); }
  static __m512 squareRoot(__m512 v) { return _mm512_sqrt_ps(v); }

  static bool any(Words mask) { return _mm512_movepi32_mask(mask) != 0; }

  static Words loadWords(const void* from, int count) {
    return _mm512_maskz_loadu_epi32(firstLanes(count), from);
  }
  static void storeWords(void* to, Words words, int count) {
    _mm512_mask_storeu_epi32(to, firstLanes(count), words);
  }

 private:
  static __mmask16 firstLanes(int count) {
    return count >= kLanes ? __mmask16{0xffff} : static_cast<__mmask16>((1u << count) - 1u);
  }
};

}  // namespace brisel
