// Four lanes: what every x86-64 processor has.
#pragma once

#include <emmintrin.h>

#include <cstdint>
#include <cstring>

#include "render/isa/lane_by_lane.h"

namespace brisel {

struct Sse2 {
  static constexpr int kLanes = 4;
  using Words = __m128i;
  using Mask = __m128i;  // each lane all ones or all zeros

  static __m128 minimum(__m128 a, __m128 b) { return _mm_min_ps(a, b); }
  static __m128 maximum(__m128 a, __m128 b) { return _mm_max_ps(a, b); }
  static __m128 squareRoot(__m128 v) { return _mm_sqrt_ps(v); }
  static __m128 truncated(__m128 v) { return _mm_cvtepi32_ps(_mm_cvttps_epi32(v)); }
  static __m128 floored(__m128 v) {
    const __m128 whole = truncated(v);
    return _mm_sub_ps(whole, _mm_and_ps(_mm_cmpgt_ps(whole, v), _mm_set1_ps(1.0f)));
  }
  static __m128 truncatedAny(__m128 v) {
    const __m128 magnitude = _mm_andnot_ps(_mm_set1_ps(-0.0f), v);
    const __m128 isFraction = _mm_cmplt_ps(magnitude, _mm_set1_ps(8388608.0f));
    return _mm_or_ps(_mm_and_ps(isFraction, truncated(v)), _mm_andnot_ps(isFraction, v));
  }
  static __m128 fused(__m128 a, __m128 b, __m128 c) { return _mm_add_ps(_mm_mul_ps(a, b), c); }
  static __m128d fused(__m128d a, __m128d b, __m128d c) { return _mm_add_pd(_mm_mul_pd(a, b), c); }
  static __m128 quotient(__m128 v, __m128 divisor, __m128 /*reciprocal*/) {
    return _mm_div_ps(v, divisor);
  }

  /// One half of the lanes as doubles, and both halves back.
  template <int kHalf>
  static __m128d doubles(__m128 v) {
    return _mm_cvtps_pd(kHalf == 0 ? v : _mm_movehl_ps(v, v));
  }
  static __m128 floats(__m128d low, __m128d high) {
    return _mm_movelh_ps(_mm_cvtpd_ps(low), _mm_cvtpd_ps(high));
  }

  static __m128 picked(const float* table, Words index) {
    std::uint32_t lanes[kLanes];
    std::memcpy(lanes, &index, sizeof index);
    return _mm_setr_ps(table[lanes[0]], table[lanes[1]], table[lanes[2]], table[lanes[3]]);
  }
  static __m128 pickedOfFour(const float* four, Words index) { return picked(four, index); }

  static bool any(Words mask) { return _mm_movemask_epi8(mask) != 0; }
  static bool anyBelow(__m128 a, __m128 b) { return _mm_movemask_ps(_mm_cmplt_ps(a, b)) != 0; }
  static bool anyNotBelow(__m128 a, __m128 b) { return _mm_movemask_ps(_mm_cmpnlt_ps(a, b)) != 0; }

  template <int kByte>
  static Words byteOf(Words pixels) {
    return _mm_and_si128(_mm_srli_epi32(pixels, 8 * kByte), _mm_set1_epi32(255));
  }
  static Words joinBytes(Words b0, Words b1, Words b2, Words b3) {
    const __m128i planes =
        _mm_packus_epi16(_mm_packs_epi32(b0, b2), _mm_packs_epi32(b1, b3));  // 0, 2, 1, 3
    const __m128i pairs = _mm_unpacklo_epi8(planes, _mm_srli_si128(planes, 8));
    return _mm_unpacklo_epi16(pairs, _mm_srli_si128(pairs, 8));
  }
  static Words addBytes(Words a, Words b) { return _mm_adds_epu8(a, b); }
  static Words maximumBytes(Words a, Words b) { return _mm_max_epu8(a, b); }

  static Mask lanes(int first, int count) {
    const __m128i lane = _mm_setr_epi32(0, 1, 2, 3);
    return _mm_andnot_si128(_mm_cmplt_epi32(lane, _mm_set1_epi32(first)),
                            _mm_cmplt_epi32(lane, _mm_set1_epi32(first + count)));
  }
  static Words select(Mask mask, Words a, Words b) {
    return _mm_or_si128(_mm_and_si128(mask, a), _mm_andnot_si128(mask, b));
  }

  static Words load(Mask mask, const void* origin, Words words) {
    return loadLaneByLane(bits(mask), origin, words);
  }
  static void store(Mask mask, void* origin, Words words) {
    storeLaneByLane(bits(mask), origin, words);
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
  static int bits(Mask mask) { return _mm_movemask_ps(_mm_castsi128_ps(mask)); }
  /// One half of the lanes, each of them twice.
  template <int kHalf>
  static Mask twice(Mask mask) {
    return kHalf == 0 ? _mm_unpacklo_epi32(mask, mask) : _mm_unpackhi_epi32(mask, mask);
  }
};

}  // namespace brisel
