// How a sprite's own rows and columns fall on the frame's. A sprite counts its pixels from its
// center or corner in whole steps, and each step's float position is truncated to a frame pixel.
// That map rises steadily but not by exactly one everywhere: columns (-1, 0) and [0, 1) both land
// on column 0, and rounding may skip or repeat a column far from the sprite's center. It is
// therefore found once per sprite, as a few runs of neighboring pixels.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "core/geometry.h"
#include "core/image_view.h"
#include "core/numbers.h"

namespace brisel {

/// Steps, rows or columns begin, begin + 1, ... end - 1.
struct IndexRange {
  std::int32_t begin = 0;
  std::int32_t end = 0;
  bool empty() const { return begin >= end; }
};

inline IndexRange overlap(IndexRange a, IndexRange b) {
  return {std::max(a.begin, b.begin), std::min(a.end, b.end)};
}

/// A sprite's steps along one axis of the frame: step 0 lies at `origin` - `reach`.
struct StepMap {
  float origin;
  float reach = 0.0f;

  float positionOf(std::int32_t step) const { return static_cast<float>(step) + origin - reach; }
  std::int32_t pixelOf(std::int32_t step) const { return truncToInt(positionOf(step)); }
};

/// Steps step, step + 1 ... of a sprite on frame rows or columns pixel, pixel + 1 ...
struct StepRun {
  std::int32_t step;
  std::int32_t pixel;
  std::int32_t count;

  IndexRange steps() const { return {step, step + count}; }
  IndexRange pixels() const { return {pixel, pixel + count}; }
};

/// Where a sprite falls on an image on which its steps, rows and columns alike, keep neighbors
/// neighbors: as nearly always. Empty where that is not known.
struct PixelBox {
  StepRun rows{}, columns{};

  bool empty() const { return rows.count <= 0 || columns.count <= 0; }
};

PixelBox pixelBoxOf(FrameSize image, IndexRange steps, const StepMap& rowMap,
                    const StepMap& columnMap);

/// The steps of a sprite that fall on the image, in order.
struct PixelGrid {
  std::vector<StepRun> rows, columns;

  bool empty() const { return rows.empty() || columns.empty(); }

  /// Places a sprite in its box, of which only `shownRows` count.
  void place(const PixelBox& box, IndexRange shownRows);

  /// Places a sprite of `steps` on either axis on an image of which only `shownRows` count.
  void place(const MutableImageView& image, IndexRange shownRows, IndexRange steps, StepMap rowMap,
             StepMap columnMap);
};

/// The pixels, of 0 .. extent - 1, between the first and the last that steps fall on.
IndexRange pixelsOf(IndexRange steps, std::int32_t extent, const StepMap& map);

}  // namespace brisel
