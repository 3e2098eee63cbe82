// Finds the vertex of a line farthest from a chord without looking at all of them. Convex hulls of
// blocks of vertices, of pairs of blocks, of pairs of pairs and so on tell how far each block
// reaches; only the block that reaches farthest is searched. Comparing all vertices of every span
// would take time in the square of the length of a winding, notched outline.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "contour/vertex_set.h"

namespace brisel {

/// The straight line through two vertices.
class CLine2D {
 public:
  CLine2D(const CMeshVertex& from, const CMeshVertex& to)
      : a_(to.y - from.y), b_(-(to.x - from.x)) {
    k_ = -(a_ * from.x + b_ * from.y);
    norm_ = std::sqrt(a_ * a_ + b_ * b_);
  }

  /// The signed distance of (x, y), in pixels; 0 from a line between two vertices in one place.
  double Distance(double x, double y) const {
    return kEpsilon > norm_ ? 0 : (a_ * x + b_ * y + k_) / norm_;
  }

  /// By how much the distance grows along (dx, dy), not yet divided by the distance of the two
  /// vertices. Exact for steps in coarse binary fractions.
  double Slope(double dx, double dy) const { return a_ * dx + b_ * dy; }

  /// Whether the distance grows, or at least does not fall, as y does.
  bool GrowsDownwards() const { return b_ >= 0; }

 private:
  static constexpr float kEpsilon = 0.01f;
  double a_, b_, k_, norm_;
};

/// How far a vertex lies from a chord, in pixels.
struct Deviation {
  double distance = 0;
  std::size_t index = 0;
};

/// Serves line after line; keeps its storage between them.
class COutlineHulls {
 public:
  /// Takes a line. `points` must stay in place while it is searched.
  void Build(std::span<const CMeshVertex> points);

  /// The largest distance of a vertex strictly between the vertices `first` and `last` from the
  /// straight line through them, and the first vertex at that distance: the same bits that
  /// comparing all of them gives.
  Deviation MaxDeviation(std::size_t first, std::size_t last) const;

 private:
  /// A place in eighths of a pixel, on which hulls are exact.
  struct GridPoint {
    std::int32_t x;
    std::int32_t y;
  };

  /// The chains of the least and of the greatest y over a block, each by increasing x:
  /// hullPoints_[begin, middle) and [middle, end).
  struct Hull {
    std::size_t begin;
    std::size_t middle;
    std::size_t end;
    bool exact;  ///< all vertices of the block lie on the grid
  };

  struct Search;
  struct Reach;

  Hull BlockHull(std::span<const CMeshVertex> block);
  Hull JoinedHull(const Hull& a, const Hull& b);
  Hull HullOfGathered(bool exact);
  GridPoint Extreme(std::size_t begin, std::size_t end, const CLine2D& chord, double side) const;
  Reach ReachOf(const Hull& hull, const Search& search) const;
  void BoundBlocks(std::size_t level, std::size_t index, Search& search) const;
  void SearchBlocks(std::size_t level, std::size_t index, Search& search) const;
  void CompareAll(std::size_t begin, std::size_t end, Search& search) const;

  std::span<const CMeshVertex> points_;
  std::vector<std::vector<Hull>> levels_;  ///< of blocks, of pairs of blocks, ... of all
  std::vector<GridPoint> hullPoints_;
  std::vector<GridPoint> gathered_;
};

}  // namespace brisel
