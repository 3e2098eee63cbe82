// Eight lanes. Only for files that are compiled for processors with AVX2.
#pragma once

#include <immintrin.h>

#include <cstdint>

namespace brisel {

struct Avx2 {
  static constexpr int kLanes = 8;
  using Words = __m256i;

  static __m256 minimum(__m256 a, __m256 b) { return _mm256_min_ps(a, b); }
  static __m256 maximum(__m256 a, __m256 b) { return _mm256_max_ps(a, b); }
  static __m256 squareRoot(__m256 v) { return _mm256_sqrt_ps(v); }

  static bool any(Words mask) { return _mm256_testz_si256(mask, mask) == 0; }

  static Words loadWords(const void* from, int count) {
    if (count >= kLanes) return _mm256_loadu_si256(static_cast<const __m256i*>(from));
    return _mm256_maskload_epi32(static_cast<const int*>(from), firstLanes(count));
  }
  static void storeWords(void* to, Words words, int count) {
    if (count >= kLanes) return _mm256_storeu_si256(static_cast<__m256i*>(to), words);
    _mm256_maskstore_epi32(static_cast<int*>(to), firstLanes(count), words);
  }

 private:
  static __m256i firstLanes(int count) {
    return _mm256_cmpgt_epi32(_mm256_set1_epi32(count), _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7));
  }
};

}  // namespace brisel
