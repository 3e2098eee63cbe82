// Turns the staircase of a traced line into a smooth outline with few points.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <utility>
#include <vector>

#include "contour/border_tracer.h"
#include "contour/outline_hulls.h"
#include "contour/vertex_chain.h"
#include "contour/vertex_set.h"

namespace brisel {

/// Reduces a line to the vertices it needs to stay within a distance of all the others.
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

/// Simplifies line after line; keeps its storage between them.
class CLineSimplifier {
 public:
  /// `vertices` holds the corners of all lines, stays the caller's and must outlive the
  /// simplifier. `tolerance` is in pixels; a resampled line's segments get no longer than
  /// `maxSegmentLength`, at least 1, counted along x and y.
  CLineSimplifier(CVertexSet& vertices, float tolerance, std::int32_t maxSegmentLength);

  /// Takes the line's corners off the front of `corners`. Returns its final vertices, which hold
  /// until the next call.
  const std::vector<CMeshVertex>& SimplifyLine(const CBorderLine& line,
                                               std::deque<Corner>& corners);

 private:
  void TakeCorners(std::size_t count, std::deque<Corner>& corners);
  void StartAtFixedVertex();
  void InsertMidpoints();
  void ResetFlags(bool closed);
  void ResampleLine();

  CVertexSet& vertices_;
  float threshold_;
  float maxSegmentLength_;
  CVertexChain chain_;
  CLineSplitter splitter_;
  std::vector<CMeshVertex> points_;
  std::vector<CMeshVertex> refined_;
};

}  // namespace brisel
