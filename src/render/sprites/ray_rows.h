// What the rows of a ray cover: full pixels, and on either side a band in which the light fades.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

#include "render/simd/lanes.h"
#include "render/sprites/ray_shape.h"

namespace brisel {

/// The band along one edge of a ray: coverage fades over two pixels along the edge, over one around
/// its ends.
class EdgeBand {
 public:
  /// The edge is borrowed.
  void setEdge(const RayEdge& edge) {
    edge_ = &edge;
    line_ = lineThrough(edge.start, edge.end);
    // Two pixels, and the rounding of distances, which grows with the coordinates.
    const float extent = std::fabs(edge.start.x) + std::fabs(edge.start.y) + std::fabs(edge.end.x) +
                         std::fabs(edge.end.y);
    const float fadeOut = 2.01f + extent * 0x1p-18f;
    const float rise = std::fabs(edge.alongY);
    constexpr float kEverywhere = std::numeric_limits<float>::infinity();
    const bool isPoint = edge.alongX == 0.0f && edge.alongY == 0.0f;
    reach_ = fadeOut * line_.norm / rise + 0.05f;
    leftEnd_ = isPoint ? -kEverywhere : edge.leftX - fadeOut;
    rightEnd_ = isPoint ? kEverywhere : edge.rightX + fadeOut;
    isNarrowest_ = rise >= 1.0f && std::fabs(edge.alongX) < 2.5f * rise;
  }

  template <class Isa>
  typename Lanes<Isa>::Float coverage(typename Lanes<Isa>::Float x,
                                      typename Lanes<Isa>::Float y) const {
    using L = Lanes<Isa>;
    const auto startX = x - edge_->start.x;
    const auto startY = y - edge_->start.y;
    const auto along = startX * edge_->alongX + startY * edge_->alongY;
    const auto alongside = (along >= 0.0f) & (along <= edge_->lengthSquare);
    const auto off = L::absolute(line_.a * x + line_.b * y + line_.c) / line_.norm;
    const auto fade = L::clampUnit(1.0f - off / 2.0f);
    if (!L::any(!alongside)) return fade;
    const auto endX = x - edge_->end.x;
    const auto endY = y - edge_->end.y;
    const auto nearest = L::minimum(endX * endX + endY * endY, startX * startX + startY * startY);
    return alongside ? fade : L::clampUnit(1.0f - L::squareRoot(nearest));
  }

  /// How far from the edge, along a row, coverage has faded out for certain; infinite for a
  /// horizontal edge.
  float reach() const { return reach_; }

  /// The x beyond which nothing is covered for certain. An edge so short that its corners coincide
  /// covers its whole band.
  float leftEnd() const { return leftEnd_; }
  float rightEnd() const { return rightEnd_; }

  /// Whether the edge rises so steeply that its band is the narrowest: by less than the slope at
  /// which twice a row's shift exceeds the least width.
  bool isNarrowest() const { return isNarrowest_; }

 private:
  const RayEdge* edge_ = nullptr;
  RayLine line_;
  float reach_ = 0.0f, leftEnd_ = 0.0f, rightEnd_ = 0.0f;
  bool isNarrowest_ = false;
};

/// Columns of each row: begin, begin + 1 ... end - 1; none where begin >= end.
template <class Isa>
struct ColumnSpans {
  alignas(64) std::int32_t begin[Lanes<Isa>::kCount], end[Lanes<Isa>::kCount];
  std::int32_t count(int row) const { return end[row] - begin[row]; }
};

/// Of each row, the full pixels, and on either side the band in which the coverage fades, with the
/// number of its edge. They never overlap.
template <class Isa>
struct RaySpans {
  static constexpr int kRows = Lanes<Isa>::kCount;
  ColumnSpans<Isa> full, left, right;
  alignas(64) std::int32_t leftEdge[kRows], rightEdge[kRows];
};

/// Finds what lies on a frame `frameWidth` pixels wide. `bands` are those of the ray's edges, and
/// null when edges are not smooth, where rows have full pixels only.
template <class Isa>
class RayRows {
  using L = Lanes<Isa>;
  using Float = typename L::Float;
  using Int = typename L::Int;

 public:
  RayRows(const RayShape& ray, const EdgeBand* bands, std::int32_t frameWidth)
      : ray_(ray), bands_(bands), frameWidth_(frameWidth) {}

  /// Rows of the frame that the ray crosses; of others, any spans.
  void find(Int rows, RaySpans<Isa>& spans) const {
    const Float y = L::toFloat(rows);
    const Side left = leftSide(y);
    const Side right = rightSide(y);
    const Int fullFirst = L::toIntSaturated(bands_ != nullptr ? left.x + 1.0f : left.x);
    set(spans.full, fullFirst, floored(right.x));
    if (bands_ == nullptr) return;
    set(spans.left, left.bandEnd, floored(left.x));
    set(spans.right, L::greater(L::toIntSaturated(right.x + 1.0f), fullFirst), right.bandEnd);
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

  Side leftSide(Float y) const {
    Side side;
    Int open = y > ray_.yMin;
    for (std::int32_t i = 0; L::any(open); ++i) {
      const RayEdge& edge = ray_.edges[i];
      const Int here = i == ray_.edgeCount - 1 ? open : open & (y > edge.end.y);
      open &= ~here;
      if (!L::any(here)) continue;
      const Float x = crossings(edge, edge.leftX, y);
      side.x = here ? x : side.x;
      side.edge = here ? Int{} + i : side.edge;
      if (bands_ != nullptr) {
        const Float band = x - bandWidths(i, edge.leftX, x, y);
        const Float covered = L::maximum(L::splat(bands_[i].leftEnd()), x - bands_[i].reach());
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
      const RayEdge& edge = ray_.edges[i];
      const Int here = i == 0 ? open : open & (y > edge.start.y);
      open &= ~here;
      if (!L::any(here)) continue;
      const Float x = crossings(edge, edge.rightX, y);
      side.x = here ? x : side.x;
      side.edge = here ? Int{} + i : side.edge;
      if (bands_ != nullptr) {
        const Float band = x + bandWidths(i, edge.rightX, x, y);
        const Float covered = L::minimum(L::splat(bands_[i].rightEnd()), x + bands_[i].reach());
        side.bandEnd = here ? floored(L::minimum(band, covered)) : side.bandEnd;
      }
    }
    return side;
  }

  /// Ends of empty spans stay near the frame, too: edges extended to row 0 may cross it far apart.
  void set(ColumnSpans<Isa>& columns, Int first, Int last) const {
    L::store(columns.begin, L::clamp(first, 0, frameWidth_));
    L::store(columns.end, L::clamp(last + 1, 0, frameWidth_));
  }

  static Int floored(Float v) {
    const Int whole = L::toIntSaturated(v);
    return v < L::toFloat(whole) ? whole - 1 : whole;
  }

  /// Where rows cross the edge; `levelX` is the answer for one within a pixel of horizontal.
  static Float crossings(const RayEdge& edge, float levelX, Float y) {
    if (edge.isLevel) return L::splat(levelX);
    return edge.start.x + (y - edge.start.y) * edge.alongX / edge.alongY;
  }

  /// The widths of the bands along edge `i`, which rows cross at `x`.
  Float bandWidths(std::int32_t i, float levelX, Float x, Float y) const {
    const Float least = L::splat(7.0f);
    if (bands_[i].isNarrowest()) return least;
    const Float shift = L::absolute(x - crossings(ray_.edges[i], levelX, y - 1.0f));
    return L::maximum(2.0f * shift, least);
  }

  const RayShape& ray_;
  const EdgeBand* bands_;
  std::int32_t frameWidth_;
};

}  // namespace brisel
