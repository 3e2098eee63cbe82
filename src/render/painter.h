// Sprites into pixels.
#pragma once

#include <functional>
#include <vector>

#include "core/image_view.h"
#include "core/options.h"
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

/// Borrowed. Input and output share no byte, have the same format, and need not have the same size.
struct PaintTarget {
  MutableImageView output;
  ImageView input{};               // mixed in under the sprites
  MixMode mix = MixMode::Replace;  // how; Replace leaves the input out
  bool keepsOutput = false;        // sprites go on what the output holds, not on an empty frame
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
  /// Each sprite costs what it covers of the frame. Throws std::bad_alloc and what `compose`
  /// throws; the frame is then incomplete.
  void paint(const PaintTarget& target, const std::function<void(SpriteList&)>& compose);

 private:
  /// How far a frame is when a portion of its sprites is painted.
  struct Portion {
    bool isFirst, isLast;
  };

  void paintPortion(const PaintTarget& target, Portion portion);
  void paintBand(const PaintTarget& target, Portion portion, std::int32_t band, PixelGrid& grid);

  const Kernels* kernels_;
  SpriteList sprites_;
  WorkerPool workers_;
  std::vector<PixelGrid> grids_;  // one for each thread, kept so that their memory is reused
};

}  // namespace brisel
