// The loop that all sprites on a grid of their own share: rows and the stretches of a row.
#pragma once

#include <algorithm>
#include <cstdint>

#include "render/drawing.h"
#include "render/row_block.h"
#include "render/run_plotter.h"

namespace brisel {

/// A part of a sprite in which no two steps fall on the same pixel.
template <BlendRule kRule, class Pixels, class Isa, class Shader>
[[gnu::flatten]] void paintPart(const MutableImageView& layer, const StepRun& rows,
                                const StepRun& columns, const Shader& shader) {
  RowBlock<Isa> block;
  RunPieces<Isa> pieces;
  RunPlotter<kRule, Pixels, Isa, Shader> plotter(shader, pieces);
  std::uint8_t* pixels = layer.at(columns.pixel, rows.pixel);
  for (std::int32_t first = 0; first < rows.count; first += block.kRows) {
    shader.findRows(Lanes<Isa>::steps(rows.step + first), columns.steps(), block);
    const std::int32_t count = std::min(rows.count - first, block.kRows);
    for (std::int32_t i = 0; i < count; ++i) {
      for (int stretch = 0; stretch < Shader::kStretches; ++stretch) {
        const std::int32_t begin = block.begin[stretch][i];
        plotter.plot(pixels + (begin - columns.step) * Pixels::kBytes, begin,
                     block.end[stretch][i] - begin, block.row[i]);
      }
      pixels += layer.rowBytes;
    }
  }
  plotter.finish();
}

/// Paints a sprite on the drawing's grid. Beside what RunPlotter asks of it, the shader offers
///   kStretches   how many of a row's stretches it uses
///   findRows(Int rows, IndexRange visible, RowBlock<Isa>& block)   sets their row and stretches
template <class Isa, class Shader>
void paintSprite(const Drawing& drawing, const Shader& shader) {
  const MutableImageView& layer = drawing.layer;
  withRule<Isa>(drawing.blendRule, layer.isDeep(), [&]<BlendRule kRule, class Pixels>() {
    for (const StepRun& rows : drawing.grid.rows) {
      for (const StepRun& columns : drawing.grid.columns) {
        paintPart<kRule, Pixels, Isa>(layer, rows, columns, shader);
      }
    }
  });
}

}  // namespace brisel
