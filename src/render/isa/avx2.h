// Eight lanes. Only for files that are compiled for processors with AVX2.
#pragma once

#include <immintrin.h>

#include <cstdint>

namespace brisel {

struct Avx2 {
  static constexpr int kLanes = 8;
  using Words = __m256i;
  using Mask = __m256i;  // each lane all ones or all zeros

  static __m256 minimum(__m256 a, __m256 b) { return _mm256_min_ps(a, b); }
  static __m256 maximum(__m256 a, __m256 b) { return _mm256_max_ps(a, b); }
  static __m256 squareRoot(__m256 v) { return _mm256_sqrt_ps(v); }

  static bool any(Words mask) { return _mm256_testz_si256(mask, mask) == 0; }

  static Mask lanes(int first, int count) {
    const __m256i lane = _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7);
    return _mm256_andnot_si256(_mm256_cmpgt_epi32(_mm256_set1_epi32(first), lane),
                               _mm256_cmpgt_epi32(_mm256_set1_epi32(first + count), lane));
  }
  static Words select(Mask mask, Words a, Words b) { return _mm256_blendv_epi8(b, a, mask); }

  static Words load(Mask mask, const void* origin, Words words) {
    return select(mask, _mm256_maskload_epi32(static_cast<const int*>(origin), mask), words);
  }
  static void store(Mask mask, void* origin, Words words) {
    _mm256_maskstore_epi32(static_cast<int*>(origin), mask, words);
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
    return _mm256_cvtepi32_epi64(_mm256_extracti128_si256(mask, kHalf));
  }
};

}  // namespace brisel
