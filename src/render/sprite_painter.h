// The loop that all sprites on a grid of their own share: rows, the spans of a row, the runs of
// neighbouring pixels in a span; shade a run, blend it.
#pragma once

#include <algorithm>
#include <cstdint>

#include "render/blend_kernels.h"
#include "render/drawing.h"

namespace brisel {

/// The steps of one row that a sprite covers: at most two stretches, in order.
struct RowSpans {
  IndexRange first;
  IndexRange second;
};

/// Paints a sprite. The shader offers
///   RowSpans beginRow(std::int32_t row, IndexRange visible)   what to visit of this row
///   void shade(std::int32_t index, std::int32_t count, ShadedRun& run)
///   bool variesPen() const, Rgb pen() const
/// and `rowOf`, `columnOf` map its steps to frame pixels; `steps` are its steps on either axis.
template <class Isa, class Shader, class RowOf, class ColumnOf>
void paintSprite(Drawing& drawing, IndexRange steps, RowOf rowOf, ColumnOf columnOf,
                 Shader& shader) {
  const Layer& layer = drawing.layer;
  const IndexRange rows = visibleSteps(steps, layer.height, rowOf);
  const IndexRange visible = visibleSteps(steps, layer.width, columnOf);
  if (rows.empty() || visible.empty()) return;
  collectColumnRuns(visible, columnOf, drawing.columns);

  const BlendKernels kernels = blendKernels<Isa>(drawing.blendRule, layer.deep);
  const bool variesPen = shader.variesPen();
  const Rgb pen = shader.pen();
  ShadedRun run;
  for (std::int32_t row = rows.begin; row < rows.end; ++row) {
    const std::int32_t y = rowOf(row);
    const RowSpans spans = shader.beginRow(row, visible);
    for (const IndexRange span : {spans.first, spans.second}) {
      if (span.empty()) continue;
      for (const ColumnRun& columns : drawing.columns) {
        const std::int32_t end = std::min(span.end, columns.index + columns.count);
        std::int32_t index = std::max(span.begin, columns.index);
        while (index < end) {
          const std::int32_t count = std::min(end - index, kRunLength);
          shader.shade(index, count, run);
          std::uint8_t* pixels = layer.at(columns.column + (index - columns.index), y);
          if (variesPen) {
            kernels.withPens(pixels, count, run);
          } else {
            kernels.withPen(pixels, count, run, pen);
          }
          index += count;
        }
      }
    }
  }
}

}  // namespace brisel
