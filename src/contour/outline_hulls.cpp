#include "contour/outline_hulls.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace brisel {
namespace {

constexpr std::size_t kBlockSize = 32;

/// Spans up to this long are compared vertex by vertex, which takes less time.
constexpr std::size_t kShortSpan = 4 * kBlockSize;

constexpr float kGridStepsPerPixel = 8.0f;

/// Products of grid places up to here, and sums of three, are exact in double precision.
constexpr float kExactExtent = 1048576.0f;

/// More than a vertex can lie away from its place on the grid.
constexpr double kOffGridSlack = 0.1;

bool liesOnGrid(const CMeshVertex& v) {
  const auto onStep = [](float coordinate) {
    return std::fabs(coordinate) <= kExactExtent &&
           std::trunc(coordinate * kGridStepsPerPixel) == coordinate * kGridStepsPerPixel;
  };
  return onStep(v.x) && onStep(v.y);
}

}  // namespace

/// The whole blocks within a span, and what is known of the deviations there.
struct COutlineHulls::Search {
  CLine2D chord;
  bool exact;  ///< the chord's ends lie on the grid
  std::size_t firstBlock = 0;
  std::size_t endBlock = 0;
  double atLeast = 0;  ///< the largest deviation in the blocks is no smaller
  double atMost = 0;   ///< nor larger
  Deviation best = {};
};

/// The largest deviation within a block, as far as its hull tells.
struct COutlineHulls::Reach {
  double atLeast;
  double atMost;
};

void COutlineHulls::Build(std::span<const CMeshVertex> points) {
  points_ = points;
  levels_.clear();
  hullPoints_.clear();
  if (points.size() <= kShortSpan) return;
  std::vector<Hull>& blocks = levels_.emplace_back();
  for (std::size_t begin = 0; begin < points.size(); begin += kBlockSize) {
    blocks.push_back(BlockHull(points.subspan(begin, std::min(kBlockSize, points.size() - begin))));
  }
  while (levels_.back().size() > 1) {
    const std::vector<Hull>& parts = levels_.back();
    std::vector<Hull> joined;
    for (std::size_t i = 0; i < parts.size(); i += 2) {
      joined.push_back(i + 1 < parts.size() ? JoinedHull(parts[i], parts[i + 1]) : parts[i]);
    }
    levels_.push_back(std::move(joined));
  }
}

Deviation COutlineHulls::MaxDeviation(std::size_t first, std::size_t last) const {
  const CMeshVertex &from = points_[first], &to = points_[last];
  Search search{CLine2D(from, to), liesOnGrid(from) && liesOnGrid(to)};
  if (last - first <= kShortSpan) {
    CompareAll(first + 1, last, search);
    return search.best;
  }
  search.firstBlock = (first + kBlockSize) / kBlockSize;
  search.endBlock = last / kBlockSize;
  CompareAll(first + 1, search.firstBlock * kBlockSize, search);
  BoundBlocks(levels_.size() - 1, 0, search);
  SearchBlocks(levels_.size() - 1, 0, search);
  CompareAll(search.endBlock * kBlockSize, last, search);
  return search.best;
}

COutlineHulls::Hull COutlineHulls::BlockHull(std::span<const CMeshVertex> block) {
  gathered_.clear();
  bool exact = true;
  const auto gridStep = [](float coordinate) {
    return static_cast<std::int32_t>(std::lround(coordinate * kGridStepsPerPixel));
  };
  for (const CMeshVertex& v : block) {
    gathered_.push_back({gridStep(v.x), gridStep(v.y)});
    exact = exact && liesOnGrid(v);
  }
  return HullOfGathered(exact);
}

COutlineHulls::Hull COutlineHulls::JoinedHull(const Hull& a, const Hull& b) {
  gathered_.clear();
  for (const Hull& part : {a, b}) {
    for (std::size_t i = part.begin; i < part.end; ++i) gathered_.push_back(hullPoints_[i]);
  }
  return HullOfGathered(a.exact && b.exact);
}

/// Appends the hull of the gathered points by the monotone chain method.
COutlineHulls::Hull COutlineHulls::HullOfGathered(bool exact) {
  std::sort(gathered_.begin(), gathered_.end(), [](const GridPoint& a, const GridPoint& b) {
    return std::tie(a.x, a.y) < std::tie(b.x, b.y);
  });
  // Whether `q` lies on the chain's outer side of the line from `p` to `r`; `side` is 1 for the
  // greatest y and -1 for the least.
  const auto protrudes = [](GridPoint p, GridPoint q, GridPoint r, std::int64_t side) {
    const std::int64_t qx = std::int64_t{q.x} - p.x, qy = std::int64_t{q.y} - p.y;
    const std::int64_t rx = std::int64_t{r.x} - p.x, ry = std::int64_t{r.y} - p.y;
    const std::int64_t turn = qx * ry - qy * rx;
    return side * turn < 0;
  };
  const auto appendChain = [&](std::int64_t side) {
    const std::size_t begin = hullPoints_.size();
    for (const GridPoint& point : gathered_) {
      if (hullPoints_.size() > begin && hullPoints_.back().x == point.x) {
        if (side < 0) continue;  // of one column, the first is the least
        hullPoints_.pop_back();
      }
      while (hullPoints_.size() >= begin + 2 &&
             !protrudes(hullPoints_[hullPoints_.size() - 2], hullPoints_.back(), point, side)) {
        hullPoints_.pop_back();
      }
      hullPoints_.push_back(point);
    }
  };
  Hull hull{hullPoints_.size(), 0, 0, exact};
  appendChain(-1);
  hull.middle = hullPoints_.size();
  appendChain(1);
  hull.end = hullPoints_.size();
  return hull;
}

/// The point of a chain farthest to one side of the chord. Along a chain the distance first rises,
/// then falls.
COutlineHulls::GridPoint COutlineHulls::Extreme(std::size_t begin, std::size_t end,
                                                const CLine2D& chord, double side) const {
  std::size_t last = end - 1;
  while (begin < last) {
    const std::size_t middle = begin + (last - begin) / 2;
    const GridPoint &p = hullPoints_[middle], &q = hullPoints_[middle + 1];
    if (side * chord.Slope(q.x - p.x, q.y - p.y) > 0) {
      begin = middle + 1;
    } else {
      last = middle;
    }
  }
  return hullPoints_[begin];
}

COutlineHulls::Reach COutlineHulls::ReachOf(const Hull& hull, const Search& search) const {
  const CLine2D& chord = search.chord;
  const double side = chord.GrowsDownwards() ? 1.0 : -1.0;
  const GridPoint ends[] = {Extreme(hull.begin, hull.middle, chord, -side),
                            Extreme(hull.middle, hull.end, chord, side)};
  double distance = 0;
  for (const GridPoint& p : ends) {
    distance = std::max(distance, std::fabs(chord.Distance(p.x / double{kGridStepsPerPixel},
                                                           p.y / double{kGridStepsPerPixel})));
  }
  const double slack = search.exact && hull.exact ? 0 : kOffGridSlack;
  return {distance - slack, distance + slack};
}

/// Finds between which limits the largest deviation within the search's blocks lies.
void COutlineHulls::BoundBlocks(std::size_t level, std::size_t index, Search& search) const {
  const std::size_t begin = index << level, end = (index + 1) << level;
  if (begin >= search.endBlock || end <= search.firstBlock) return;
  if (begin >= search.firstBlock && end <= search.endBlock) {
    const Reach bounds = ReachOf(levels_[level][index], search);
    search.atLeast = std::max(search.atLeast, bounds.atLeast);
    search.atMost = std::max(search.atMost, bounds.atMost);
    return;
  }
  BoundBlocks(level - 1, 2 * index, search);
  BoundBlocks(level - 1, 2 * index + 1, search);
}

/// Compares the vertices of the blocks that may hold the largest deviation, the first of them
/// first, until it is certain.
void COutlineHulls::SearchBlocks(std::size_t level, std::size_t index, Search& search) const {
  const std::size_t begin = index << level, end = (index + 1) << level;
  if (begin >= search.endBlock || end <= search.firstBlock) return;
  if (search.best.distance >= search.atMost) return;
  if (begin >= search.firstBlock && end <= search.endBlock) {
    const Reach bounds = ReachOf(levels_[level][index], search);
    if (bounds.atMost <= search.best.distance || bounds.atMost < search.atLeast) return;
    if (level == 0) {
      CompareAll(begin * kBlockSize, end * kBlockSize, search);
      return;
    }
  }
  SearchBlocks(level - 1, 2 * index, search);
  SearchBlocks(level - 1, 2 * index + 1, search);
}

void COutlineHulls::CompareAll(std::size_t begin, std::size_t end, Search& search) const {
  for (std::size_t i = begin; i < end; ++i) {
    const double distance = std::fabs(search.chord.Distance(points_[i].x, points_[i].y));
    if (distance > search.best.distance) search.best = {distance, i};
  }
}

}  // namespace brisel
