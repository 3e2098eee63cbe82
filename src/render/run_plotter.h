// Plots runs of neighbouring pixels, whole vectors at once. What is left of a run waits until the
// rests of several rows fill a vector, so that thin and small shapes use all lanes as well.
#pragma once

#include <algorithm>
#include <cstdint>

#include "render/blend_kernels.h"
#include "render/simd.h"

namespace brisel {

/// Parts of runs, each in some lanes of a vector. Apart from the plotter, whose counters can then
/// stay in registers.
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

/// No two runs between calls of finish() may share a pixel. The shader, which is borrowed, offers
///   Shaded<Isa> shade(Int steps, Float rows) const
/// where each lane's row is the number that its run was given.
template <BlendRule kRule, class Pixels, class Isa, class Shader>
class RunPlotter {
  using L = Lanes<Isa>;

 public:
  RunPlotter(const Shader& shader, RunPieces<Isa>& pieces)
      : shader_(shader), pieces_(pieces.pieces) {}

  /// Plots `count` pixels from the shader's step `step` on.
  void plot(std::uint8_t* pixels, std::int32_t step, std::int32_t count, float row) {
    for (; count >= kLanes; count -= kLanes) {
      const Shaded<Isa> shaded = shader_.shade(L::steps(step), L::splat(row));
      plotted<kRule, Pixels, Isa>(Pixels::load(pixels), shaded).store(pixels);
      pixels += kLanes * Pixels::kBytes;
      step += kLanes;
    }
    if constexpr (kLanes > 1) gather(pixels, step, count, row);
  }

  /// The same for runs that are hardly ever long.
  void plotShort(std::uint8_t* pixels, std::int32_t step, std::int32_t count, float row) {
    if constexpr (kLanes == 1) {
      plot(pixels, step, count, row);
    } else {
      gather(pixels, step, count, row);
    }
  }

  /// Plots what waits. To be called after the last run.
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
    auto steps = lanes;
    auto rows = L::splat(0.0f);
    typename Pixels::Raw before{};
#pragma GCC unroll 1
    for (const Piece* piece = pieces; piece != end; ++piece) {
      steps = L::select(piece->lanes, lanes + piece->step, steps);
      rows = L::select(piece->lanes, L::splat(piece->row), rows);
      before.load(piece->lanes, piece->origin);
    }
    const auto after =
        plotted<kRule, Pixels, Isa>(Pixels::fromRaw(before), shader.shade(steps, rows)).raw();
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

}  // namespace brisel
