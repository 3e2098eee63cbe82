// How a sprite's own rows and columns fall on the frame's. A sprite counts its pixels from its
// centre or corner in whole steps, and each step's float position is truncated to a frame pixel.
// That map rises steadily but not by exactly one everywhere: columns (-1, 0) and [0, 1) both land
// on column 0, and rounding may skip or repeat a column far from the sprite's centre. It is
// therefore found once per sprite, as a few runs of neighbouring pixels.
#pragma once

#include <cstdint>
#include <vector>

#include "engine/numbers.h"
#include "render/layer.h"
#include "render/simd.h"

namespace brisel {

/// Steps begin, begin + 1, ... end - 1.
struct IndexRange {
  std::int32_t begin = 0;
  std::int32_t end = 0;
  bool empty() const { return begin >= end; }
};

/// A sprite's steps along one axis of the frame: step 0 lies at `origin` - `reach`.
struct StepMap {
  float origin;
  float reach = 0.0f;

  float positionOf(std::int32_t step) const { return static_cast<float>(step) + origin - reach; }
  std::int32_t pixelOf(std::int32_t step) const { return truncToInt(positionOf(step)); }

  /// Of steps whose pixels are on a frame, or beside it.
  template <class Isa>
  typename Lanes<Isa>::Int pixelsOf(typename Lanes<Isa>::Int steps) const {
    return Lanes<Isa>::toInt(Lanes<Isa>::toFloat(steps) + origin - reach);
  }
};

/// Steps index, index + 1 ... of a sprite on frame columns column, column + 1 ...
struct ColumnRun {
  std::int32_t index;
  std::int32_t column;
  std::int32_t count;
};

/// The steps of a sprite that fall on the layer.
struct Placement {
  StepMap rowMap;
  StepMap columnMap;
  IndexRange rows;
  IndexRange columns;

  bool empty() const { return rows.empty() || columns.empty(); }
};

/// Places a sprite of `steps` on either axis.
Placement placeOn(const Layer& layer, IndexRange steps, StepMap rowMap, StepMap columnMap);

/// Replaces `runs` by the runs of the steps in `range`, which is not empty and visible, in order.
void collectColumnRuns(IndexRange range, const StepMap& map, std::vector<ColumnRun>& runs);

}  // namespace brisel
