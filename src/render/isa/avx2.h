// Eight lanes. Only for files that are compiled for processors with AVX2 and FMA.
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
  static __m256 truncated(__m256 v) {
    return _mm256_round_ps(v, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC);
  }
  static __m256 floored(__m256 v) {
    return _mm256_round_ps(v, _MM_FROUND_TO_NEG_INF | _MM_FROUND_NO_EXC);
  }
  static __m256 truncatedAny(__m256 v) { return truncated(v); }
  static __m256 fused(__m256 a, __m256 b, __m256 c) { return _mm256_fmadd_ps(a, b, c); }
  static __m256d fused(__m256d a, __m256d b, __m256d c) { return _mm256_fmadd_pd(a, b, c); }
  // The quotient by the reciprocal, corrected by what it leaves of v, is rounded as a division
  // (Markstein's theorem), and does not wait for the divider.
  static __m256 quotient(__m256 v, __m256 divisor, __m256 reciprocal) {
    const __m256 estimate = _mm256_mul_ps(v, reciprocal);
    const __m256 rest = _mm256_fnmadd_ps(estimate, divisor, v);
    return _mm256_fmadd_ps(rest, reciprocal, estimate);
  }

  /// One half of the lanes as doubles, and both halves back.
  template <int kHalf>
  static __m256d doubles(__m256 v) {
    return _mm256_cvtps_pd(_mm256_extractf128_ps(v, kHalf));
  }
  static __m256 floats(__m256d low, __m256d high) {
    return _mm256_set_m128(_mm256_cvtpd_ps(high), _mm256_cvtpd_ps(low));
  }

  static __m256 picked(const float* table, Words index) {
    return _mm256_permutevar8x32_ps(_mm256_loadu_ps(table), index);
  }
  static __m256 pickedOfFour(const float* four, Words index) {
    return _mm256_permutevar_ps(_mm256_set_m128(_mm_loadu_ps(four), _mm_loadu_ps(four)), index);
  }

  static bool any(Words mask) { return _mm256_testz_si256(mask, mask) == 0; }
  static bool anyBelow(__m256 a, __m256 b) {
    return _mm256_movemask_ps(_mm256_cmp_ps(a, b, _CMP_LT_OQ)) != 0;
  }
  static bool anyNotBelow(__m256 a, __m256 b) {
    return _mm256_movemask_ps(_mm256_cmp_ps(a, b, _CMP_NLT_UQ)) != 0;
  }

  template <int kByte>
  static Words byteOf(Words pixels) {
    constexpr int kRest = static_cast<int>(0x80808000);  // makes the other bytes 0
    return _mm256_shuffle_epi8(pixels, _mm256_broadcastsi128_si256(_mm_setr_epi32(
                                           kRest | kByte, kRest | (4 + kByte), kRest | (8 + kByte),
                                           kRest | (12 + kByte))));
  }
  static Words joinBytes(Words b0, Words b1, Words b2, Words b3) {
    const __m256i planes =
        _mm256_packus_epi16(_mm256_packus_epi32(b0, b1), _mm256_packus_epi32(b2, b3));
    return _mm256_shuffle_epi8(planes, _mm256_broadcastsi128_si256(_mm_setr_epi32(
                                           0x0c080400, 0x0d090501, 0x0e0a0602, 0x0f0b0703)));
  }
  static Words addBytes(Words a, Words b) { return _mm256_adds_epu8(a, b); }
  static Words maximumBytes(Words a, Words b) { return _mm256_max_epu8(a, b); }

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
