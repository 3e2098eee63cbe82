// Reduces a line to the vertices it needs to stay within a distance of all the others.
#pragma once

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "contour/outline_hulls.h"
#include "contour/vertex_set.h"

namespace brisel {

/// Splits line after line; keeps its storage between them.
class CLineSplitter {
 public:
  /// Marks kVertexFixed every vertex at which a span between two fixed ones must be split, because
  /// it lies at least `threshold` pixels from the chord and farthest of all, the first of equals.
  /// The spans run from the first vertex through every fixed one.
  void SplitLine(std::span<const CMeshVertex> points, float threshold);

 private:
  std::vector<std::pair<std::size_t, std::size_t>> spans_;
  COutlineHulls hulls_;
};

}  // namespace brisel
