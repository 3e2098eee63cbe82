// What the rows of a ray cover: full pixels, and on either side a band in which the light fades.
#pragma once

#include <cstdint>

#include "render/simd/lanes.h"
#include "render/sprites/ray_shape.h"

namespace brisel {

/// How much of pixels the bands of a ray's edges cover, each pixel by the edge of its own.
template <class Isa>
typename Lanes<Isa>::Float bandCoverage(const RayEdges& edges, typename Lanes<Isa>::Int own,
                                        typename Lanes<Isa>::Float x,
                                        typename Lanes<Isa>::Float y) {
  using L = Lanes<Isa>;
  const auto of = [&](const float(&values)[RayEdges::kMost]) {
    return L::pickedOfFour(values, own);
  };
  const auto startX = x - of(edges.startX);
  const auto startY = y - of(edges.startY);
  const auto alongX = of(edges.alongX);
  const auto alongY = of(edges.alongY);
  const auto along = startX * alongX + startY * alongY;
  const auto alongside = (along >= 0.0f) & (along <= of(edges.lengthSquare));
  const auto off = L::absolute(alongY * x - alongX * y + of(edges.offset)) / of(edges.norm);
  const auto fade = L::clampUnit(1.0f - off / 2.0f);
  if (!L::any(!alongside)) return fade;
  const auto endX = x - of(edges.endX);
  const auto endY = y - of(edges.endY);
  const auto nearest = L::minimum(endX * endX + endY * endY, startX * startX + startY * startY);
  return alongside ? fade : L::clampUnit(1.0f - L::squareRoot(nearest));
}

/// Columns of each row: begin, begin + 1 ... end - 1; none where begin >= end.
template <class Isa>
struct ColumnSpans {
  alignas(64) std::int32_t begin[Lanes<Isa>::kCount], end[Lanes<Isa>::kCount];
  std::int32_t count(int row) const { return end[row] - begin[row]; }
};

/// Of each row, the full pixels, and on either side the band in which the coverage fades, with the
/// number of its edge. They never overlap. `all` is from the first of these to the last.
template <class Isa>
struct RaySpans {
  static constexpr int kRows = Lanes<Isa>::kCount;
  ColumnSpans<Isa> full, left, right, all;
  alignas(64) std::int32_t leftEdge[kRows], rightEdge[kRows];
};

/// Finds what lies on a frame `frameWidth` pixels wide. When edges are not smooth, rows have full
/// pixels only.
template <class Isa, bool kSmooth>
class RayRows {
  using L = Lanes<Isa>;
  using Float = typename L::Float;
  using Int = typename L::Int;

 public:
  RayRows(const RayShape& ray, std::int32_t frameWidth)
      : ray_(ray), edges_(ray.edges), frameWidth_(frameWidth) {}

  /// Rows of the frame that the ray crosses; of others, any spans.
  void find(Int rows, RaySpans<Isa>& spans) const {
    const Float y = L::toFloat(rows);
    const Side left = leftSide(y);
    const Side right = rightSide(y);
    const Int fullFirst = L::toIntSaturated(kSmooth ? left.x + 1.0f : left.x);
    const Columns full = set(spans.full, fullFirst, floored(right.x));
    if constexpr (!kSmooth) return;
    const Columns before = set(spans.left, left.bandEnd, floored(left.x));
    const Columns after =
        set(spans.right, L::greater(L::toIntSaturated(right.x + 1.0f), fullFirst), right.bandEnd);
    const Int hasFull = full.begin < full.end;
    const Int first = hasFull ? full.begin : after.begin;
    const Int end = hasFull ? full.end : before.end;
    L::store(spans.all.begin, before.begin < before.end ? before.begin : first);
    L::store(spans.all.end, after.begin < after.end ? after.end : end);
    L::store(spans.leftEdge, left.edge);
    L::store(spans.rightEdge, right.edge);
  }

 private:
  /// Where rows cross the ray's outline on one side, which edge they cross there, and how far out
  /// its band reaches.
  struct Side {
    Float x{};
    Int edge{};
    Int bandEnd{};
  };

  struct Columns {
    Int begin, end;
  };

  Side leftSide(Float y) const {
    Side side;
    Int open = y > ray_.yMin;
    for (std::int32_t i = 0; L::any(open); ++i) {
      const Int here = i == ray_.edgeCount - 1 ? open : open & (y > edges_.endY[i]);
      open &= ~here;
      if (!L::any(here)) continue;
      const Float x = crossings(i, edges_.leftX[i], y);
      side.x = here ? x : side.x;
      side.edge = here ? Int{} + i : side.edge;
      if constexpr (kSmooth) {
        const Float band = x - bandWidths(i, edges_.leftX[i], x, y);
        const Float covered = L::maximum(L::splat(edges_.leftEnd[i]), x - edges_.reach[i]);
        side.bandEnd =
            here ? L::greater(L::toIntSaturated(band), -floored(-covered)) : side.bandEnd;
      }
    }
    return side;
  }

  Side rightSide(Float y) const {
    Side side;
    Int open = y > ray_.yMin;
    for (std::int32_t i = ray_.edgeCount - 1; L::any(open); --i) {
      const Int here = i == 0 ? open : open & (y > edges_.startY[i]);
      open &= ~here;
      if (!L::any(here)) continue;
      const Float x = crossings(i, edges_.rightX[i], y);
      side.x = here ? x : side.x;
      side.edge = here ? Int{} + i : side.edge;
      if constexpr (kSmooth) {
        const Float band = x + bandWidths(i, edges_.rightX[i], x, y);
        const Float covered = L::minimum(L::splat(edges_.rightEnd[i]), x + edges_.reach[i]);
        side.bandEnd = here ? floored(L::minimum(band, covered)) : side.bandEnd;
      }
    }
    return side;
  }

  /// Ends of empty spans stay near the frame, too: edges extended to row 0 may cross it far apart.
  Columns set(ColumnSpans<Isa>& columns, Int first, Int last) const {
    const Columns set{L::clamp(first, 0, frameWidth_), L::clamp(last + 1, 0, frameWidth_)};
    L::store(columns.begin, set.begin);
    L::store(columns.end, set.end);
    return set;
  }

  static Int floored(Float v) {
    const Int whole = L::toIntSaturated(v);
    return v < L::toFloat(whole) ? whole - 1 : whole;
  }

  /// Where rows cross edge `i`; `levelX` is the answer for one within a pixel of horizontal.
  Float crossings(std::int32_t i, float levelX, Float y) const {
    if (edges_.isLevel[i]) return L::splat(levelX);
    return edges_.startX[i] + (y - edges_.startY[i]) * edges_.alongX[i] / edges_.alongY[i];
  }

  /// The widths of the bands along edge `i`, which rows cross at `x`.
  Float bandWidths(std::int32_t i, float levelX, Float x, Float y) const {
    const Float least = L::splat(7.0f);
    if (edges_.isNarrowest[i]) return least;
    const Float shift = L::absolute(x - crossings(i, levelX, y - 1.0f));
    return L::maximum(2.0f * shift, least);
  }

  const RayShape& ray_;
  const RayEdges& edges_;
  std::int32_t frameWidth_;
};

}  // namespace brisel
