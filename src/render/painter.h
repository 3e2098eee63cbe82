// Sprites into pixels.
#pragma once

#include <functional>
#include <vector>

#include "render/band.h"
#include "render/kernels.h"
#include "render/raster/grid.h"
#include "render/sprite_list.h"
#include "render/worker_pool.h"

namespace brisel {

/// What frames are painted with. None of it changes a byte of them.
struct PaintOptions {
  int threads = 1;                                  // the caller's among them
  const Kernels* kernels = &kernelsNamed(nullptr);  // the instruction set
};

/// Paints frames, band of rows by band, on its threads. A band fits the cache of the processor that
/// paints it, takes its sprites in order, and is emptied before and mixed after while it is there.
/// Used by one thread at a time; may be passed from instance to instance.
class Painter {
 public:
  /// Starts threads, and does without those that cannot be had.
  explicit Painter(const PaintOptions& options = {});

  void useKernels(const Kernels& kernels) { kernels_ = &kernels; }
  const Kernels& kernels() const { return *kernels_; }
  int threadCount() const { return workers_.threadCount(); }

  /// Paints all pixels of a frame: the sprites that `compose` adds to the list that it is given.
  /// Each sprite costs what it covers of the frame. Throws what `compose` throws, and
  /// std::bad_alloc, but then after composing has come to its end; the frame is incomplete.
  void paint(const PaintTarget& target, const std::function<void(SpriteList&)>& compose);

 private:
  void paintPortion(const PaintTarget& target, Portion portion);

  const Kernels* kernels_;
  SpriteList sprites_;
  WorkerPool workers_;
  std::vector<PixelGrid> grids_;  // one for each thread, kept so that their memory is reused
};

}  // namespace brisel
