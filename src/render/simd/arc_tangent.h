// The arc tangent of core/trigonometry.h for several pixels at once, to the same bits.
#pragma once

#include <utility>

#include "core/trigonometry.h"
#include "render/simd/lanes.h"

namespace brisel {

/// One half of the lanes, as doubles; a single lane is taken as a half.
template <class Isa>
struct HalfLanes {
  using L = Lanes<Isa>;
  static constexpr int kCount = L::kCount > 1 ? L::kCount / 2 : 1;
  using Float = typename VectorOf<float, kCount>::Type;
  using Double = typename VectorOf<double, kCount>::Type;

  static Double half(typename L::Float v, int first) {
    Float part;
    std::memcpy(&part, reinterpret_cast<const float*>(&v) + first, sizeof part);
    return __builtin_convertvector(part, Double);
  }
  static void setHalf(typename L::Float& v, int first, Double values) {
    const Float part = __builtin_convertvector(values, Float);
    std::memcpy(reinterpret_cast<float*>(&v) + first, &part, sizeof part);
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
  const Float one = L::splat(1.0f);
  const auto steep = L::absolute(y) > L::absolute(x);
  const Float lesser = L::absolute(steep ? x : y);
  const Float greater = L::absolute(steep ? y : x);
  const auto behind = reinterpret_cast<Int>(x) < 0;
  const Float baseQuarters = steep ? one : (behind ? 2.0f * one : Float{});
  const Float sign = (steep == behind) ? one : -one;
  // The nearest of a few slopes whose angles are known; the series gives the rest.
  const Float nearest = L::truncated(lesser / greater * 4.0f + 0.5f);

  Float angle, least, most;
  for (int first = 0; first < L::kCount; first += Half::kCount) {
    const Double opposite = Half::half(lesser, first);
    const Double adjacent = Half::half(greater, first);
    const Double k = Half::half(nearest, first);
    const Double t = (opposite - 0.25 * k * adjacent) / (adjacent + 0.25 * k * opposite);
    const Double z = t * t;
    const Double rest =
        t + t * z *
                (-1.0 / 3 +
                 z * (1.0 / 5 + z * (-1.0 / 7 + z * (1.0 / 9 + z * (-1.0 / 11 + z * (1.0 / 13))))));
    Double known{};
    known = k == 1.0 ? Double{} + 0.24497866312686414 : known;
    known = k == 2.0 ? Double{} + 0.4636476090008061 : known;
    known = k == 3.0 ? Double{} + 0.6435011087932844 : known;
    known = k == 4.0 ? Double{} + 0.7853981633974483 : known;
    const Double exact = Half::half(baseQuarters, first) * 1.5707963267948966 +
                         Half::half(sign, first) * (known + rest);
    Half::setHalf(angle, first, exact);
    Half::setHalf(least, first, exact * (1.0 - 0x1p-40));
    Half::setHalf(most, first, exact * (1.0 + 0x1p-40));
  }
  const Int signs = (reinterpret_cast<Int>(y) & ~0x7fffffff) | reinterpret_cast<Int>(angle);
  Float result = reinterpret_cast<Float>(signs);
  // Too close to the middle between two floats to tell which one is nearer.
  const Int close = least != most;
  if (L::any(close)) {
    for (int lane = 0; lane < L::kCount; ++lane) {
      if (close[lane] != 0) result[lane] = arcTangent2(y[lane], x[lane]);
    }
  }
  return result;
}

}  // namespace brisel
