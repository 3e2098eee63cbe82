// The loop that all sprites on a grid of their own share: rows, the spans of a row, the runs of
// neighbouring pixels in a span; shade a few pixels, blend them.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>

#include "render/blend_kernels.h"
#include "render/drawing.h"
#include "render/row_block.h"

namespace brisel {

/// The visible rows of a sprite under one rule. All calls are inlined, so that what the shader
/// knows stays in registers.
template <BlendRule kRule, class Pixels, class Isa, class Shader>
[[gnu::flatten]] void paintRows(const Drawing& drawing, const Placement& placement, Shader shader) {
  const Layer layer = drawing.layer;
  const IndexRange rows = placement.rows;
  const std::span<const ColumnRun> runs = drawing.columns;
  RowBlock<Isa> block;
  for (std::int32_t first = rows.begin; first < rows.end; first += block.kRows) {
    const auto steps = Lanes<Isa>::steps(first);
    Lanes<Isa>::store(block.y, placement.rowMap.pixelsOf<Isa>(steps));
    shader.beginRows(steps, placement.columns, block);
    const std::int32_t count = std::min(rows.end - first, block.kRows);
    for (std::int32_t i = 0; i < count; ++i) {
      shader.beginRow(block.offset[i]);
      for (int stretch = 0; stretch < Shader::kStretches; ++stretch) {
        for (const ColumnRun& run : runs) {
          const std::int32_t begin = std::max(block.begin[stretch][i], run.index);
          const std::int32_t end = std::min(block.end[stretch][i], run.index + run.count);
          plotRun<kRule, Pixels, Isa>(layer.at(run.column + (begin - run.index), block.y[i]), begin,
                                      end - begin, shader);
        }
      }
    }
  }
}

/// Paints a sprite that is not wholly off the layer. Beside what plotRun asks of it, the shader
/// offers
///   kStretches                             how many of a row's stretches it uses
///   beginRows(Int rows, IndexRange visible, RowBlock<Isa>& block)   sets offset and stretches
///   beginRow(float offset)                 of the row to be shaded next
template <class Isa, class Shader>
void paintSprite(Drawing& drawing, const Placement& placement, const Shader& shader) {
  collectColumnRuns(placement.columns, placement.columnMap, drawing.columns);
  withRule<Isa>(drawing.blendRule, drawing.layer.deep, [&]<BlendRule kRule, class Pixels>() {
    paintRows<kRule, Pixels, Isa>(drawing, placement, shader);
  });
}

}  // namespace brisel
