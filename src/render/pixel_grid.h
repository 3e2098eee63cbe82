// How a sprite's own rows and columns fall on the frame's. A sprite counts its pixels from its
// centre or corner in whole steps, and each step's float position is truncated to a frame pixel.
// That map rises steadily but not by exactly one everywhere: columns (-1, 0) and [0, 1) both land
// on column 0, and rounding may skip or repeat a column far from the sprite's centre. It is
// therefore found once per sprite, as a few runs of neighbouring pixels.
#pragma once

#include <cstdint>
#include <numeric>
#include <vector>

namespace brisel {

/// Steps begin, begin + 1, ... end - 1.
struct IndexRange {
  std::int32_t begin = 0;
  std::int32_t end = 0;
  bool empty() const { return begin >= end; }
};

/// Steps index, index + 1 ... of a sprite on frame columns column, column + 1 ...
struct ColumnRun {
  std::int32_t index;
  std::int32_t column;
  std::int32_t count;
};

/// The first step of `range` whose pixel is at least `pixel`. `pixelOf` must not fall.
template <class PixelOf>
std::int32_t firstAtOrBeyond(IndexRange range, std::int32_t pixel, PixelOf pixelOf) {
  while (range.begin < range.end) {
    const std::int32_t middle = std::midpoint(range.begin, range.end);
    if (pixelOf(middle) < pixel) {
      range.begin = middle + 1;
    } else {
      range.end = middle;
    }
  }
  return range.begin;
}

/// The steps of `range` whose pixels lie in 0 .. extent - 1.
template <class PixelOf>
IndexRange visibleSteps(IndexRange range, std::int32_t extent, PixelOf pixelOf) {
  const std::int32_t begin = firstAtOrBeyond(range, 0, pixelOf);
  return {begin, firstAtOrBeyond({begin, range.end}, extent, pixelOf)};
}

/// Replaces `runs` by the runs of the steps in `range`, in order.
template <class PixelOf>
void collectColumnRuns(IndexRange range, PixelOf pixelOf, std::vector<ColumnRun>& runs) {
  runs.clear();
  for (std::int32_t i = range.begin; i < range.end; ++i) {
    const std::int32_t column = pixelOf(i);
    if (!runs.empty() && column == runs.back().column + runs.back().count) {
      ++runs.back().count;
    } else {
      runs.push_back({i, column, 1});
    }
  }
}

}  // namespace brisel
