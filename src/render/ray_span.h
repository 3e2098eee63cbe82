// What the rows of a ray cover, found for as many rows at once as there are lanes.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "render/pixel_grid.h"
#include "render/ray_shape.h"
#include "render/simd.h"

namespace brisel {

/// Of each row, the full pixels, and on either side the band in which the edge's coverage fades.
/// Ranges include both ends and are empty when first > last; they never overlap.
template <class Isa>
struct RaySpans {
  using L = Lanes<Isa>;
  static constexpr int kRows = L::kCount;

  alignas(64) std::int32_t leftFirst[kRows], leftLast[kRows];
  alignas(64) std::int32_t fullFirst[kRows], fullLast[kRows];
  alignas(64) std::int32_t rightFirst[kRows], rightLast[kRows];
  alignas(64) std::int32_t begin[kRows], end[kRows];  // all columns of the frame between them
};

/// The rows of a ray between two edges that all of them cross.
template <class Isa>
class RayRows {
  using L = Lanes<Isa>;
  using Float = typename L::Float;
  using Int = typename L::Int;

 public:
  RayRows(const RayEdge& left, const RayEdge& right) : left_(left), right_(right) {}

  void find(Int rows, bool highQuality, std::int32_t frameWidth, RaySpans<Isa>& spans) const {
    const Float y = L::toFloat(rows);
    const Float xl = crossings(left_, left_.leftX, y);
    const Float xr = crossings(right_, right_.rightX, y);
    const Int fullFirst = truncated(highQuality ? xl + 1.0f : xl);
    const Int fullLast = floored(xr);
    L::store(spans.fullFirst, fullFirst);
    L::store(spans.fullLast, fullLast);
    if (!highQuality) {
      L::store(spans.begin, greater(fullFirst, Int{}));
      L::store(spans.end, lesser(fullLast, Int{} + (frameWidth - 1)) + 1);
      return;
    }

    const Float clearLeft = L::maximum(L::splat(lowestCovered(left_)), xl - left_.fadeReach);
    const Float clearRight = L::minimum(L::splat(highestCovered(right_)), xr + right_.fadeReach);
    const Int leftFirst =
        greater(truncated(xl - bandWidths(left_, left_.leftX, xl, y)), floored(clearLeft));
    const Int leftLast = floored(xl);
    const Int rightFirst = greater(truncated(xr + 1.0f), fullFirst);
    const Int rightLast =
        lesser(floored(xr + bandWidths(right_, right_.rightX, xr, y)), floored(clearRight + 1.0f));
    L::store(spans.leftFirst, leftFirst);
    L::store(spans.leftLast, leftLast);
    L::store(spans.rightFirst, rightFirst);
    L::store(spans.rightLast, rightLast);

    Int first = Int{} + frameWidth;
    Int last = Int{} - 1;
    const auto include = [&](Int from, Int to) {
      first = from <= to ? lesser(first, from) : first;
      last = from <= to ? greater(last, to) : last;
    };
    include(leftFirst, leftLast);
    include(fullFirst, fullLast);
    include(rightFirst, rightLast);
    L::store(spans.begin, greater(first, Int{}));
    L::store(spans.end, lesser(last, Int{} + (frameWidth - 1)) + 1);
  }

 private:
  static Int lesser(Int a, Int b) { return a < b ? a : b; }
  static Int greater(Int a, Int b) { return a > b ? a : b; }

  /// Saturates, as truncToInt does.
  static Int truncated(Float v) {
    constexpr float kMost = 2147483520.0f;
    return L::toInt(L::clamp(v, -kMost, kMost));
  }
  static Int floored(Float v) {
    const Int whole = truncated(v);
    return v < L::toFloat(whole) ? whole - 1 : whole;
  }

  /// Where rows cross the edge; `levelX` is the answer for one within a pixel of horizontal.
  static Float crossings(const RayEdge& edge, float levelX, Float y) {
    if (edge.isLevel) return L::splat(levelX);
    return edge.start.x +
           (y - edge.start.y) * (edge.end.x - edge.start.x) / (edge.end.y - edge.start.y);
  }

  /// The widths of the bands beside an edge that rows cross at `x`.
  static Float bandWidths(const RayEdge& edge, float levelX, Float x, Float y) {
    const Float least = L::splat(7.0f);
    if (edge.risesSteeply) return least;
    return L::maximum(2.0f * L::absolute(x - crossings(edge, levelX, y - 1.0f)), least);
  }

  /// The x beyond which nothing is covered: two pixels from the edge's box. An edge so short that
  /// its corners coincide covers its whole band.
  static float lowestCovered(const RayEdge& edge) {
    return edge.isPoint ? -std::numeric_limits<float>::infinity() : edge.leftX - 2.0f;
  }
  static float highestCovered(const RayEdge& edge) {
    return edge.isPoint ? std::numeric_limits<float>::infinity() : edge.rightX + 2.0f;
  }

  const RayEdge& left_;
  const RayEdge& right_;
};

}  // namespace brisel
