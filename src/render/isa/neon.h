// Four lanes: what every 64-bit ARM processor has.
#pragma once

#include <arm_neon.h>

#include "render/isa/lane_by_lane.h"

namespace brisel {

struct Neon {
  static constexpr int kLanes = 4;
  using Words = uint32x4_t;
  using Mask = uint32x4_t;  // each lane all ones or all zeros

  // Not vminq and vmaxq, of which not-a-number on either side would come.
  static float32x4_t minimum(float32x4_t a, float32x4_t b) {
    return vbslq_f32(vcltq_f32(a, b), a, b);
  }
  static float32x4_t maximum(float32x4_t a, float32x4_t b) {
    return vbslq_f32(vcgtq_f32(a, b), a, b);
  }
  static float32x4_t squareRoot(float32x4_t v) { return vsqrtq_f32(v); }
  static float32x4_t truncated(float32x4_t v) { return vrndq_f32(v); }
  static float32x4_t floored(float32x4_t v) { return vrndmq_f32(v); }
  static float32x4_t truncatedAny(float32x4_t v) { return truncated(v); }
  static float32x4_t fused(float32x4_t a, float32x4_t b, float32x4_t c) {
    return vfmaq_f32(c, a, b);
  }
  static float64x2_t fused(float64x2_t a, float64x2_t b, float64x2_t c) {
    return vfmaq_f64(c, a, b);
  }
  // Rounded as a division: see Avx2.
  static float32x4_t quotient(float32x4_t v, float32x4_t divisor, float32x4_t reciprocal) {
    const float32x4_t estimate = vmulq_f32(v, reciprocal);
    const float32x4_t rest = vfmsq_f32(v, estimate, divisor);
    return vfmaq_f32(estimate, rest, reciprocal);
  }

  /// One half of the lanes as doubles, and both halves back.
  template <int kHalf>
  static float64x2_t doubles(float32x4_t v) {
    if constexpr (kHalf == 0) {
      return vcvt_f64_f32(vget_low_f32(v));
    } else {
      return vcvt_high_f64_f32(v);
    }
  }
  static float32x4_t floats(float64x2_t low, float64x2_t high) {
    return vcvt_high_f32_f64(vcvt_f32_f64(low), high);
  }

  static float32x4_t picked(const float* table, Words index) {
    const uint8x16_t bytes = vreinterpretq_u8_f32(vld1q_f32(table));
    const Words places = vmlaq_n_u32(vdupq_n_u32(0x03020100), index, 0x04040404);
    return vreinterpretq_f32_u8(vqtbl1q_u8(bytes, vreinterpretq_u8_u32(places)));
  }
  static float32x4_t pickedOfFour(const float* four, Words index) { return picked(four, index); }

  static bool any(Words mask) { return vmaxvq_u32(mask) != 0; }
  static bool anyBelow(float32x4_t a, float32x4_t b) { return vmaxvq_u32(vcltq_f32(a, b)) != 0; }
  static bool anyNotBelow(float32x4_t a, float32x4_t b) { return vminvq_u32(vcltq_f32(a, b)) == 0; }

  template <int kByte>
  static Words byteOf(Words pixels) {
    return pixels >> (8 * kByte) & vdupq_n_u32(255);
  }
  static Words joinBytes(Words b0, Words b1, Words b2, Words b3) {
    const auto limited = [](Words low, Words high) {
      return vqmovun_high_s32(vqmovun_s32(vreinterpretq_s32_u32(low)), vreinterpretq_s32_u32(high));
    };
    const uint8x16_t planes = vqmovn_high_u16(vqmovn_u16(limited(b0, b1)), limited(b2, b3));
    static constexpr std::uint8_t kPlaces[] = {0, 4, 8,  12, 1, 5, 9,  13,
                                               2, 6, 10, 14, 3, 7, 11, 15};
    return vreinterpretq_u32_u8(vqtbl1q_u8(planes, vld1q_u8(kPlaces)));
  }
  static Words addBytes(Words a, Words b) {
    return vreinterpretq_u32_u8(vqaddq_u8(vreinterpretq_u8_u32(a), vreinterpretq_u8_u32(b)));
  }
  static Words maximumBytes(Words a, Words b) {
    return vreinterpretq_u32_u8(vmaxq_u8(vreinterpretq_u8_u32(a), vreinterpretq_u8_u32(b)));
  }

  static Mask lanes(int first, int count) {
    const int32x4_t lane = {0, 1, 2, 3};
    return vcgeq_s32(lane, vdupq_n_s32(first)) & vcltq_s32(lane, vdupq_n_s32(first + count));
  }
  static Words select(Mask mask, Words a, Words b) { return vbslq_u32(mask, a, b); }

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
  static int bits(Mask mask) { return static_cast<int>(vaddvq_u32(mask & uint32x4_t{1, 2, 4, 8})); }
  /// One half of the lanes, each of them twice.
  template <int kHalf>
  static Mask twice(Mask mask) {
    return kHalf == 0 ? vzip1q_u32(mask, mask) : vzip2q_u32(mask, mask);
  }
};

}  // namespace brisel
