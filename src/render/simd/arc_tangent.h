// The arc tangent of core/trigonometry.h for several pixels at once, to the same bits.
#pragma once

#include <cstdint>

#include "core/trigonometry.h"
#include "render/simd/lanes.h"

namespace brisel {

/// arcTangents() one by one.
template <class Isa>
[[gnu::noinline, gnu::cold]] typename Lanes<Isa>::Float exactArcTangents(
    typename Lanes<Isa>::Float y, typename Lanes<Isa>::Float x) {
  typename Lanes<Isa>::Float result;
  for (int lane = 0; lane < Lanes<Isa>::kCount; ++lane)
    result[lane] = arcTangent2(y[lane], x[lane]);
  return result;
}

/// arcTangent2 of each lane; any result where both coordinates are 0.
template <class Isa>
typename Lanes<Isa>::Float arcTangents(typename Lanes<Isa>::Float y, typename Lanes<Isa>::Float x) {
  using L = Lanes<Isa>;
  using Float = typename L::Float;
  using Int = typename L::Int;
  // Doubles fill the vectors with half of the lanes.
  constexpr int kHalf = L::kCount > 1 ? L::kCount / 2 : 1;
  using Double = typename VectorOf<double, kHalf>::Type;
  using Long = typename VectorOf<std::int64_t, kHalf>::Type;
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
  const auto angles = [&]<int kPart>() {
    const auto fused = [](Double p, Double q, Double r) { return L::fused(p, q, r); };
    const auto all = [](double v) { return v - Double{}; };
    const Double o = Isa::template doubles<kPart>(opposite);
    const Double a = Isa::template doubles<kPart>(greater);
    const Double n = Isa::template doubles<kPart>(nearest);
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
    const Double angle = fused(Isa::template doubles<kPart>(quarters), all(1.5707963267948966),
                               fused(n, known, rest));
    // Too close to the middle between two floats to tell which one is nearer: by 2^-41 of it.
    constexpr std::int64_t kFloatUnit = 1 << 29, kMargin = 1 << 11;
    const Long fromMiddle = reinterpret_cast<Long>(angle) + (kFloatUnit / 2 + kMargin);
    close |= (fromMiddle & (kFloatUnit - 2 * kMargin)) == 0;
    return angle;
  };
  const Double low = angles.template operator()<0>();
  bool isClose;
  Int result;
  if constexpr (L::kCount == 1) {
    result = reinterpret_cast<Int>(__builtin_convertvector(low, Float));
    isClose = close[0] != 0;
  } else {
    result = reinterpret_cast<Int>(Isa::floats(low, angles.template operator()<1>()));
    isClose = L::any(reinterpret_cast<Int>(close));
  }
  if (isClose) return exactArcTangents<Isa>(y, x);
  return reinterpret_cast<Float>((reinterpret_cast<Int>(y) & ~0x7fffffff) | result);
}

}  // namespace brisel
