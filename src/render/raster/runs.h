// The loops that put sprites into pixels: rows, the stretches of a row that a sprite covers, and
// runs of neighboring pixels, whole vectors at once.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "core/image_view.h"
#include "render/raster/blend.h"
#include "render/raster/grid.h"
#include "render/simd/lanes.h"

namespace brisel {

/// Steps of rows: begin, begin + 1 ... end - 1; none where begin >= end.
template <class Isa>
struct StepLanes {
  typename Lanes<Isa>::Int begin, end;
};

/// What a sprite covers of as many rows as there are lanes, found for all of them at once: the loop
/// over the rows then only reads, and need not wait for square roots to know how far a row goes.
template <class Isa>
struct RowBlock {
  using L = Lanes<Isa>;
  static constexpr int kRows = L::kCount;

  static constexpr int kMostStretches = 5;
  alignas(64) float row[kRows];  // what the shader's rowValues() says of it
  alignas(64) std::int32_t begin[kMostStretches][kRows];
  alignas(64) std::int32_t end[kMostStretches][kRows];

  /// Stretches lie in order and apart from each other.
  void setStretch(int stretch, const StepLanes<Isa>& steps) {
    L::store(begin[stretch], steps.begin);
    L::store(end[stretch], steps.end);
  }
};

/// Parts of runs, each in some lanes of a vector. They are kept outside the plotter, so that its
/// counters can stay in registers.
template <class Isa>
struct RunPieces {
  struct Piece {
    std::uint8_t* origin;  // where lane 0 would lie
    std::int32_t step;     // of lane 0
    float row;
    typename Lanes<Isa>::Mask lanes;
  };
  Piece pieces[Lanes<Isa>::kCount];
};

template <class Isa, class Shader>
concept StagedShader = requires(const Shader& shader, typename Lanes<Isa>::Int steps,
                                FloatOf<Isa> rows) {
  shader.shade(shader.prepare(steps, rows));
};

/// Both stages of a staged shader, or all of another.
template <class Isa, class Shader>
Shaded<Isa> shadedBy(const Shader& shader, typename Lanes<Isa>::Int steps, FloatOf<Isa> rows) {
  if constexpr (StagedShader<Isa, Shader>) {
    return shader.shade(shader.prepare(steps, rows));
  } else {
    return shader.shade(steps, rows);
  }
}

/// Plots runs of pixels, whole vectors at once. What is left of a run waits until the remainders of
/// several rows fill a vector, so that thin and small shapes use all lanes as well.
///
/// No two runs between calls of finish() may share a pixel. The shader, which is borrowed, offers
///   Shaded<Isa> shade(Int steps, Float rows) const
/// where each lane's row is the number that its run was given. A staged shader, one that has much
/// to compute, offers
///   auto prepare(Int steps, Float rows) const
///   Shaded<Isa> shade(const auto& prepared) const
/// instead. Each stage is done for two vectors in turn: a processor does not look so far ahead that
/// it would find enough to do at a time in one.
template <BlendRule kRule, class Pixels, class Isa, class Shader>
class RunPlotter {
  using L = Lanes<Isa>;

 public:
  RunPlotter(const Shader& shader, RunPieces<Isa>& pieces)
      : shader_(shader), pieces_(pieces.pieces) {}

  /// Plots `count` pixels from the shader's step `step` on.
  void plot(std::uint8_t* pixels, std::int32_t step, std::int32_t count, float row) {
    const std::int32_t whole = plotWhole(pixels, step, count, row);
    if constexpr (kLanes > 1) {
      gather(pixels + whole * Pixels::kBytes, step + whole, count - whole, row);
    }
  }

  /// Plots as many of them as fill whole vectors, from the first on; returns how many.
  std::int32_t plotWhole(std::uint8_t* pixels, std::int32_t step, std::int32_t count, float row) {
    const std::int32_t begin = step;
    if constexpr (StagedShader<Isa, Shader> && kLanes > 1) {
      for (; count >= 2 * kLanes; count -= 2 * kLanes) {
        const auto first = shader_.prepare(L::steps(step), L::splat(row));
        const auto second = shader_.prepare(L::steps(step + kLanes), L::splat(row));
        const Shaded<Isa> shaded[] = {shader_.shade(first), shader_.shade(second)};
        for (const Shaded<Isa>& each : shaded) {
          plotted<kRule, Pixels, Isa>(Pixels::load(pixels), each).store(pixels);
          pixels += kLanes * Pixels::kBytes;
        }
        step += 2 * kLanes;
      }
    }
    for (; count >= kLanes; count -= kLanes) {
      const Shaded<Isa> shaded = shadedBy<Isa>(shader_, L::steps(step), L::splat(row));
      plotted<kRule, Pixels, Isa>(Pixels::load(pixels), shaded).store(pixels);
      pixels += kLanes * Pixels::kBytes;
      step += kLanes;
    }
    return step - begin;
  }

  /// The same for runs that are usually shorter than a vector.
  void plotShort(std::uint8_t* pixels, std::int32_t step, std::int32_t count, float row) {
    if constexpr (kLanes == 1) {
      plot(pixels, step, count, row);
    } else {
      gather(pixels, step, count, row);
    }
  }

  /// Plots what still waits. Call it after the last run.
  void finish() {
    if constexpr (kLanes > 1) {
      if (used_ > 0) plotPieces();
    }
  }

 private:
  static constexpr int kLanes = L::kCount;
  using Piece = typename RunPieces<Isa>::Piece;

  void gather(std::uint8_t* pixels, std::int32_t step, std::int32_t count, float row) {
    while (count > 0) {
      const std::int32_t taken = std::min(count, kLanes - used_);
      *next_++ = {pixels - used_ * Pixels::kBytes, step - used_, row, L::lanes(used_, taken)};
      used_ += taken;
      if (used_ < kLanes) return;
      plotPieces();
      pixels += taken * Pixels::kBytes;
      step += taken;
      count -= taken;
    }
  }

  void plotPieces() {
    plotTogether(shader_, pieces_, next_);
    next_ = pieces_;
    used_ = 0;
  }

  [[gnu::noinline]] static void plotTogether(const Shader& shader, const Piece* pieces,
                                             const Piece* end) {
    const auto lanes = L::steps(0);
    // Lanes that no piece fills lie next to those of the first.
    auto steps = lanes + pieces->step;
    auto rows = L::splat(pieces->row);
    typename Pixels::Raw before{};
#pragma GCC unroll 1
    for (const Piece* piece = pieces; piece != end; ++piece) {
      steps = L::select(piece->lanes, lanes + piece->step, steps);
      rows = L::select(piece->lanes, L::splat(piece->row), rows);
      before.load(piece->lanes, piece->origin);
    }
    const auto after =
        plotted<kRule, Pixels, Isa>(Pixels::fromRaw(before), shadedBy<Isa>(shader, steps, rows))
            .raw();
#pragma GCC unroll 1
    for (const Piece* piece = pieces; piece != end; ++piece) {
      after.store(piece->lanes, piece->origin);
    }
  }

  const Shader& shader_;
  Piece* const pieces_;
  Piece* next_ = pieces_;
  std::int32_t used_ = 0;
};

/// A part of a sprite in which no two steps fall on the same pixel.
template <BlendRule kRule, class Pixels, class Isa, class Shader>
[[gnu::flatten]] void paintPart(const MutableImageView& image, const StepRun& rows,
                                const StepRun& columns, const Shader& shader) {
  RowBlock<Isa> block;
  RunPieces<Isa> pieces;
  RunPlotter<kRule, Pixels, Isa, Shader> plotter(shader, pieces);
  std::uint8_t* pixels = image.at(columns.pixel, rows.pixel);
  for (std::int32_t first = 0; first < rows.count; first += block.kRows) {
    const auto values = shader.rowValues(Lanes<Isa>::steps(rows.step + first));
    Lanes<Isa>::store(block.row, values);
    shader.findStretches(values, columns.steps(), block);
    const std::int32_t count = std::min(rows.count - first, block.kRows);
    for (std::int32_t i = 0; i < count; ++i) {
      for (int stretch = 0; stretch < Shader::kStretches; ++stretch) {
        const std::int32_t begin = block.begin[stretch][i];
        plotter.plot(pixels + (begin - columns.step) * Pixels::kBytes, begin,
                     block.end[stretch][i] - begin, block.row[i]);
      }
      pixels += image.rowBytes;
    }
  }
  plotter.finish();
}

/// The same for a part so narrow that whole rows of it fit a vector. All of its pixels are shaded,
/// several rows at a time, which costs less than finding out which of them the sprite covers.
template <BlendRule kRule, class Pixels, class Isa, class Shader>
[[gnu::flatten]] void paintNarrowPart(const MutableImageView& image, const StepRun& rows,
                                      const StepRun& columns, const Shader& shader) {
  using L = Lanes<Isa>;
  const int shift = std::bit_width(static_cast<unsigned>(columns.count - 1));
  const std::int32_t rowLanes = 1 << shift;
  const std::int32_t rowsAtOnce = L::kCount >> shift;
  const auto lanes = L::steps(0);
  const auto steps = (lanes & (rowLanes - 1)) + columns.step;
  const auto laneRows = (lanes >> shift) + rows.step;
  std::uint8_t* pixels = image.at(columns.pixel, rows.pixel);
  // From the lanes of a row to those of the next.
  const std::ptrdiff_t stride = image.rowBytes - rowLanes * Pixels::kBytes;
  for (std::int32_t first = 0; first < rows.count; first += rowsAtOnce) {
    const std::int32_t count = std::min(rows.count - first, rowsAtOnce);
    const auto forEachRow = [&](const auto& visit) {
      std::uint8_t* origin = pixels;
#pragma GCC unroll 1
      for (std::int32_t i = 0; i < count; ++i, origin += stride) {
        visit(L::lanes(i << shift, columns.count), origin);
      }
    };
    typename Pixels::Raw before{};
    forEachRow([&](auto mask, std::uint8_t* origin) { before.load(mask, origin); });
    const auto shaded = shadedBy<Isa>(shader, steps, shader.rowValues(laneRows + first));
    const auto after = plotted<kRule, Pixels, Isa>(Pixels::fromRaw(before), shaded).raw();
    forEachRow([&](auto mask, std::uint8_t* origin) { after.store(mask, origin); });
    pixels += count * image.rowBytes;
  }
}

/// Paints a sprite on its grid. Besides what RunPlotter asks of it, the shader offers
///   kStretches                    how many of a row's stretches it uses
///   kNarrowShare                  how many times a part must fit the width of a vector to be
///                                 shaded whole: 1 where a pixel costs less than finding out
///                                 if it is covered, more where it costs more
///   Float rowValues(Int rows)     what shade() needs to know of rows
///   findStretches(Float rowValues, IndexRange visible, RowBlock<Isa>& block)
/// and shades what lies outside the stretches with a value of 0.
template <class Isa, class Shader>
void paintSprite(const MutableImageView& image, const PixelGrid& grid, BlendRule rule,
                 const Shader& shader) {
  constexpr int kLanes = Lanes<Isa>::kCount;
  constexpr int kNarrow = kLanes < 8 ? 0 : kLanes / Shader::kNarrowShare;
  withRule<Isa>(rule, image.isDeep(), [&]<BlendRule kRule, class Pixels>() {
    for (const StepRun& rows : grid.rows) {
      for (const StepRun& columns : grid.columns) {
        if (columns.count <= kNarrow) {
          paintNarrowPart<kRule, Pixels, Isa>(image, rows, columns, shader);
        } else {
          paintPart<kRule, Pixels, Isa>(image, rows, columns, shader);
        }
      }
    }
  });
}

template <class Isa>
void paintRun(const MutableImageView& image, const RunSpec& run) {
  constexpr int kLanes = Lanes<Isa>::kCount;
  const Pens<Isa> pens = Pen(run.color).inAllLanes<Isa>();
  withRule<Isa>(run.rule, image.isDeep(), [&]<BlendRule kRule, class Pixels>() {
    for (std::int32_t i = 0; i < run.count; i += kLanes) {
      std::uint8_t* pixels = image.at(run.x + i, run.y);
      const auto lanes = Lanes<Isa>::lanes(0, std::min(run.count - i, kLanes));
      typename Pixels::Raw before{};
      before.load(lanes, pixels);
      const auto value = Lanes<Isa>::load(run.values + i);
      const Shaded<Isa> plot{Lanes<Isa>::maximum(value, FloatOf<Isa>{}), pens};
      plotted<kRule, Pixels, Isa>(Pixels::fromRaw(before), plot).raw().store(lanes, pixels);
    }
  });
}

}  // namespace brisel
