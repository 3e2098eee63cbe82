#include "render/raster/grid.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace brisel {
namespace {

/// The first step of `range` whose pixel is at least `pixel`.
std::int32_t firstAtOrBeyond(IndexRange range, std::int32_t pixel, const StepMap& map) {
  while (range.begin < range.end) {
    const std::int32_t middle = std::midpoint(range.begin, range.end);
    if (map.pixelOf(middle) < pixel) {
      range.begin = middle + 1;
    } else {
      range.end = middle;
    }
  }
  return range.begin;
}

/// The steps of `range` whose pixels lie in 0 .. extent - 1.
IndexRange visibleSteps(IndexRange range, std::int32_t extent, const StepMap& map) {
  if (range.empty()) return {};
  if (map.pixelOf(range.begin) < 0) range.begin = firstAtOrBeyond(range, 0, map);
  if (map.pixelOf(range.end - 1) >= extent) range.end = firstAtOrBeyond(range, extent, map);
  return range;
}

/// Whether rounding cannot move any step of `range` to another pixel than one next to its
/// neighbor's.
bool risesByOne(IndexRange range, const StepMap& map) {
  const float first = map.positionOf(range.begin);
  const float largest = std::max(std::fabs(static_cast<float>(range.begin) + map.origin),
                                 std::fabs(static_cast<float>(range.end) + map.origin));
  const float slack = (largest + std::fabs(map.reach)) * 0x1p-21f;
  const float part = first - static_cast<float>(static_cast<std::int64_t>(first));
  return part >= slack && part + slack <= 1.0f;
}

/// Replaces `runs` by the runs of the steps in `range`, all of which are visible.
void collectRuns(IndexRange range, const StepMap& map, std::vector<StepRun>& runs) {
  runs.clear();
  // Those that are truncated upward share the first pixel with those that follow.
  for (; !range.empty() && map.positionOf(range.begin) < 0.0f; ++range.begin) {
    runs.push_back({range.begin, 0, 1});
  }
  if (range.empty()) return;
  if (risesByOne(range, map)) {
    runs.push_back({range.begin, map.pixelOf(range.begin), range.end - range.begin});
    return;
  }
  for (std::int32_t step = range.begin; step < range.end; ++step) {
    const std::int32_t pixel = map.pixelOf(step);
    if (!runs.empty() && pixel == runs.back().pixel + runs.back().count) {
      ++runs.back().count;
    } else {
      runs.push_back({step, pixel, 1});
    }
  }
}

/// What of `run` falls on `pixels`.
StepRun kept(const StepRun& run, IndexRange pixels) {
  const IndexRange both = overlap(run.pixels(), pixels);
  return {run.step + both.begin - run.pixel, both.begin, both.end - both.begin};
}

void keepPixels(IndexRange pixels, std::vector<StepRun>& runs) {
  for (StepRun& run : runs) run = kept(run, pixels);
  std::erase_if(runs, [](const StepRun& run) { return run.count <= 0; });
}

/// The steps on pixels 0 .. extent - 1 if they are certain to be a single run, else none.
StepRun soleRun(IndexRange steps, std::int32_t extent, const StepMap& map) {
  const float first = map.positionOf(steps.begin);
  if (!(first >= 0.0f && first < static_cast<float>(extent)) || !risesByOne(steps, map)) return {};
  const auto pixel = static_cast<std::int32_t>(first);
  return {steps.begin, pixel, std::min(steps.end - steps.begin, extent - pixel)};
}

}  // namespace

PixelBox pixelBoxOf(FrameSize image, IndexRange steps, const StepMap& rowMap,
                    const StepMap& columnMap) {
  return {soleRun(steps, image.height, rowMap), soleRun(steps, image.width, columnMap)};
}

void PixelGrid::place(const PixelBox& box, IndexRange shownRows) {
  const StepRun shown = kept(box.rows, shownRows);
  rows.assign(shown.count > 0, shown);
  columns.assign(1, box.columns);
}

void PixelGrid::place(const MutableImageView& image, IndexRange shownRows, IndexRange steps,
                      StepMap rowMap, StepMap columnMap) {
  const PixelBox box = pixelBoxOf({image.width, image.height}, steps, rowMap, columnMap);
  if (!box.empty()) return place(box, shownRows);
  collectRuns(visibleSteps(steps, image.height, rowMap), rowMap, rows);
  keepPixels(shownRows, rows);
  collectRuns(visibleSteps(steps, image.width, columnMap), columnMap, columns);
}

IndexRange pixelsOf(IndexRange steps, std::int32_t extent, const StepMap& map) {
  if (steps.empty()) return {};
  const std::int32_t last = map.pixelOf(steps.end - 1);
  return {std::max(map.pixelOf(steps.begin), 0), last < extent ? last + 1 : extent};
}

}  // namespace brisel
