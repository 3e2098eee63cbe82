// The loop that all sprites on a grid of their own share: rows, the spans of a row, the runs of
// neighbouring pixels in a span; shade a few pixels, blend them.
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

/// Paints a sprite of `steps` on either axis. Beside what plotRun asks of it, the shader offers
///   RowSpans beginRow(std::int32_t row, IndexRange visible)   what to visit of this row
template <class Isa, class Shader>
void paintSprite(Drawing& drawing, IndexRange steps, const StepMap& rowMap,
                 const StepMap& columnMap, Shader& shader) {
  const Layer& layer = drawing.layer;
  const IndexRange rows = visibleSteps(steps, layer.height, rowMap);
  const IndexRange visible = visibleSteps(steps, layer.width, columnMap);
  if (rows.empty() || visible.empty()) return;
  collectColumnRuns(visible, columnMap, drawing.columns);

  withRule<Isa>(drawing.blendRule, layer.deep, [&]<BlendRule kRule, class Pixels>() {
    for (std::int32_t row = rows.begin; row < rows.end; ++row) {
      const std::int32_t y = rowMap.pixelOf(row);
      const RowSpans spans = shader.beginRow(row, visible);
      for (const IndexRange span : {spans.first, spans.second}) {
        if (span.empty()) continue;
        for (const ColumnRun& run : drawing.columns) {
          const std::int32_t begin = std::max(span.begin, run.index);
          const std::int32_t end = std::min(span.end, run.index + run.count);
          if (begin >= end) continue;
          plotRun<kRule, Pixels, Isa>(layer.at(run.column + (begin - run.index), y), begin,
                                      end - begin, shader);
        }
      }
    }
  });
}

}  // namespace brisel
