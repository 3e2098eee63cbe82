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
  static __m512 truncated(__m512 v) {
    return _mm512_roundscale_ps(v, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC);
  }
  static __m512 floored(__m512 v) {
    return _mm512_roundscale_ps(v, _MM_FROUND_TO_NEG_INF | _MM_FROUND_NO_EXC);
  }
  static __m512 truncatedAny(__m512 v) { return truncated(v); }
  static __m512 fused(__m512 a, __m512 b, __m512 c) { return _mm512_fmadd_ps(a, b, c); }
  static __m512d fused(__m512d a, __m512d b, __m512d c) { return _mm512_fmadd_pd(a, b, c); }
  // The quotient by the reciprocal, corrected by what it leaves of v, is rounded as a division
  // (Markstein's theorem), and does not wait for the divider.
  static __m512 quotient(__m512 v, __m512 divisor, __m512 reciprocal) {
    const __m512 estimate = _mm512_mul_ps(v, reciprocal);
    const __m512 rest = _mm512_fnmadd_ps(estimate, divisor, v);
    return _mm512_fmadd_ps(rest, reciprocal, estimate);
  }

  /// One half of the lanes as doubles, and both halves back.
  template <int kHalf>
  static __m512d doubles(__m512 v) {
    return _mm512_cvtps_pd(_mm512_extractf32x8_ps(v, kHalf));
  }
  static __m512 floats(__m512d low, __m512d high) {
    return _mm512_insertf32x8(_mm512_castps256_ps512(_mm512_cvtpd_ps(low)), _mm512_cvtpd_ps(high),
                              1);
  }

  static __m512 picked(const float* table, Words index) {
    return _mm512_permutexvar_ps(index, _mm512_loadu_ps(table));
  }
  static __m512 pickedOfFour(const float* four, Words index) {
    return _mm512_permutevar_ps(_mm512_broadcast_f32x4(_mm_loadu_ps(four)), index);
  }

  static bool any(Words mask) { return _mm512_movepi32_mask(mask) != 0; }
  static bool anyBelow(__m512 a, __m512 b) { return _mm512_cmp_ps_mask(a, b, _CMP_LT_OQ) != 0; }
  static bool anyNotBelow(__m512 a, __m512 b) { return _mm512_cmp_ps_mask(a, b, _CMP_NLT_UQ) != 0; }

  template <int kByte>
  static Words byteOf(Words pixels) {
    constexpr int kRest = static_cast<int>(0x80808000);  // makes the other bytes 0
    return _mm512_shuffle_epi8(pixels, _mm512_set4_epi32(kRest | (12 + kByte), kRest | (8 + kByte),
                                                         kRest | (4 + kByte), kRest | kByte));
  }
  static Words joinBytes(Words b0, Words b1, Words b2, Words b3) {
    const __m512i planes =
        _mm512_packus_epi16(_mm512_packus_epi32(b0, b1), _mm512_packus_epi32(b2, b3));
    return _mm512_shuffle_epi8(planes,
                               _mm512_set4_epi32(0x0f0b0703, 0x0e0a0602, 0x0d090501, 0x0c080400));
  }
  static Words addBytes(Words a, Words b) { return _mm512_adds_epu8(a, b); }
  static Words maximumBytes(Words a, Words b) { return _mm512_max_epu8(a, b); }

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
