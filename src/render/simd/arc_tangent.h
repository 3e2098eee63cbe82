// The arc tangent of core/trigonometry.h for several pixels at once, to the same bits.
#pragma once

#include <cstdint>
#include <utility>

#include "core/trigonometry.h"
#include "render/simd/lanes.h"

namespace brisel {

/// The two halves of the lanes, as doubles; a single lane is taken as a half.
template <class Isa>
struct HalfLanes {
  using Float = typename Lanes<Isa>::Float;
  static constexpr int kLanes = Lanes<Isa>::kCount;
  static constexpr int kCount = kLanes > 1 ? kLanes / 2 : 1;
  using Double = typename VectorOf<double, kCount>::Type;
  using Long = typename VectorOf<std::int64_t, kCount>::Type;
  using HalfFloat = typename VectorOf<float, kCount>::Type;

  template <int kFirst>
  static Double half(Float v) {
    if constexpr (kLanes == 1) {
      return __builtin_convertvector(v, Double);
    } else {
      return halfOf<kFirst>(v, std::make_integer_sequence<int, kCount>{});
    }
  }

  static bool any(Long mask) {
    if constexpr (kLanes == 1) {
      return mask[0] != 0;
    } else {
      return Lanes<Isa>::any(reinterpret_cast<typename Lanes<Isa>::Int>(mask));
    }
  }

  static HalfFloat rounded(Double v) { return __builtin_convertvector(v, HalfFloat); }

  static Float joined(HalfFloat low, HalfFloat high) {
    return joined(low, high, std::make_integer_sequence<int, kLanes>{});
  }

 private:
  template <int kFirst, int... i>
  static Double halfOf(Float v, std::integer_sequence<int, i...>) {
    return __builtin_convertvector(__builtin_shufflevector(v, v, (kFirst + i)...), Double);
  }
  template <int... i>
  static Float joined(HalfFloat low, HalfFloat high, std::integer_sequence<int, i...>) {
    return __builtin_shufflevector(low, high, i...);
  }
};

/// arcTangent2 of each lane; any result where both coordinates are 0.
template <class Isa>
typename Lanes<Isa>::Float arcTangents(typename Lanes<Isa>::Float y, typename Lanes<Isa>::Float x) {
  using L = Lanes<Isa>;
  using Float = typename L::Float;
  using Int = typename L::Int;
  using Half = HalfLanes<Isa>;
  using Double = typename Half::Double;
  using Long = typename Half::Long;
  const auto steep = L::absolute(y) > L::absolute(x);
  const Float lesser = L::absolute(steep ? x : y);
  const Float greater = L::absolute(steep ? y : x);
  const Int behind = reinterpret_cast<Int>(x) < 0;
  // The angle is that of a number of quarter turns, and one on either side of them.
  const Float quarters = steep ? L::splat(1.0f) : (behind ? L::splat(2.0f) : Float{});
  const Int side = (steep ^ behind) & ~0x7fffffff;
  const auto toSide = [&](Float v) {
    return reinterpret_cast<Float>(reinterpret_cast<Int>(v) | side);
  };
  const Float opposite = toSide(lesser);
  // The nearest of the slopes 0, 1/4, 1/2 and 3/4, whose angles are known; the series gives the
  // rest.
  const Float nearest =
      toSide(L::minimum(L::truncated(lesser / greater * 4.0f + 0.5f), L::splat(3.0f)));

  Long close{};
  const auto angles = [&]<int kFirst>() {
    const auto fused = [](Double p, Double q, Double r) { return L::fused(p, q, r); };
    const auto all = [](double v) { return v - Double{}; };
    const Double o = Half::template half<kFirst>(opposite);
    const Double a = Half::template half<kFirst>(greater);
    const Double n = Half::template half<kFirst>(nearest);
    const Double slope = 0.25 * n;
    const Double t = fused(-slope, a, o) / fused(slope, o, a);
    const Double z = t * t;
    Double series = fused(z, all(1.0 / 13), all(-1.0 / 11));
    series = fused(z, series, all(1.0 / 9));
    series = fused(z, series, all(-1.0 / 7));
    series = fused(z, series, all(1.0 / 5));
    series = fused(z, series, all(-1.0 / 3));
    const Double rest = fused(t * z, series, t);
    // The known angles, as an odd polynomial through them.
    const Double square = n * n;
    const Double known =
        fused(square, fused(square, all(0.00011503323686983911), all(-0.004960119059836228)),
              all(0.24982374894983053));
    const Double angle = fused(Half::template half<kFirst>(quarters), all(1.5707963267948966),
                               fused(n, known, rest));
    // Too close to the middle between two floats to tell which one is nearer: by 2^-41 of it.
    constexpr std::int64_t kFloatUnit = 1 << 29, kMargin = 1 << 11;
    const Long fromMiddle = reinterpret_cast<Long>(angle) + (kFloatUnit / 2 + kMargin);
    close |= (fromMiddle & (kFloatUnit - 2 * kMargin)) == 0;
    return Half::rounded(angle);
  };
  Float result;
  if constexpr (L::kCount == 1) {
    result = angles.template operator()<0>();
  } else {
    // One after the other, as the order of arguments is open.
    const auto low = angles.template operator()<0>();
    result = Half::joined(low, angles.template operator()<Half::kCount>());
  }
  const Int signs = (reinterpret_cast<Int>(y) & ~0x7fffffff) | reinterpret_cast<Int>(result);
  result = reinterpret_cast<Float>(signs);
  if (Half::any(close)) {
    for (int lane = 0; lane < L::kCount; ++lane) result[lane] = arcTangent2(y[lane], x[lane]);
  }
  return result;
}

}  // namespace brisel
